#include "records/FltRecordJson.h"

#include "support/RecordText.h"
#include "writer/FltLayouts.h"
#include "writer/FltWriter.h"

#include "records/FltRecordEyePointTrackPlane.h"
#include "records/FltRecordMultitexture.h"
#include "records/FltRecordSound.h"
#include "records/FltRecordUnknown.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace
{

using Json = nlohmann::ordered_json;

/// The last record of a database as JSON, written and read again.
Json jsonOf(FltWriter const& flt)
{
    return Json::parse(FltRecordJson::of(*decodeLast(flt), flt.lastOffset()));
}

Json fieldsOf(FltWriter const& flt)
{
    return jsonOf(flt)["fields"];
}

/// All values of a name, at any depth.
void collect(Json const& json, std::string const& name, std::vector<Json>& found)
{
    if (json.is_object() && json.contains(name))
        found.push_back(json[name]);
    if (json.is_structured())
        for (auto const& child : json)
            collect(child, name, found);
}

bool isThere(FltField const& field, int revision)
{
    return !field.name.empty() && revision >= field.fromRevision && revision < field.belowRevision;
}

/// Lists whose form in the JSON is tested on its own, and what steers the decoder without being kept.
bool isTestedElsewhere(std::string_view record, std::string_view field)
{
    static std::set<std::string_view> const names = {
        "offsets", "entries",     "maskWords",     "block",         "names",    "masks",
        "layers",  "subTypeWord", "numberOfNames", "extensionData", "lastWords"};
    return names.count(field) != 0 || record == "UVList" || record == "ColorPalette" ||
           record == "OLDMaterialPalette" || record == "SoundPaletteTable" || record == "SoundPaletteNames" ||
           record == "Multitexture" || record == "EyePointTrackPlaneAsTrackPlane" ||
           record == "WarpedTextureMapping" || record == "Switch" || record == "PutTransform";
}

/// Writes a record in which every named field has a value of its own, and expects its JSON to tell it.
void expectEveryField(FltLayout const& layout, int revision)
{
    FltWriter::Fields given;
    std::map<std::string, Json> expected;
    // What a layout is chosen by.
    std::map<std::pair<std::string_view, std::string_view>, int> const choosing = {
        {{"Header", "formatRevisionLevel"}, revision},  {{"PutTextureMapping", "type"}, 1},
        {{"PutTextureMapping", "warpedFlag"}, 0},       {{"PointPutTextureMapping", "type"}, 2},
        {{"PointPutTextureMapping", "warpedFlag"}, 0},  {{"SphericalTextureMapping", "type"}, 4},
        {{"SphericalTextureMapping", "warpedFlag"}, 0}, {{"RadialTextureMapping", "type"}, 5},
        {{"RadialTextureMapping", "warpedFlag"}, 0},
    };
    int next = 11;
    for (FltField const& field : layout.fields) {
        if (!isThere(field, revision) || isTestedElsewhere(layout.name, field.name))
            continue;
        std::string const name(field.name);
        int const count = field.count == FltField::rest ? 3 : field.count;
        if (auto const chosen = choosing.find({layout.name, field.name}); chosen != choosing.end()) {
            given.emplace_back(field.name, chosen->second);
            expected[name] = chosen->second;
            continue;
        }
        if (field.kind == FltKind::chars) {
            std::string const text = name.substr(0, static_cast<std::size_t>(std::max(count - 1, 1)));
            given.emplace_back(field.name, text);
            expected[name] = text;
            continue;
        }
        std::vector<double> values;
        bool const isReal = field.kind == FltKind::f32 || field.kind == FltKind::f64;
        for (int i = 0; i < count; ++i)
            values.push_back(next++ % 100 + (isReal ? 0.25 : 0));
        given.emplace_back(field.name, values);
        Json const list = values;
        expected[name] = count == 1 ? list[0] : list;
    }
    FltWriter flt(revision);
    flt.add(layout.name, given);
    Json const json = jsonOf(flt);
    for (auto const& [name, value] : expected) {
        std::vector<Json> found;
        collect(json["fields"], name, found);
        ASSERT_FALSE(found.empty()) << layout.name << " of revision " << revision << " has no " << name
                                    << ": " << json;
        Json const& told = found.front().is_object() ? found.front()["word"] : found.front();
        Json const flat = told.is_array() && told[0].is_array() ? told.flatten() : told;
        if (flat.is_object()) {
            int i = 0;
            for (auto const& entry : flat)
                EXPECT_EQ(entry, value[static_cast<std::size_t>(i++)]) << layout.name << "." << name;
        } else {
            EXPECT_EQ(flat, value) << layout.name << "." << name << " of revision " << revision;
        }
    }
}

TEST(FltRecordJsonTest, EveryFieldOfEveryRecordStandsUnderItsNameAtEveryRevision)
{
    for (int const revision : {11, 13, 14, 1420, 1421, 1500, 1540, 1550, 1570, 1580})
        for (FltLayout const& layout : fltLayouts())
            if (layout.name != "Header" || revision >= 11)
                expectEveryField(layout, revision);
}

TEST(FltRecordJsonTest, FrameTellsOpcodeClassCategoryLengthAndPlace)
{
    FltWriter flt(1570);
    flt.push().add("Group", {{"idASCII", "g1"}});
    Json const json = jsonOf(flt);
    EXPECT_EQ(json["opcode"], 2);
    EXPECT_EQ(json["class"], "FltRecordGroup");
    EXPECT_EQ(json["category"], "PRIMARY_RECORD");
    EXPECT_EQ(json["length"], 32);
    EXPECT_EQ(json["offset"], flt.lastOffset());
    EXPECT_EQ(json["fields"]["idASCII"], "g1");
    std::vector<std::string> keys;
    for (auto const& [key, value] : json.items())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"opcode", "class", "category", "length", "offset", "fields"}));
}

TEST(FltRecordJsonTest, FlagsAreAWordAndNamedBits)
{
    FltWriter flt(1570);
    flt.add("Face", {{"flags", 0x44000000U}});
    EXPECT_EQ(
        fieldsOf(flt)["flags"],
        Json::parse(R"({"word": 1140850688, "terrain": false, "noColor": true, "noAlternateColor": false,
                              "packedColor": false, "terrainCultureCutout": false, "hidden": true})"));
}

TEST(FltRecordJsonTest, FlagsThatDumpAfterOtherFieldsAreStillTheFlags)
{
    Json const fields =
        fieldsOf(FltWriter(1570).add("Object", {{"flags", 0x08000000U}, {"transparency", 65535}}));
    EXPECT_EQ(fields["flags"]["flatShaded"], true);
    EXPECT_EQ(fields["flags"]["notInDaylight"], false);
    EXPECT_EQ(fields["transparency"], 65535);
}

TEST(FltRecordJsonTest, ColoursAndVectorsAreArrays)
{
    FltWriter flt(1570);
    flt.vertexPalette();
    flt.vertex("VertexColorNormal", 1, 2, 3,
               {{"packedColor", {255, 0, 128, 64}}, {"vertexNormal", {0.0, -1.0, 0.1}}});
    Json const fields = fieldsOf(flt);
    EXPECT_EQ(fields["packedColor"], Json::parse("[255, 0, 128, 64]"));
    EXPECT_EQ(fields["vertexNormal"], Json::parse("[0.0, -1.0, 0.1]")) << "a float shows its own digits";
    EXPECT_EQ(fields["Zcoordinate"], 3.0);
}

TEST(FltRecordJsonTest, MatricesAreArraysOfRows)
{
    FltWriter flt(1570);
    flt.add("Matrix", {{"matrix", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}}});
    EXPECT_EQ(
        fieldsOf(flt)["matrix"],
        Json::parse("[[1.0,2.0,3.0,4.0],[5.0,6.0,7.0,8.0],[9.0,10.0,11.0,12.0],[13.0,14.0,15.0,16.0]]"));
}

TEST(FltRecordJsonTest, NumbersThatJsonDoesNotHaveAreTexts)
{
    using Limits = std::numeric_limits<double>;
    FltWriter flt(1570);
    flt.add("LOD", {{"switchInDistance", Limits::infinity()},
                    {"switchOutDistance", -Limits::infinity()},
                    {"transitionRange", Limits::quiet_NaN()}});
    Json fields = fieldsOf(flt);
    EXPECT_EQ(fields["switchInDistance"], "Infinity");
    EXPECT_EQ(fields["switchOutDistance"], "-Infinity");
    EXPECT_EQ(fields["transitionRange"], "NaN");
    flt.add("Vector", {{"i", Limits::infinity()}, {"j", Limits::quiet_NaN()}});
    fields = fieldsOf(flt);
    EXPECT_EQ(fields["i"], "Infinity");
    EXPECT_EQ(fields["j"], "NaN");
}

TEST(FltRecordJsonTest, AFieldThatTheRevisionDoesNotHaveIsAbsent)
{
    auto const fields = [](int revision) { return fieldsOf(FltWriter(revision).add("Face")); };
    EXPECT_TRUE(fields(1500).contains("primaryColorIndex"));
    EXPECT_TRUE(fields(1500).contains("reserved7"));
    EXPECT_FALSE(fields(1499).contains("primaryColorIndex"));
    EXPECT_FALSE(fields(1499).contains("textureMappingIndex"));
    EXPECT_FALSE(fields(1499).contains("reserved7"));
}

TEST(FltRecordJsonTest, TextEndsAtItsZeroOrItsRoom)
{
    EXPECT_EQ(fieldsOf(FltWriter(1570).add("Group", {{"idASCII", "12345678"}}))["idASCII"], "12345678");
    EXPECT_EQ(fieldsOf(FltWriter(1570).add("Group", {{"idASCII", std::string("a\0b", 3)}}))["idASCII"], "a");
    EXPECT_EQ(fieldsOf(FltWriter(1570).addRaw(31, "a comment"))["textDescription"], "a comment");
    EXPECT_EQ(fieldsOf(FltWriter(1570).addRaw(31))["textDescription"], "");
}

TEST(FltRecordJsonTest, BytesThatAreNotUtf8ReadAsLatin1)
{
    auto const text = [](std::string const& bytes) {
        return fieldsOf(FltWriter(1570).addRaw(33, bytes))["idASCII"].get<std::string>();
    };
    EXPECT_EQ(text("Gr\xfc\xdf"
                   "e"),
              "Gr\u00fc\u00dfe");
    EXPECT_EQ(text("Gr\u00fc\u00dfe"), "Gr\u00fc\u00dfe");
    EXPECT_EQ(text("\u20ac and \U0001f6e9"), "\u20ac and \U0001f6e9");
    EXPECT_EQ(text("\x80\xff"), "\u0080\u00ff");
    EXPECT_EQ(text("\xc3"), "\u00c3") << "a character that breaks off";
    EXPECT_EQ(text("\xc0\xaf"), "\u00c0\u00af") << "an overlong form";
    EXPECT_EQ(text("\xe0\x80\xaf"), "\u00e0\u0080\u00af") << "an overlong form";
    EXPECT_EQ(text("\xed\xa0\x80"), "\u00ed\u00a0\u0080") << "half of a pair";
    EXPECT_EQ(text("\xf4\x90\x80\x80"), "\u00f4\u0090\u0080\u0080") << "beyond the last character";
    EXPECT_EQ(text("\xf8\x88\x80\x80\x80"), "\u00f8\u0088\u0080\u0080\u0080");
}

TEST(FltRecordJsonTest, ReservedBytesAreHexadecimal)
{
    Json const fields =
        fieldsOf(FltWriter(1570).addRaw(21, std::string("\x01\x23\xab", 3) + std::string(17, '\0')));
    EXPECT_EQ(fields["reserved1"], "0123ab0000000000");
    EXPECT_EQ(fields["vertexReferenceIndex"], 0);
}

TEST(FltRecordJsonTest, DataOfAnExtensionIsHexadecimal)
{
    EXPECT_EQ(fieldsOf(FltWriter(1570).addRaw(100, std::string(20, '\0') + "AZ"))["extensionData"], "415a");
    EXPECT_EQ(fieldsOf(FltWriter(1570).addRaw(100, std::string(20, '\0')))["extensionData"], "");
}

TEST(FltRecordJsonTest, AnUnknownRecordGivesTheBytesThatWereKeptOfIt)
{
    Json const json = jsonOf(FltWriter(1570).addRaw(99, "\x10\x20\x30\x40"));
    EXPECT_EQ(json["opcode"], 99);
    EXPECT_EQ(json["class"], "FltRecordUnknown");
    EXPECT_EQ(json["category"], "");
    EXPECT_EQ(json["length"], 8);
    EXPECT_EQ(json["fields"], Json::parse(R"({"rawData": "00630008"})"));
}

TEST(FltRecordJsonTest, ARecordOfAnOpcodeThatIsReadAsAnotherClassTellsThatClass)
{
    Json const json = jsonOf(FltWriter(1570).addRaw(82, std::string(152, '\0')));
    EXPECT_EQ(json["class"], "FltRecordRotateAboutEdge");
    EXPECT_EQ(json["opcode"], 76);
}

TEST(FltRecordJsonTest, VertexListsAreArraysOfOffsets)
{
    EXPECT_EQ(fieldsOf(FltWriter(1570).add("VertexList", {{"offsets", {8, 72, -1}}}))["vertexOffsets"],
              Json::parse("[8, 72, -1]"));
    EXPECT_EQ(fieldsOf(FltWriter(1570).addRaw(72))["vertexOffsets"], Json::array());
}

TEST(FltRecordJsonTest, MorphVertexListsTellBothMembersAsTheyAreRead)
{
    FltWriter flt(1570);
    flt.add("MorphVertexList", {{"offsets", {8, 72}}});
    EXPECT_EQ(fieldsOf(flt)["vertexOffsets"],
              Json::parse(R"([{"first": 8, "second": 524288}, {"first": 72, "second": 4718592}])"));
}

TEST(FltRecordJsonTest, SwitchMasksAreTheWordsThatAreThere)
{
    std::string const body = std::string("sw\0\0\0\0\0\0", 8) + FltWriter::big32(0) + FltWriter::big32(1) +
                             FltWriter::big32(2) + FltWriter::big32(1) + FltWriter::big32(5) +
                             FltWriter::big32(-1);
    Json const fields = fieldsOf(FltWriter(1570).addRaw(96, body));
    EXPECT_EQ(fields["idASCII"], "sw");
    EXPECT_EQ(fields["indexOfCurrentMask"], 1);
    EXPECT_EQ(fields["masks"], Json::parse("[5, -1]"));
}

TEST(FltRecordJsonTest, LayersOfAMultitextureTellTheirNumber)
{
    std::string body = FltWriter::big32(5);
    for (int i = 1; i <= 8; ++i)
        body += FltWriter::big16(i);
    EXPECT_EQ(fieldsOf(FltWriter(1570).addRaw(52, body)), Json::parse(R"({"attributeMask": 5, "layers": [
                  {"layer": 0, "texture": 1, "effect": 2, "mapping": 3, "data": 4},
                  {"layer": 2, "texture": 5, "effect": 6, "mapping": 7, "data": 8}]})"));
}

TEST(FltRecordJsonTest, ListsOfTextureCoordinatesTellVertexAndLayer)
{
    std::string record = FltWriter::big16(53) + FltWriter::big16(16) + FltWriter::big32(1) +
                         FltWriter::bigDouble(0.25) + FltWriter::bigDouble(0.5);
    FltRecordUVList list(16);
    list.getPropertiesFromData(record.data());
    // The factory makes no such record, so its opcode has no class.
    EXPECT_EQ(Json::parse(FltRecordJson::of(list, 0))["class"], "FltRecordUnknown");
    EXPECT_EQ(Json::parse(FltRecordJson::of(list, 0))["fields"], Json::object());
}

TEST(FltRecordJsonTest, ColourPalettesHaveTheColoursOfTheirLayout)
{
    auto const fields = [](int revision) {
        return fieldsOf(FltWriter(revision).addRaw(32, std::string(4300, '\1')));
    };
    EXPECT_EQ(fields(1570)["color"].size(), 1024U);
    EXPECT_EQ(fields(1420)["color"].size(), 512U);
    EXPECT_EQ(fields(13)["color"].size(), 4152U);
    EXPECT_EQ(fields(1420)["color"][0], 0x01010101);
    EXPECT_FALSE(fields(1420).contains("numberOfColorNames"));
}

TEST(FltRecordJsonTest, NamesOfColoursAreListed)
{
    std::string const entry = FltWriter::big16(12) + FltWriter::big16(0) + FltWriter::big16(7) +
                              FltWriter::big16(0) + std::string("red\0", 4);
    Json const fields =
        fieldsOf(FltWriter(1570).addRaw(32, std::string(128 + 4096, '\0') + FltWriter::big32(1) + entry));
    EXPECT_EQ(fields["numberOfColorNames"], 1);
    EXPECT_EQ(fields["colorEntries"],
              Json::parse(R"([{"length": 12, "reserved1": 0, "index": 7, "reserved2": 0, "name": "red"}])"));
}

TEST(FltRecordJsonTest, NamesOfANamePaletteAreListed)
{
    std::string const body = FltWriter::big32(1) + FltWriter::big16(9) + FltWriter::big32(10) +
                             FltWriter::big16(3) + std::string("abcd");
    EXPECT_EQ(
        fieldsOf(FltWriter(1570).addRaw(114, body)),
        Json::parse(
            R"({"numberOfNames": 1, "nextAvailableIndex": 9, "names": [{"index": 3, "name": "abcd"}]})"));
}

TEST(FltRecordJsonTest, BothHalvesOfASoundPaletteAreListed)
{
    std::string table = FltWriter::big16(93) + FltWriter::big16(44) + FltWriter::big32(1) +
                        FltWriter::big32(4) + FltWriter::big32(1) + FltWriter::big32(99) +
                        std::string(12, '\0') + FltWriter::big32(5) + FltWriter::big32(0) +
                        FltWriter::big32(16);
    std::string names =
        FltWriter::big16(93) + FltWriter::big16(16) + FltWriter::big32(2) + FltWriter::big32(4) + "a.wv";
    FltRecordSoundPalette palette(44);
    palette.getPropertiesFromData(table.data());
    palette.getPropertiesFromData(names.data());
    Json const fields = Json::parse(FltRecordJson::of(palette, 0))["fields"];
    EXPECT_EQ(fields["maxNumber"], 4);
    EXPECT_EQ(fields["actualNumber"], 1);
    EXPECT_EQ(fields["totalLength"], 99);
    EXPECT_EQ(fields["sounds"], Json::parse(R"([{"index": 5, "fileNameOffset": 16}])"));
    EXPECT_EQ(fields["dataLength"], 4);
    EXPECT_EQ(fields["packedData"], "612e7776");
}

TEST(FltRecordJsonTest, OldMaterialsAreListedOneByOne)
{
    FltWriter flt(14);
    flt.addRaw(66, FltWriter::bigFloat(0.5) + std::string(180 + 63 * 184, '\0'));
    Json const entries = fieldsOf(flt)["entries"];
    ASSERT_EQ(entries.size(), 64U);
    EXPECT_EQ(entries[0]["ambientRed"], 0.5);
    EXPECT_EQ(entries[0]["flags"], Json::parse(R"({"word": 0, "materialUsed": false})"));
    EXPECT_EQ(entries[63]["name"], "");
}

TEST(FltRecordJsonTest, TrackplanesAreListedWhetherTheyAreValidOrNot)
{
    FltWriter flt(1570);
    flt.addRaw(83, FltWriter::big32(0) + FltWriter::big32(7) + FltWriter::big32(0) +
                       FltWriter::bigDouble(2.5) + std::string(4000, '\0'));
    Json const fields = fieldsOf(flt);
    ASSERT_EQ(fields["trackPlane"].size(), 10U);
    EXPECT_EQ(fields["trackPlane"][9]["activeFlag"], 7);
    EXPECT_EQ(fields["trackPlane"][9]["originX"], 2.5);
}

TEST(FltRecordJsonTest, ARecordWithTwoMappingsHasBothBlocks)
{
    std::string body = FltWriter::big32(0) + FltWriter::big32(3) + std::string(20, '\0') +
                       FltWriter::big32(4) + FltWriter::big32(1) + std::string(128, '\0') +
                       FltWriter::bigFloat(1.5) + std::string(400, '\0');
    Json const fields = fieldsOf(FltWriter(1570).addRaw(112, body));
    EXPECT_EQ(fields["index"], 3);
    EXPECT_EQ(fields["spherical"]["scale"], 1.5);
    EXPECT_EQ(fields["warped"]["activeGeometryPoint"], 0x3fc00000);
    EXPECT_EQ(fields["warped"]["cells"].size(), 74U);
    EXPECT_FALSE(fields.contains("put"));
}

} // namespace

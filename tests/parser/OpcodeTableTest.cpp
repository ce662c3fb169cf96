#include "parser/Flt_15_7_CreationVisitor.h"

#include "records/FltRecordFace.h"
#include "records/FltRecordMultitexture.h"
#include "records/FltRecordTransformations.h"
#include "support/RecordText.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <map>
#include <typeinfo>

namespace
{

/// What one opcode is read as.
struct Row {
    char const* className;
    char const* category;
    char const* title;
    int reportedOpcode = 0; ///< 0: the opcode of the file.
};

char const* const primary = "PRIMARY_RECORD";
char const* const ancillary = "ANCILLARY_RECORD";
char const* const control = "CONTROL_RECORD";
char const* const palette = "PALETTE_RECORD";

std::map<int, Row> const rows = {
    {1, {"FltRecordHeader", primary, "\n HEADER RECORD "}},
    {2, {"FltRecordGroup", primary, "\n GROUP RECORD "}},
    {3, {"FltRecordOLDLOD", primary, "\n OLD LEVEL_OF_DETAIL (LOD) RECORD (OBSOLETE) "}},
    {4, {"FltRecordObject", primary, "\n OBJECT RECORD "}},
    {5, {"FltRecordFace", primary, "\n FACE RECORD "}},
    {7, {"FltRecordOldVertex", primary, "\n OLD VERTEX RECORD (OBSOLETE)"}},
    {8, {"FltRecordOldVertexColor", primary, "\n OLD VERTEX COLOR RECORD (OBSOLETE)"}},
    {9, {"FltRecordOldVertexColorNormal", primary, "\n OLD VERTEX COLOR NORMAL RECORD (OBSOLETE)"}},
    {10, {"FltRecordPushLevel", control, "\n PUSH LEVEL RECORD "}},
    {11, {"FltRecordPopLevel", control, "\n POP LEVEL RECORD "}},
    {14, {"FltRecordDOF", primary, "\n DOF RECORD "}},
    {19, {"FltRecordPushSubface", control, "\n PUSH SUBFACE RECORD "}},
    {20, {"FltRecordPopSubface", control, "\n POP SUBFACE RECORD "}},
    {21, {"FltRecordPushExtension", control, "\n PUSH EXTENSION RECORD "}},
    {22, {"FltRecordPopExtension", control, "\n POP EXTENSION RECORD "}},
    {31, {"FltRecordComment", ancillary, "\n COMMENT RECORD "}},
    {32, {"FltRecordColorPalette", palette, "\n COLOR PALETTE RECORD "}},
    {33, {"FltRecordLongID", ancillary, "\n LONG_ID RECORD "}},
    {49, {"FltRecordMatrix", ancillary, "\n MATRIX RECORD "}},
    {50, {"FltRecordVector", ancillary, "\n VECTOR RECORD "}},
    {51, {"FltRecordOldBoundingBox", ancillary, "\n OLD BOUNDING BOX "}},
    {52, {"FltRecordMultitexture", ancillary, "\n MULTI TEXTURE RECORD "}},
    {60, {"FltRecordReplicate", ancillary, "\n REPLICATE RECORD "}},
    {61, {"FltRecordInstanceReference", control, "\n INSTANCE REFERENCE RECORD "}},
    {62, {"FltRecordInstanceDefinition", control, "\n INSTANCE DEFINITION RECORD "}},
    {63, {"FltRecordExternalReference", primary, "\n EXTERNAL REFERENCE RECORD "}},
    {64, {"FltRecordTexturePattern", palette, "\n TEXTURE_PATTERN RECORD "}},
    {66, {"FltRecordOLDMaterialPalette", palette, "\n OLD MATERIAL PALETTE RECORD (OBSOLETE)"}},
    {67, {"FltRecordVertexPalette", palette, "\n VERTEX PALETTE RECORD "}},
    {68, {"FltRecordVertexColor", palette, "\n VERTEX COLOR RECORD "}},
    {69, {"FltRecordVertexColorNormal", palette, "\n VERTEX COLOR NORMAL RECORD "}},
    {70, {"FltRecordVertexColorNormalUv", palette, "\n VERTEX COLOR NORMAL UV RECORD "}},
    {71, {"FltRecordVertexColorUv", palette, "\n VERTEX COLOR UV (TEXTURE) RECORD "}},
    {72, {"FltRecordVertexList", primary, "\n VERTEX LIST RECORD "}},
    {73, {"FltRecordLOD", primary, "\n LEVEL_OF_DETAIL (LOD) RECORD "}},
    {74, {"FltRecordBoundingBox", ancillary, "\n BOUNDING BOX "}},
    {76, {"FltRecordRotateAboutEdge", ancillary, "\n ROTATE ABOUT EDGE RECORD "}},
    {78, {"FltRecordTranslate", ancillary, "\n TRANSLATE RECORD "}},
    {79, {"FltRecordScaleNonUniform", ancillary, "\n SCALE NON UNIFORM RECORD "}},
    {80, {"FltRecordRotateAboutPoint", ancillary, "\n ROTATE ABOUT POINT RECORD "}},
    {82, {"FltRecordRotateAboutEdge", ancillary, "\n ROTATE ABOUT EDGE RECORD ", 76}},
    {83, {"FltRecordEyePointTrackPlane", palette, "\n EYEPOINT TRACKPLANE RECORD "}},
    {89, {"FltRecordMorphVertexList", primary, "\n MORPH VERTEX LIST RECORD "}},
    {91, {"FltRecordSound", primary, "\n SOUND RECORD "}},
    {93, {"FltRecordSoundPalette", palette, "\n SOUND PALETTE RECORD "}},
    {94, {"FltRecordGeneralMatrix", ancillary, "\n GENERAL_MATRIX RECORD "}},
    {95, {"FltRecordText", primary, "\n TEXT RECORD "}},
    {96, {"FltRecordSwitch", primary, "\n SWITCH RECORD "}},
    {97, {"FltRecordLineStylePalette", palette, "\n LINE STYLE PALETTE RECORD "}},
    {98, {"FltRecordClipRegion", primary, "\n CLIP REGION RECORD "}},
    {100, {"FltRecordExtensionAttribute", ancillary, "\n EXTENSION ATTRIBUTE RECORD "}},
    {101, {"FltRecordLightSource", primary, "\n LIGHT SOURCE RECORD "}},
    {102, {"FltRecordLightSourcePalette", palette, "\n LIGHT SOURCE PALETTE RECORD "}},
    {105, {"FltRecordBoundingVolumeSphere", ancillary, "\n BOUNDING VOLUME SPHERE "}},
    {106, {"FltRecordBoundingVolumeCylinder", ancillary, "\n BOUNDING VOLUME CYLINDER "}},
    {108, {"FltRecordBoundingVolumeCenter", ancillary, "\n BOUNDING VOLUME CENTER "}},
    {109, {"FltRecordBoundingVolumeOrientation", ancillary, "\n BOUNDING VOLUME ORIENTATION "}},
    {111, {"FltRecordLightPoint", primary, "\n LIGHT POINT RECORD "}},
    {112, {"FltRecordTextureMappingPalette", palette, "\n TEXTURE MAPPING PALETTE RECORD "}},
    {113, {"FltRecordMaterial", palette, "\n MATERIAL PALETTE RECORD "}},
    {114, {"FltRecordNamePalette", palette, "\n NAME PALETTE RECORD "}},
};

Row const unknown = {"FltRecordUnknown", "", "\n UNKNOWN RECORD "};

/// The name of an object's class as the compiler has it: the number of letters and the letters.
std::string classNameOf(FltRecord const& record)
{
    std::string const name = typeid(record).name();
    return name.substr(name.find_first_not_of("0123456789"));
}

/// The record that the factory makes of a body of zeros.
std::unique_ptr<FltRecord> made(int opcode, int revision = 1570)
{
    StreamCapture const messages(std::cerr);
    return decodeLast(FltWriter(revision).addRaw(opcode, std::string(12000, '\0')));
}

void expectReadAs(int opcode, int told, Row const& row)
{
    auto const record = made(opcode);
    EXPECT_EQ(classNameOf(*record), row.className) << "opcode " << opcode;
    EXPECT_EQ(record->getRecordCategory(), row.category) << "opcode " << opcode;
    EXPECT_EQ(record->getOpcode(), told) << "opcode " << opcode;
    EXPECT_EQ(record->getLength(), 12004U) << "opcode " << opcode;
    std::ostringstream os;
    record->nameOpcodeAndLength(os);
    EXPECT_EQ(os.str(), frame(row.title, row.category, told, 12004)) << "opcode " << opcode;
    std::string const dump = dumpOf(*record);
    EXPECT_EQ(dump.substr(0, os.str().size()), os.str())
        << "opcode " << opcode << ": a dump begins with its frame";
}

TEST(OpcodeTableTest, EveryOpcodeUpTo140HasItsClassCategoryTitleAndNumber)
{
    EXPECT_EQ(rows.size(), 61U);
    for (int opcode = 0; opcode <= 140; ++opcode) {
        auto const found = rows.find(opcode);
        Row const& row = found != rows.end() ? found->second : unknown;
        expectReadAs(opcode, row.reportedOpcode != 0 ? row.reportedOpcode : opcode, row);
    }
}

TEST(OpcodeTableTest, OpcodesWithTheTopBitSetAreUnknownAndNegative)
{
    for (int opcode = 0; opcode <= 140; ++opcode)
        expectReadAs(opcode | 0x8000, opcode - 0x8000, unknown);
    expectReadAs(0xffff, -1, unknown);
}

TEST(OpcodeTableTest, OpcodesFarAboveTheTableAreUnknown)
{
    for (int opcode : {256 + 1, 256 + 93, 512 + 2, 0x7fff})
        expectReadAs(opcode, opcode, unknown);
}

TEST(OpcodeTableTest, Opcode53DumpsAsAnUnknownRecordThoughAClassOfItExists)
{
    EXPECT_EQ(FltRecordUVList(8).getOpcode(), 53);
    auto const record = decodeLast(FltWriter().addRaw(53, "abcd"));
    EXPECT_EQ(dumpOf(*record), "\n UNKNOWN RECORD \n  ()\n-- Opcode: 53  Length: 8 --\n");
}

TEST(OpcodeTableTest, Opcode82DumpsAsARotateAboutEdgeWithTheOpcode76)
{
    EXPECT_EQ(FltRecordPutTransform(156).getOpcode(), 82);
    auto const record = decodeLast(FltWriter().add("PutTransform"));
    std::string const begin =
        "\n ROTATE ABOUT EDGE RECORD \n  (ANCILLARY_RECORD)\n-- Opcode: 76  Length: 156 --\n";
    EXPECT_EQ(dumpOf(*record).substr(0, begin.size()), begin);
}

TEST(OpcodeTableTest, RevisionGoesToTheEightClassesThatAskForItAndTheRgbModeToNone)
{
    auto const revisionOf = [](int opcode) {
        auto const record = made(opcode, 1480);
        auto const* const version = dynamic_cast<FltVersion const*>(record.get());
        EXPECT_TRUE(version == nullptr || !version->rgbMode);
        return version != nullptr ? version->revision : -1;
    };
    for (int opcode = 0; opcode <= 140; ++opcode) {
        bool const asks =
            opcode == 2 || opcode == 5 || opcode == 32 || opcode == 66 || (opcode >= 68 && opcode <= 71);
        EXPECT_EQ(revisionOf(opcode), asks ? 1480 : -1) << "opcode " << opcode;
    }
}

TEST(OpcodeTableTest, RgbModeOfTheFactoryIsNeverCopiedIntoARecord)
{
    StreamCapture const out(std::cout);
    std::string const bytes = FltWriter().add("Face").lastRecord();
    Flt_15_7_CreationVisitor visitor;
    visitor.revision = 1570;
    visitor.rgbMode = true;
    FltRawData raw;
    raw.assign(bytes.data(), bytes.data() + bytes.size(), bytes.size(), visitor.getReach(5, 80));
    FltRecord* record = nullptr;
    visitor.visitFltRawData(record, &raw);
    std::unique_ptr<FltRecord> const owned(record);
    Flt_15_7_CreationVisitor::forgetPrevious();
    auto const* const face = dynamic_cast<FltRecordFace const*>(record);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->revision, 1570);
    EXPECT_FALSE(face->rgbMode);
}

TEST(OpcodeTableTest, EveryClassReadsARecordOfFourBytesAtTheEndOfTheFile)
{
    StreamCapture const messages(std::cerr);
    for (int revision : {11, 1400, 1480, 1520, 1545, 1560, 1570, 1580})
        for (int opcode = 0; opcode <= 115; ++opcode) {
            auto const record = decodeLast(FltWriter(revision).addRaw(opcode));
            ASSERT_NE(record, nullptr);
            EXPECT_EQ(record->getLength(), 4U);
            EXPECT_NE(dumpOf(*record).find("  Length: 4 --\n"), std::string::npos);
        }
}

} // namespace

#include "robustness/Endurance.h"
#include "robustness/MeasuredConversion.h"
#include "support/Text.h"
#include "writer/FltWriter.h"

#include "messages/FltLimits.h"
#include "records/FltOpcode.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace
{

/// A sanitizer slows everything down and holds freed memory back: it gets smaller files and more of memory.
constexpr std::size_t large = isSanitized ? 1U << 20 : 10U << 20;
constexpr int many = isSanitized ? 10'000 : 100'000;
constexpr std::size_t mostMemoryPerByte = 40;
constexpr std::size_t mostMemory = isSanitized ? 1200U << 20 : 200U << 20;

void expectToBeBounded(MeasuredConversion const& conversion, FltWriter const& flt)
{
    EXPECT_EQ(conversion.result, 0);
    EXPECT_GT(conversion.memory, flt.bytes().size()) << "what is measured holds the file at least";
    EXPECT_LT(conversion.memory, flt.bytes().size() * mostMemoryPerByte + mostMemory);
}

FltWriter& addTimes(FltWriter& flt, std::string const& record, std::size_t times)
{
    return flt.addBytes(repeated(record, times));
}

std::string record(int opcode, std::string const& body = {})
{
    return FltWriter().addRaw(opcode, body).lastRecord();
}

class ShortPaletteTest : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(ShortPaletteTest, MillionsOfRecordsShorterThanTheirLayoutAreToldOnce)
{
    FltWriter flt(1570);
    addTimes(flt, record(GetParam()), large / 4);
    MeasuredConversion const conversion(flt.bytes());
    expectToBeBounded(conversion, flt);
    EXPECT_EQ(conversion.countMessages("Too many records are shorter than their layout"), 1);
}

INSTANTIATE_TEST_SUITE_P(Opcode, ShortPaletteTest,
                         testing::Values(FltOpcode::colorPalette, FltOpcode::oldMaterialPalette,
                                         FltOpcode::eyePointTrackPlane, FltOpcode::textureMappingPalette));

TEST(HostileSizesTest, ConversionThatEndsWithAnExceptionIsNoResult)
{
    EXPECT_THROW(MeasuredConversion(withNegativeSwitch().bytes()), std::runtime_error);
}

TEST(HostileSizesTest, RecordsThatClaimNoLengthEndTheScanAtTheFirst)
{
    FltWriter flt(1570);
    addTimes(flt, std::string("\0\2\0\0", 4), large / 4);
    MeasuredConversion const conversion(flt.bytes());
    expectToBeBounded(conversion, flt);
    EXPECT_EQ(conversion.countMessages("A record has the length zero: the rest of the file, "), 1);
    EXPECT_LT(conversion.logSize, 5000U);
}

TEST(HostileSizesTest, OfMillionsOfDamagedRecordsTheFirstAreTold)
{
    FltWriter flt(1570);
    addTimes(flt, record(FltOpcode::namePalette, FltWriter::big32(1) + FltWriter::big16(1)), large / 5);
    MeasuredConversion const conversion(flt.bytes());
    expectToBeBounded(conversion, flt);
    EXPECT_EQ(conversion.countMessages("A name palette holds fewer names than it says"),
              FltLimits::messagesOfAKind + 1);
    EXPECT_EQ(conversion.countMessages(" more of this kind: A name palette holds fewer names than it says"),
              1);
}

TEST(HostileSizesTest, HighestCountInEveryCountedFieldIsCutToWhatIsThere)
{
    int const most = 0x7fffffff;
    FltWriter flt(1570);
    flt.add("ColorPalette", {{"names", FltWriter::big32(most)}});
    flt.add("NamePalette", {{"numberOfNames", most}});
    flt.add("SoundPaletteTable", {{"actualNumber", most}, {"maxNumber", most}, {"totalLength", most}});
    flt.add("SoundPaletteNames", {{"dataLength", most}, {"packedData", "abc"}});
    flt.add("Replicate", {{"numberOfReplications", most}});
    flt.push();
    flt.add("Switch", {{"numberOfMasks", most}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
    flt.add("Replicate", {{"numberOfReplications", most}});
    flt.add("Text", {{"maxLineNumber", most}, {"maxCharNumber", most}, {"textLength", most}});
    flt.pop();
    MeasuredConversion const conversion(flt.bytes());
    EXPECT_EQ(conversion.result, 0);
    EXPECT_LT(conversion.memory, mostMemory);
    EXPECT_EQ(conversion.countMessages("(Warning Level: 2)"), 5) << conversion.messages;
}

TEST(HostileSizesTest, LongestCommentOfEmptyOrShortLinesIsConverted)
{
    for (std::string const& line : {std::string("\n"), std::string("a\n")}) {
        FltWriter flt(1570);
        flt.push();
        for (int i = 0; i < 20; ++i) {
            flt.add("Group", {{"idASCII", "g"}});
            flt.add("Comment", {{"textDescription", repeated(line, 65531 / line.size())}});
            flt.push().pop();
        }
        flt.pop();
        MeasuredConversion const conversion(flt.bytes());
        EXPECT_EQ(conversion.result, 0);
        EXPECT_LT(conversion.memory, flt.bytes().size() * 400 + mostMemory);
        EXPECT_GT(conversion.logSize, flt.bytes().size());
    }
}

TEST(HostileSizesTest, FacesOfOldVerticesBesideFacesWithListsAreBounded)
{
    FltWriter flt(1570);
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0);
    double const b = flt.vertex("VertexColor", 1, 0, 0);
    double const c = flt.vertex("VertexColor", 1, 1, 0);
    flt.push().add("Object", {{"idASCII", "o"}}).push();
    std::string const old = FltWriter().add("Face").lastRecord() + record(FltOpcode::pushLevel) +
                            repeated(FltWriter().add("OldVertex").lastRecord(), 3) +
                            record(FltOpcode::popLevel);
    std::string const listed = FltWriter().add("Face").lastRecord() + record(FltOpcode::pushLevel) +
                               FltWriter().add("VertexList", {{"offsets", {a, b, c}}}).lastRecord() +
                               record(FltOpcode::popLevel);
    addTimes(flt, old + listed, many);
    flt.pop().pop();
    MeasuredConversion const conversion(flt.bytes());
    expectToBeBounded(conversion, flt);
    EXPECT_EQ(conversion.countMessages("The faces of obsolete vertices repeat too many vertices"), 1);
}

TEST(HostileSizesTest, ReferencesToMissingFilesAreToldOneByOne)
{
    FltWriter flt(1570);
    flt.push();
    for (int i = 0; i < many; ++i)
        flt.add("ExternalReference", {{"asciiPath", "missing" + std::to_string(i) + ".flt"}}).addRaw(55);
    flt.pop();
    MeasuredConversion const conversion(flt.bytes());
    expectToBeBounded(conversion, flt);
    EXPECT_EQ(conversion.countMessages("CAN'T RESOLVE EXTERNAL REFERENCE: "), many);
    EXPECT_EQ(conversion.countMessages("CAN'T RESOLVE EXTERNAL REFERENCE: missing77.flt\n"), 1);
}

TEST(HostileSizesTest, LevelsOfDetailNestedAThousandDeepOverManyFacesAreConverted)
{
    int const levels = 1000;
    FltWriter flt(1570);
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0);
    double const b = flt.vertex("VertexColor", 1, 0, 0);
    double const c = flt.vertex("VertexColor", 1, 1, 0);
    flt.push();
    for (int i = 0; i < levels; ++i)
        flt.add("LOD", {{"idASCII", "lod"}}).push();
    flt.add("Object", {{"idASCII", "o"}}).push();
    for (int i = 0; i < many / 10; ++i)
        flt.face({a, b, c});
    flt.pop();
    for (int i = 0; i <= levels; ++i)
        flt.pop();
    MeasuredConversion const conversion(flt.bytes());
    expectToBeBounded(conversion, flt);
    EXPECT_LE(conversion.countMessages("WARNING"), 1) << conversion.messages;
}

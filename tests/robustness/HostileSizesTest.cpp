#include "robustness/Endurance.h"
#include "support/ConvertedScene.h"
#include "support/MemoryInput.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include "convert/FltToInventor.h"
#include "messages/FltLimits.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <string>

namespace
{

/// A sanitizer slows everything down and holds freed memory back: it gets smaller files and more of both.
constexpr std::size_t large = isSanitized ? 1U << 20 : 10U << 20;
constexpr int many = isSanitized ? 10'000 : 100'000;
constexpr double mostSeconds = isSanitized ? 60 : 15;
constexpr std::size_t mostMemoryPerByte = 40;
constexpr std::size_t mostMemory = isSanitized ? 1200U << 20 : 200U << 20;

/// A conversion of a large database, with a log that is counted only.
class Conversion
{
public:
    explicit Conversion(std::string const& bytes)
    {
        SmallVertexPalettes const small(1000);
        forgetPeak();
        std::size_t const before = peakMemory();
        Stopwatch const watch;
        {
            MemoryInput input(bytes, "nowhere/large.flt");
            root->ref();
            StreamCapture const err(std::cerr);
            std::streambuf* const out = std::cout.rdbuf(&log);
            {
                FltToInventor converter;
                converter.setFltInputToconvert(&input);
                converter.setResult(root);
                result = converter.convert();
            }
            std::cout.rdbuf(out);
            messages = err.str();
            while (root->getRefCount() > 1)
                root->unrefNoDelete();
            root->unref();
        }
        seconds = watch.seconds();
        growth = peakMemory() - before;
        size = bytes.size();
    }

    std::size_t told(std::string const& message) const
    {
        std::size_t times = 0;
        for (std::size_t at = messages.find(message); at != std::string::npos;
             at = messages.find(message, at + 1))
            ++times;
        return times;
    }

    void expectToBeBounded() const
    {
        EXPECT_EQ(result, 0);
        EXPECT_LT(seconds, mostSeconds);
        EXPECT_LT(growth, size * mostMemoryPerByte + mostMemory);
    }

    CountingBuffer log;
    std::string messages;
    int result = -1;
    double seconds = 0;
    std::size_t growth = 0;
    std::size_t size = 0;

private:
    SoSeparator* root = new SoSeparator;
};

std::string repeated(std::string const& piece, std::size_t times)
{
    std::string text;
    text.reserve(piece.size() * times);
    for (; times > 0; --times)
        text += piece;
    return text;
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
    Conversion const conversion(flt.bytes());
    conversion.expectToBeBounded();
    EXPECT_EQ(conversion.told("Too many records are shorter than their layout"), 1U);
}

INSTANTIATE_TEST_SUITE_P(Opcode, ShortPaletteTest, testing::Values(32, 66, 83, 112));

TEST(HostileSizesTest, RecordsThatClaimNoLengthEndTheScanAtTheFirst)
{
    FltWriter flt(1570);
    addTimes(flt, std::string("\0\2\0\0", 4), large / 4);
    Conversion const conversion(flt.bytes());
    conversion.expectToBeBounded();
    EXPECT_EQ(conversion.told("A record has the length zero: the rest of the file, "), 1U);
    EXPECT_LT(conversion.log.size, 5000U);
}

TEST(HostileSizesTest, OfMillionsOfDamagedRecordsTheFirstAreTold)
{
    FltWriter flt(1570);
    addTimes(flt, record(114, FltWriter::big32(1) + FltWriter::big16(1)), large / 5);
    Conversion const conversion(flt.bytes());
    conversion.expectToBeBounded();
    EXPECT_EQ(conversion.told("A name palette holds fewer names than it says"),
              static_cast<std::size_t>(FltLimits::messagesOfAKind) + 1);
    EXPECT_EQ(conversion.told(" more of this kind: A name palette holds fewer names than it says"), 1U);
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
    Conversion const conversion(flt.bytes());
    EXPECT_EQ(conversion.result, 0);
    EXPECT_LT(conversion.seconds, 5);
    EXPECT_LT(conversion.growth, mostMemory);
    EXPECT_EQ(conversion.told("(Warning Level: 2)"), 5U) << conversion.messages;
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
        Conversion const conversion(flt.bytes());
        EXPECT_EQ(conversion.result, 0);
        EXPECT_LT(conversion.seconds, mostSeconds);
        EXPECT_LT(conversion.growth, conversion.size * 400 + mostMemory);
        EXPECT_GT(conversion.log.size, conversion.size);
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
    std::string const old = FltWriter().add("Face").lastRecord() + record(10) +
                            repeated(FltWriter().add("OldVertex").lastRecord(), 3) + record(11);
    std::string const listed = FltWriter().add("Face").lastRecord() + record(10) +
                               FltWriter().add("VertexList", {{"offsets", {a, b, c}}}).lastRecord() +
                               record(11);
    addTimes(flt, old + listed, many);
    flt.pop().pop();
    Conversion const conversion(flt.bytes());
    conversion.expectToBeBounded();
    EXPECT_EQ(conversion.told("The faces of obsolete vertices repeat too many vertices"), 1U);
}

TEST(HostileSizesTest, ReferencesToMissingFilesAreToldOneByOne)
{
    FltWriter flt(1570);
    flt.push();
    for (int i = 0; i < many; ++i)
        flt.add("ExternalReference", {{"asciiPath", "missing" + std::to_string(i) + ".flt"}}).addRaw(55);
    flt.pop();
    Conversion const conversion(flt.bytes());
    conversion.expectToBeBounded();
    EXPECT_EQ(conversion.told("CAN'T RESOLVE EXTERNAL REFERENCE: "), static_cast<std::size_t>(many));
    EXPECT_EQ(conversion.told("CAN'T RESOLVE EXTERNAL REFERENCE: missing77.flt\n"), 1U);
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
    Conversion const conversion(flt.bytes());
    conversion.expectToBeBounded();
    EXPECT_LE(conversion.told("WARNING"), 1U) << conversion.messages;
}

#include "parser/Flt_15_7_CreationVisitor.h"

#include "records/FltRecordSound.h"
#include "records/FltRecordUnknown.h"
#include "support/Parse.h"
#include "support/RecordText.h"
#include "support/Text.h"

#include <gtest/gtest.h>

namespace
{

TEST(Flt_15_7_CreationVisitorTest, RevisionIs0AndRgbModeOffAtTheBeginning)
{
    Flt_15_7_CreationVisitor const visitor;
    EXPECT_EQ(visitor.revision, 0);
    EXPECT_FALSE(visitor.rgbMode);
}

TEST(Flt_15_7_CreationVisitorTest, OpcodesWithoutAClassGiveAnUnknownRecordThatTellsTheirNumber)
{
    for (int opcode : {0, 6, 53, 65, 110, 115, 140, 1000, 32767}) {
        auto const record = decodeLastAs<FltRecordUnknown>(FltWriter().addRaw(opcode, "body"));
        ASSERT_NE(record, nullptr) << opcode;
        EXPECT_EQ(record->getOpcode(), opcode);
        EXPECT_EQ(record->getRecordCategory(), "");
        EXPECT_EQ(dumpOf(*record), frame("\n UNKNOWN RECORD ", "", opcode, 8));
    }
}

TEST(Flt_15_7_CreationVisitorTest, OpcodeWithTheTopBitSetGivesANegativeNumber)
{
    for (int opcode : {0x8000, 0x8001, 0x805d, 0xffff}) {
        auto const record = decodeLastAs<FltRecordUnknown>(FltWriter().addRaw(opcode));
        ASSERT_NE(record, nullptr) << opcode;
        EXPECT_EQ(record->getOpcode(), opcode - 65536);
    }
}

TEST(Flt_15_7_CreationVisitorTest, RecordIsDumpedToCoutAsItIsMade)
{
    Flt_15_7_CreationVisitor visitor;
    std::string const bytes = FltWriter().push().lastRecord();
    FltRawData raw;
    raw.assign(bytes.data(), bytes.data() + bytes.size(), 4, 4);
    FltRecord* record = nullptr;
    StreamCapture const out(std::cout);
    visitor.visitFltRawData(record, &raw);
    EXPECT_EQ(out.str(), dumpOf(*record));
    Flt_15_7_CreationVisitor::forgetPrevious();
    delete record;
}

TEST(Flt_15_7_CreationVisitorTest, TwoSoundPalettesInARowGiveOneObjectDecodedTwiceInTwoEntries)
{
    FltWriter flt;
    flt.add("SoundPaletteTable", {{"actualNumber", 1}, {"entries", {7, 0, 2}}});
    flt.add("SoundPaletteNames", {{"dataLength", 5}, {"packedData", "a.wav"}});
    Parse parse(flt);
    ASSERT_EQ(parse.size(), 3U);
    EXPECT_EQ(parse[1], parse[2]);
    auto const* const palette = dynamic_cast<FltRecordSoundPalette*>(parse[1]);
    ASSERT_NE(palette, nullptr);
    EXPECT_EQ(palette->fileNameOffset, (std::map<int, int>{{7, 2}}));
    EXPECT_STREQ(palette->packedData.get(), "a.wav");
    EXPECT_EQ(palette->getLength(), 44U);
}

TEST(Flt_15_7_CreationVisitorTest, EachOfTwoJoinedSoundPalettesDumpsTheTitleLinesWithTheLengthOfTheFirst)
{
    FltWriter flt;
    flt.add("SoundPaletteTable", {{"actualNumber", 1}, {"entries", {7, 0, 2}}});
    flt.add("SoundPaletteNames", {{"dataLength", 5}, {"packedData", "a.wav"}});
    Parse parse(flt);
    std::string const lines = frame("\n SOUND PALETTE RECORD ", "PALETTE_RECORD", 93, 44);
    std::size_t const begin = parse.log.find("RGB mode: false\n") + 16;
    EXPECT_EQ(parse.log.substr(begin), lines + lines + "end of parsing\n");
}

TEST(Flt_15_7_CreationVisitorTest, ThirdSoundPaletteInARowJoinsTheFirstTwo)
{
    FltWriter flt;
    flt.add("SoundPaletteTable").add("SoundPaletteNames", {{"dataLength", 1}, {"packedData", "a"}});
    flt.add("SoundPaletteNames", {{"dataLength", 2}, {"packedData", "bc"}});
    Parse parse(flt);
    ASSERT_EQ(parse.size(), 4U);
    EXPECT_EQ(parse[1], parse[2]);
    EXPECT_EQ(parse[1], parse[3]);
    EXPECT_STREQ(dynamic_cast<FltRecordSoundPalette&>(*parse[1]).packedData.get(), "bc");
}

TEST(Flt_15_7_CreationVisitorTest, SoundPaletteBehindAnyOtherRecordIsANewObject)
{
    FltWriter flt;
    flt.add("SoundPaletteTable").addRaw(92).add("SoundPaletteNames").push().add("SoundPaletteTable");
    Parse parse(flt);
    ASSERT_EQ(parse.size(), 6U);
    EXPECT_NE(parse[1], parse[3]);
    EXPECT_NE(parse[3], parse[5]);
    EXPECT_EQ(countOf(parse.log, " SOUND PALETTE RECORD "), 3);
}

TEST(Flt_15_7_CreationVisitorTest, SoundPaletteAtTheBeginningOfAFileIsANewObjectAlsoBehindOneThatEndsWithIt)
{
    FltWriter flt;
    flt.add("SoundPaletteTable");
    Parse first(flt);
    Parse second(flt);
    EXPECT_NE(first[1], second[1]) << "the second file's header stands between";
}

TEST(Flt_15_7_CreationVisitorTest, ForgottenSoundPaletteIsNotJoined)
{
    FltWriter flt;
    flt.add("SoundPaletteTable");
    auto const first = decodeLast(flt);
    auto const second = decodeLast(flt);
    EXPECT_NE(first.get(), second.get());
}

TEST(Flt_15_7_CreationVisitorTest, ReachIsThatOfTheLayoutAndOfUnknownRecordsTheirLength)
{
    Flt_15_7_CreationVisitor const visitor;
    EXPECT_EQ(visitor.getReach(1, 4), 324U);
    EXPECT_EQ(visitor.getReach(10, 100), 4U);
    EXPECT_EQ(visitor.getReach(83, 4), 280U);
    EXPECT_EQ(visitor.getReach(91, 4), 88U);
    EXPECT_EQ(visitor.getReach(93, 4), 32U);
    EXPECT_EQ(visitor.getReach(95, 4), 320U);
    EXPECT_EQ(visitor.getReach(112, 4), 580U);
    EXPECT_EQ(visitor.getReach(0, 7), 7U);
    EXPECT_EQ(visitor.getReach(115, 7), 7U);
    EXPECT_EQ(visitor.getReach(65535, 7), 7U);
}

} // namespace

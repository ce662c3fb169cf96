#include "records/FltRecordLineStyle.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const title = "\n LINE STYLE PALETTE RECORD ";
std::string const palette = "PALETTE_RECORD";

TEST(FltRecordLineStyleTest, DecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordLineStylePalette>(FltWriter().add(
        "LineStylePalette", {{"lineStyleIndex", 3}, {"patternMask", 0x5555}, {"lineWidth", 70000}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->lineStyleIndex, 3);
    EXPECT_EQ(record->patternMask, 0x5555);
    EXPECT_EQ(record->lineWidth, 70000);
    EXPECT_EQ(dumpOf(*record), frame(title, palette, 97, 12) + "lineStyleIndex : 3\n"
                                                               "patternMask : 21845\n"
                                                               "lineWidth : 70000\n");
}

TEST(FltRecordLineStyleTest, AllNumbersAreSignedAndSoAFullPatternPrintsMinusOne)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().add(
                  "LineStylePalette", {{"lineStyleIndex", -2}, {"patternMask", 0xffff}, {"lineWidth", -1}}))),
              frame(title, palette, 97, 12) + "lineStyleIndex : -2\n"
                                              "patternMask : -1\n"
                                              "lineWidth : -1\n");
}

TEST(FltRecordLineStyleTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(
        FltWriter().add("LineStylePalette",
                        {{"lineStyleIndex", 0x1234}, {"patternMask", 0x2345}, {"lineWidth", 0x12345678}}));
}

TEST(FltRecordLineStyleTest, ARecordOfLength4BeforeAPushLevelReadsItsHead)
{
    auto const record = decodeLastAs<FltRecordLineStylePalette>(
        FltWriter().add("LineStylePalette").resizeLast(4).addBytes(FltWriter().push().lastRecord()));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->lineStyleIndex, 10);
    EXPECT_EQ(record->patternMask, 4);
    EXPECT_EQ(record->lineWidth, 0);
}

} // namespace

#include "records/FltRecordTexturePattern.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const title = "\n TEXTURE_PATTERN RECORD ";
std::string const palette = "PALETTE_RECORD";

FltWriter::Fields const fields = {{"fileName", "textures/wood.rgb"},
                                  {"patternIndex", 7},
                                  {"XlocationInTexturePalette", -64},
                                  {"YlocationInTexturePalette", 128}};

std::string const lines = "fileName: textures/wood.rgb\n"
                          "patternIndex: 7\n"
                          "XlocationInTexturePalette: -64\n"
                          "YlocationInTexturePalette: 128\n";

TEST(FltRecordTexturePatternTest, DecodesAndDumpsTheLongForm)
{
    auto const record = decodeLastAs<FltRecordTexturePattern>(FltWriter().add("TexturePattern", fields));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->fileName, "textures/wood.rgb");
    EXPECT_EQ(record->patternIndex, 7);
    EXPECT_EQ(record->XlocationInTexturePalette, -64);
    EXPECT_EQ(record->YlocationInTexturePalette, 128);
    EXPECT_EQ(dumpOf(*record), frame(title, palette, 64, 216) + lines);
}

TEST(FltRecordTexturePatternTest, ARecordOfLength96ReadsItsNumbersFromOffset84)
{
    auto const record = decodeLastAs<FltRecordTexturePattern>(FltWriter().add("ShortTexturePattern", fields));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->fileName, "textures/wood.rgb");
    EXPECT_EQ(record->patternIndex, 7);
    EXPECT_EQ(record->XlocationInTexturePalette, -64);
    EXPECT_EQ(record->YlocationInTexturePalette, 128);
    EXPECT_EQ(dumpOf(*record), frame(title, palette, 64, 96) + lines);
}

TEST(FltRecordTexturePatternTest, ARecordOfLength97ReadsItsNumbersFromOffset204)
{
    auto const dump = dumpOf(*decodeLast(FltWriter().add("TexturePattern", fields).claimLength(97)));
    EXPECT_EQ(dump, frame(title, palette, 64, 97) + lines);
}

TEST(FltRecordTexturePatternTest, ARecordOfLength95ReadsItsNumbersFromOffset204)
{
    auto const dump = dumpOf(*decodeLast(FltWriter().add("TexturePattern", fields).claimLength(95)));
    EXPECT_EQ(dump, frame(title, palette, 64, 95) + lines);
}

TEST(FltRecordTexturePatternTest, TheShortFormLeavesTheRestOfTheFileNameZero)
{
    auto const record = decodeLastAs<FltRecordTexturePattern>(
        FltWriter().add("ShortTexturePattern", {{"fileName", std::string(80, 'x')}, {"patternIndex", -1}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(std::string(record->fileName, sizeof record->fileName),
              std::string(80, 'x') + std::string(120, '\0'));
    EXPECT_EQ(record->patternIndex, -1);
}

TEST(FltRecordTexturePatternTest, AFileNameWithoutAZeroRunsOnAndEndsWithTheLastMember)
{
    std::string const name(200, 'n');
    auto const dump = [&](FltWriter::Fields const& more) {
        FltWriter::Fields all = {{"fileName", name}};
        all.insert(all.end(), more.begin(), more.end());
        return linesOf(FltWriter().add("TexturePattern", all));
    };
    EXPECT_EQ(dump({{"patternIndex", 0x41}}), "fileName: " + name + "A\n" +
                                                  "patternIndex: 65\n"
                                                  "XlocationInTexturePalette: 0\n"
                                                  "YlocationInTexturePalette: 0\n");
    EXPECT_EQ(dump({{"patternIndex", 0x41414141},
                    {"XlocationInTexturePalette", 0x42424242},
                    {"YlocationInTexturePalette", 0x43434343}}),
              "fileName: " + name + "AAAABBBBCCCC\n" +
                  "patternIndex: 1094795585\n"
                  "XlocationInTexturePalette: 1111638594\n"
                  "YlocationInTexturePalette: 1128481603\n");
}

TEST(FltRecordTexturePatternTest, AShortRecordReadsOnIntoWhatFollowsItUnlessItIsOfLength96)
{
    FltWriter const whole = FltWriter().add("TexturePattern", fields);
    for (std::string const& behind : followers())
        for (std::size_t length = 4; length <= 216; ++length) {
            if (length == 96)
                continue;
            ShortRecord const record(whole, length, behind);
            ASSERT_EQ(linesOf(record.cut), linesOf(record.filledUp)) << "length " << length;
        }
}

} // namespace

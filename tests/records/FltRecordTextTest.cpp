#include "records/FltRecordText.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const primary = "PRIMARY_RECORD";

FltWriter fullText()
{
    FltWriter flt;
    flt.add("Text", {{"idASCII", "t1"},
                     {"textType", 1},
                     {"drawType", -2},
                     {"justification", 3},
                     {"floatValue", 4.5},
                     {"intValue", -5},
                     {"flags", 0x60},
                     {"color", 7},
                     {"color2", -8},
                     {"material", 9},
                     {"maxLineNumber", 10},
                     {"maxCharNumber", 11},
                     {"textLength", 12},
                     {"nextLineNumber", 13},
                     {"lineNumberAtTopOfDisplay", 14},
                     {"valuesForInt", {-15, 16}},
                     {"valuesForFloat", {17.25, -18e20}},
                     {"XlowerLeftCorner", 19.5},
                     {"YlowerLeftCorner", 20.5},
                     {"ZlowerLeftCorner", 21.5},
                     {"XupperRightCorner", 22.5},
                     {"YupperRightCorner", 23.5},
                     {"ZupperRightCorner", 24.5},
                     {"fontName", "Sans"},
                     {"drawVertical", 1},
                     {"drawItalic", 2},
                     {"drawBold", 3},
                     {"drawUnderline", 4},
                     {"lineStyle", -1}});
    return flt;
}

TEST(FltRecordTextTest, DecodesEveryField)
{
    FltWriter const flt = fullText();
    EXPECT_EQ(flt.lastRecord().size(), 320U);
    auto const text = decodeLastAs<FltRecordText>(flt);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->getOpcode(), 95);
    EXPECT_EQ(text->getLength(), 320U);
    EXPECT_EQ(text->getRecordCategory(), primary);
    EXPECT_STREQ(text->idASCII, "t1");
    EXPECT_EQ(text->textType, 1);
    EXPECT_EQ(text->drawType, -2);
    EXPECT_EQ(text->justification, 3);
    EXPECT_EQ(text->floatValue, 4.5);
    EXPECT_EQ(text->intValue, -5);
    EXPECT_EQ(text->flags, 0x60);
    EXPECT_EQ(text->color, 7);
    EXPECT_EQ(text->color2, -8);
    EXPECT_EQ(text->material, 9);
    EXPECT_EQ(text->maxLineNumber, 10);
    EXPECT_EQ(text->maxCharNumber, 11);
    EXPECT_EQ(text->textLength, 12);
    EXPECT_EQ(text->nextLineNumber, 13);
    EXPECT_EQ(text->lineNumberAtTopOfDisplay, 14);
    EXPECT_EQ(text->valuesForInt[0], -15);
    EXPECT_EQ(text->valuesForInt[1], 16);
    EXPECT_EQ(text->valuesForFloat[0], 17.25);
    EXPECT_EQ(text->valuesForFloat[1], -18e20);
    EXPECT_EQ(text->XlowerLeftCorner, 19.5);
    EXPECT_EQ(text->YlowerLeftCorner, 20.5);
    EXPECT_EQ(text->ZlowerLeftCorner, 21.5);
    EXPECT_EQ(text->XupperRightCorner, 22.5);
    EXPECT_EQ(text->YupperRightCorner, 23.5);
    EXPECT_EQ(text->ZupperRightCorner, 24.5);
    EXPECT_STREQ(text->fontName, "Sans");
    EXPECT_EQ(text->drawVertical, 1);
    EXPECT_EQ(text->drawItalic, 2);
    EXPECT_EQ(text->drawBold, 3);
    EXPECT_EQ(text->drawUnderline, 4);
    EXPECT_EQ(text->lineStyle, -1);
}

TEST(FltRecordTextTest, DumpsEveryNamedFieldInTheOrderOfTheFile)
{
    EXPECT_EQ(dumpOf(*decodeLast(fullText())), "\n TEXT RECORD \n"
                                               "  (PRIMARY_RECORD)\n"
                                               "-- Opcode: 95  Length: 320 --\n"
                                               "idASCII: t1\n"
                                               "textType: 1\n"
                                               "drawType: -2\n"
                                               "justification: 3\n"
                                               "floatValue: 4.5\n"
                                               "intValue: -5\n"
                                               "flags: 0x60\n"
                                               "color: 7\n"
                                               "color2: -8\n"
                                               "material: 9\n"
                                               "maxLineNumber: 10\n"
                                               "maxCharNumber: 11\n"
                                               "textLength: 12\n"
                                               "nextLineNumber: 13\n"
                                               "lineNumberAtTopOfDisplay: 14\n"
                                               "valuesForInt: -15 16\n"
                                               "valuesForFloat: 17.25 -1.8e+21\n"
                                               "XlowerLeftCorner: 19.5\n"
                                               "YlowerLeftCorner: 20.5\n"
                                               "ZlowerLeftCorner: 21.5\n"
                                               "XupperRightCorner: 22.5\n"
                                               "YupperRightCorner: 23.5\n"
                                               "ZupperRightCorner: 24.5\n"
                                               "fontName: Sans\n"
                                               "drawVertical: 1\n"
                                               "drawItalic: 2\n"
                                               "drawBold: 3\n"
                                               "drawUnderline: 4\n"
                                               "lineStyle: -1\n");
}

TEST(FltRecordTextTest, FontNamePrintsUpToItsFirstZeroAndIsKeptWhole)
{
    std::string const name("Sans\0Serif", 10);
    auto const text = decodeLastAs<FltRecordText>(FltWriter().add("Text", {{"fontName", name}}));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text->fontName, 10), name);
    EXPECT_NE(dumpOf(*text).find("\nfontName: Sans\ndrawVertical: 0\n"), std::string::npos);
}

TEST(FltRecordTextTest, FullFontNamePrintsOnIntoTheFieldsBehindIt)
{
    auto const text = decodeLastAs<FltRecordText>(
        FltWriter().add("Text", {{"fontName", std::string(120, 'f')}, {"drawVertical", 0x4142}}));
    ASSERT_NE(text, nullptr);
    EXPECT_NE(dumpOf(*text).find("\nfontName: " + std::string(120, 'f') + "BA\ndrawVertical: 16706\n"),
              std::string::npos);
}

TEST(FltRecordTextTest, FullFontNameWithoutAnyZeroBehindItEndsWithTheRecord)
{
    FltWriter flt;
    flt.addRaw(95, std::string(316, 'x'));
    std::string const dump = dumpOf(*decodeLast(flt));
    std::string const line = "\nfontName: " + std::string(120 + 24, 'x') + "\n";
    EXPECT_NE(dump.find(line), std::string::npos);
}

TEST(FltRecordTextTest, FullNamePrintsOnIntoTheReservedWords)
{
    FltWriter flt;
    flt.addRaw(95, "12345678" + std::string("reserved") + std::string(300, '\0'));
    EXPECT_NE(dumpOf(*decodeLast(flt))
                  .find("\nidASCII: 12345678"
                        "eserdevr\ntextType: 0\n"),
              std::string::npos)
        << "the words are kept in the order of the machine";
}

TEST(FltRecordTextTest, FlagsOfZeroPrintAs0AndTheTopBitIsSignExtended)
{
    EXPECT_NE(dumpOf(*decodeLast(FltWriter().add("Text"))).find("\nflags: 0\n"), std::string::npos);
    EXPECT_NE(dumpOf(*decodeLast(FltWriter().add("Text", {{"flags", 0x80000001U}})))
                  .find("\nflags: 0xffffffff80000001\n"),
              std::string::npos);
}

TEST(FltRecordTextTest, TextBehindTheFieldsIsNotRead)
{
    FltWriter flt = fullText();
    flt.addBytes("Hello world").claimLength(331);
    auto const text = decodeLast(flt);
    EXPECT_EQ(text->getLength(), 331U);
    EXPECT_EQ(withoutFrame(dumpOf(*text)), withoutFrame(dumpOf(*decodeLast(fullText()))));
}

TEST(FltRecordTextTest, ShortRecordsReadOnIntoTheFileAndThenZeros)
{
    expectShortRecordsToReadOn(fullText());
}

TEST(FltRecordTextTest, RecordCutInFrontOfItsNumbersTakesThemFromTheNextRecord)
{
    auto const text = decodeLastAs<FltRecordText>(cutTo(fullText(), 20, FltWriter().push().lastRecord()));
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text->idASCII, "t1");
    EXPECT_EQ(text->textType, 10 << 16 | 4) << "opcode and length of the record behind";
    EXPECT_EQ(text->drawType, 0) << "behind the end of the file";
    EXPECT_STREQ(text->fontName, "");
}

} // namespace

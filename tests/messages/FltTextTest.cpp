#include "messages/FltText.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltTextTest, Utf8StaysAsItIs)
{
    for (std::string const text : {"", "plain", "Gr\u00fc\u00dfe", "\u20ac and \U0001f6e9", "\U0010ffff"})
        EXPECT_EQ(FltText::utf8(text), text);
    EXPECT_EQ(FltText::utf8(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(FltTextTest, WhatIsNotUtf8ReadsAsLatin1)
{
    EXPECT_EQ(FltText::utf8("Gr\xfc\xdf"
                            "e"),
              "Gr\u00fc\u00dfe");
    EXPECT_EQ(FltText::utf8("\x80\xff"), "\u0080\u00ff");
    EXPECT_EQ(FltText::utf8("\xc3"), "\u00c3") << "a character that breaks off";
    EXPECT_EQ(FltText::utf8("\xc3("), "\u00c3(") << "a second byte that doesn't follow";
    EXPECT_EQ(FltText::utf8("\xe2\x82"), "\u00e2\u0082") << "a character that breaks off";
    EXPECT_EQ(FltText::utf8("\xc0\xaf"), "\u00c0\u00af") << "an overlong form";
    EXPECT_EQ(FltText::utf8("\xe0\x80\xaf"), "\u00e0\u0080\u00af") << "an overlong form";
    EXPECT_EQ(FltText::utf8("\xf0\x80\x80\xaf"), "\u00f0\u0080\u0080\u00af") << "an overlong form";
    EXPECT_EQ(FltText::utf8("\xed\xa0\x80"), "\u00ed\u00a0\u0080") << "half of a pair";
    EXPECT_EQ(FltText::utf8("\xf4\x90\x80\x80"), "\u00f4\u0090\u0080\u0080") << "beyond the last character";
    EXPECT_EQ(FltText::utf8("\xf8\x88\x80\x80\x80"), "\u00f8\u0088\u0080\u0080\u0080");
}

TEST(FltTextTest, WhatStandsBehindTheEndOfATextIsNoPartOfIt)
{
    std::string_view const two = "\u00fc", three = "\u20ac", four = "\U0001f6e9";
    EXPECT_EQ(FltText::utf8(two.substr(0, 1)), "\u00c3");
    EXPECT_EQ(FltText::utf8(three.substr(0, 2)), "\u00e2\u0082");
    EXPECT_EQ(FltText::utf8(four.substr(0, 3)), "\u00f0\u009f\u009b");
    EXPECT_EQ(FltText::utf8(std::string_view("a\u20ac").substr(0, 3)), "a\u00e2\u0082");
    EXPECT_EQ(FltText::printable(three.substr(0, 2)), "\\xe2\\x82");
    EXPECT_EQ(FltText::printableJson(two.substr(0, 1)), "\xc3");
}

TEST(FltTextTest, TheFirstByteSaysHowManyFollow)
{
    for (std::string const text :
         {"\x7f", "\u0080", "\u07ff", "\u0800", "\ud7ff", "\ue000", "\uffff", "\U00010000"})
        EXPECT_EQ(FltText::utf8(text), text);
    EXPECT_EQ(FltText::utf8("\x80"), "\u0080") << "one that only follows";
    EXPECT_EQ(FltText::utf8("\x80\x80\x80\x80"), "\u0080\u0080\u0080\u0080");
    EXPECT_EQ(FltText::utf8("\xc1\xbf"), "\u00c1\u00bf");
    EXPECT_EQ(FltText::utf8("\xf5\x80\x80\x80"), "\u00f5\u0080\u0080\u0080");
    EXPECT_EQ(FltText::utf8("\xf8\x88\x80\x80"), "\u00f8\u0088\u0080\u0080");
    EXPECT_EQ(FltText::utf8("\xe2\x82"
                            "A"),
              "\u00e2\u0082A")
        << "a third byte that doesn't follow";
}

TEST(FltTextTest, PrintableTextStaysAsItIs)
{
    EXPECT_EQ(FltText::printable("plain ~ Gr\u00fc\u00dfe \u20ac"), "plain ~ Gr\u00fc\u00dfe \u20ac");
}

TEST(FltTextTest, ControlCharactersAndEscapeSequencesBecomeHexadecimal)
{
    EXPECT_EQ(FltText::printable("\x1b[31mred\x07"), "\\x1b[31mred\\x07");
    EXPECT_EQ(FltText::printable("a\tb\x7f"), "a\\x09b\\x7f");
    EXPECT_EQ(FltText::printable(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(FltText::printable("\u009b31m"), "\\xc2\\x9b31m") << "a control of two bytes";
    EXPECT_EQ(FltText::printable("\x9b"
                                 "31m"),
              "\\x9b31m")
        << "the same in eight bits";
    EXPECT_EQ(FltText::printable("\xe2\x82"), "\\xe2\\x82");
}

TEST(FltTextTest, WhatTurnsOrHidesTextBecomesHexadecimal)
{
    for (char const* const character :
         {"\u0080", "\u009f", "\u2028", "\u2029", "\u202a", "\u202e", "\u2066", "\u2069", "\ufeff"})
        EXPECT_EQ(FltText::printable(character).substr(0, 2), "\\x") << character;
    EXPECT_EQ(FltText::printable("\u202egnp.exe"), "\\xe2\\x80\\xaegnp.exe");
    // These stand in honest names: a space that keeps words together, a joiner, the direction of a letter.
    for (char const* const character : {"\u00a0", "\u200d", "\u200f", "\u2027", "\u202f", "\u2065", "\u206a"})
        EXPECT_EQ(FltText::printable(character), character);
}

TEST(FltTextTest, JsonSaysTheSameWithoutControls)
{
    EXPECT_EQ(FltText::printableJson("{\n  \"\u00fc\u009b1m\": \"\\u001b\x7f\U0001f6e9\"\n}"),
              "{\n  \"\u00fc\\u009b1m\": \"\\u001b\\u007f\U0001f6e9\"\n}");
    EXPECT_EQ(FltText::printableJson("\"\u2028\u202e\u2066\ufeff\""), R"("\u2028\u202e\u2066\ufeff")");
    EXPECT_EQ(FltText::printableJson(""), "");
}

TEST(FltTextTest, EndsOfLinesStayOnlyWhereTheyAreWanted)
{
    EXPECT_EQ(FltText::printable("a\nb\r"), "a\\x0ab\\x0d");
    EXPECT_EQ(FltText::printable("a\nb\r", true), "a\nb\\x0d");
}

} // namespace

TEST(FltTextTest, TheEndOfALineGoesWithItsBlanks)
{
    EXPECT_EQ(FltText::withoutEnd("Tue Mar  4 \r\n\t "), "Tue Mar  4");
    EXPECT_EQ(FltText::withoutEnd("a\nb"), "a\nb");
    EXPECT_EQ(FltText::withoutEnd(" \n"), "");
}

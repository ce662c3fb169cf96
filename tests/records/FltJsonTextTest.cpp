#include "records/FltJsonText.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

std::string textOf(std::int64_t value)
{
    std::string text;
    FltJsonText(text).integer(value);
    return text;
}

template <class Real>
std::string textOf(Real value)
{
    std::string text;
    FltJsonText(text).real(value);
    return text;
}

std::string textOf(std::string_view value)
{
    std::string text;
    FltJsonText(text).text(value);
    return text;
}

} // namespace

TEST(FltJsonText, writesMembersAndElementsWithCommasBetween)
{
    std::string text;
    FltJsonText json(text);
    json.beginObject();
    json.key("a");
    json.integer(1);
    json.key("b");
    json.beginArray(FltJsonText::Length::fixed);
    json.integer(-2);
    json.text("x");
    json.beginObject();
    json.endObject();
    json.integer(3);
    json.endArray();
    json.endObject();
    EXPECT_EQ(text, R"({"a":1,"b":[-2,"x",{},3]})");
}

TEST(FltJsonText, goesOnInAnArrayThatHadEnded)
{
    std::string text;
    FltJsonText json(text);
    json.beginArray(FltJsonText::Length::counted);
    json.integer(1);
    json.endArray();
    json.resumeArray();
    json.integer(2);
    json.endArray();
    EXPECT_EQ(text, "[1,2]");
}

TEST(FltJsonText, makesAnObjectOfFlagsOnceABitIsNamed)
{
    std::string text;
    FltJsonText json(text);
    json.beginObject();
    json.beginFlags();
    json.key("flags");
    json.integer(5);
    json.endFlags();
    json.key("next");
    json.integer(1);
    EXPECT_EQ(text, R"({"flags":5,"next":1)");
    json.flag("hidden", true);
    json.flag("terrain", false);
    json.endObject();
    EXPECT_EQ(text, R"({"flags":{"word":5,"hidden":true,"terrain":false},"next":1})");
}

TEST(FltJsonText, writesAFloatInTheFewestDigitsThatAreIt)
{
    EXPECT_EQ(textOf(0.1F), "0.1");
    EXPECT_EQ(textOf(0.0F), "0.0");
    EXPECT_EQ(textOf(-0.0F), "-0.0");
    EXPECT_EQ(textOf(-7.0F), "-7.0");
    EXPECT_EQ(textOf(16777216.0F), "16777216.0");
    EXPECT_EQ(textOf(33554432.0F), "33554432.0");
    EXPECT_EQ(textOf(1e30F), "1e+30");
    EXPECT_EQ(textOf(1e-7F), "1e-07");
    EXPECT_EQ(textOf(2.5), "2.5");
    EXPECT_EQ(textOf(1e14), "100000000000000.0");
    EXPECT_EQ(textOf(1e15), "1e+15");
}

TEST(FltJsonText, writesNumbersThatJsonDoesntHaveAsTexts)
{
    EXPECT_EQ(textOf(std::numeric_limits<float>::quiet_NaN()), "\"NaN\"");
    EXPECT_EQ(textOf(std::numeric_limits<float>::infinity()), "\"Infinity\"");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity()), "\"-Infinity\"");
}

TEST(FltJsonText, writesWholeNumbersOfAnySize)
{
    EXPECT_EQ(textOf(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(textOf(std::int64_t(255)), "255");
    EXPECT_EQ(textOf(std::int64_t(std::numeric_limits<std::uint32_t>::max())), "4294967295");
}

TEST(FltJsonText, escapesWhatATerminalOrAReaderWouldObey)
{
    EXPECT_EQ(textOf(std::string_view("a~ b")), "\"a~ b\"");
    EXPECT_EQ(textOf(std::string_view("\"\\\n\x1f")), "\"\\\"\\\\\\n\\u001f\"");
    EXPECT_EQ(textOf(std::string_view("\x7f")), "\"\\u007f\"");
    EXPECT_EQ(textOf(std::string_view("caf\xc3\xa9")), "\"caf\xc3\xa9\"");
    EXPECT_EQ(textOf(std::string_view("\xe2\x80\xae")), "\"\\u202e\"");
}

TEST(FltJsonText, writesBytesAsTwoDigitsEach)
{
    std::string text;
    FltJsonText(text).bytes(std::string_view("\x00\xff\x1a", 3));
    EXPECT_EQ(text, "\"00ff1a\"");
}

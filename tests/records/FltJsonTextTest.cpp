#include "records/FltJsonText.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

template <class Value>
std::string textOf(Value value)
{
    std::string text;
    FltJsonText(text).value(value);
    return text;
}

} // namespace

TEST(FltJsonText, writesMembersAndElementsWithCommasBetween)
{
    std::string text;
    FltJsonText json(text);
    json.open('{');
    json.key("a");
    json.value(1);
    json.key("b");
    json.open('[');
    json.value(-2);
    json.value(true);
    json.open('{');
    json.close('}');
    json.value(false);
    json.close(']');
    json.close('}');
    EXPECT_EQ(text, R"({"a":1,"b":[-2,true,{},false]})");
}

TEST(FltJsonText, goesOnInAnArrayThatHadEnded)
{
    std::string text;
    FltJsonText json(text);
    json.open('[');
    json.value(1);
    json.close(']');
    json.reopen();
    json.value(2);
    json.close(']');
    EXPECT_EQ(text, "[1,2]");
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
    EXPECT_EQ(textOf(std::uint8_t(255)), "255");
    EXPECT_EQ(textOf(std::numeric_limits<std::uint32_t>::max()), "4294967295");
}

TEST(FltJsonText, escapesWhatATerminalOrAReaderWouldObey)
{
    EXPECT_EQ(textOf(std::string_view("a~ b")), "\"a~ b\"");
    EXPECT_EQ(textOf(std::string_view("\"\\\n\x1f")), "\"\\\"\\\\\\n\\u001f\"");
    EXPECT_EQ(textOf(std::string_view("\x7f")), "\"\\u007f\"");
    EXPECT_EQ(textOf(std::string_view("caf\xe9")), "\"caf\xc3\xa9\"");
    EXPECT_EQ(textOf(std::string_view("\xe2\x80\xae")), "\"\\u202e\"");
}

TEST(FltJsonText, writesBytesAsTwoDigitsEach)
{
    std::string text;
    FltJsonText(text).hexadecimal(std::string_view("\x00\xff\x1a", 3));
    EXPECT_EQ(text, "\"00ff1a\"");
}

#include "records/FltJsonText.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

namespace
{

std::string textOf(std::int64_t value)
{
    FltJsonText json;
    json.integer(value);
    return std::string(json.written());
}

template <class Real>
std::string textOf(Real value)
{
    FltJsonText json;
    json.real(value);
    return std::string(json.written());
}

std::string textOf(std::string_view value)
{
    FltJsonText json;
    json.text(value);
    return std::string(json.written());
}

} // namespace

TEST(FltJsonText, writesMembersAndElementsWithCommasBetween)
{
    FltJsonText json;
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
    EXPECT_EQ(json.written(), R"({"a":1,"b":[-2,"x",{},3]})");
}

TEST(FltJsonText, goesOnInAnArrayThatHadEnded)
{
    FltJsonText json;
    json.beginArray(FltJsonText::Length::counted);
    json.integer(1);
    json.endArray();
    json.resumeArray();
    json.integer(2);
    json.endArray();
    EXPECT_EQ(json.written(), "[1,2]");
}

TEST(FltJsonText, makesAnObjectOfFlagsOnceABitIsNamed)
{
    FltJsonText json;
    json.beginObject();
    json.beginFlags();
    json.key("flags");
    json.integer(5);
    json.endFlags();
    json.key("next");
    json.integer(1);
    EXPECT_EQ(json.written(), R"({"flags":5,"next":1)");
    json.flag("hidden", true);
    json.flag("terrain", false);
    json.endObject();
    EXPECT_EQ(json.written(), R"({"flags":{"word":5,"hidden":true,"terrain":false},"next":1})");
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

TEST(FltJsonText, writesNumbersAsTheJsonLibraryDoes)
{
    std::mt19937_64 random(1);
    auto const expectTheSame = [](double number) {
        EXPECT_EQ(textOf(number), nlohmann::json(number).dump());
        auto const shorter = static_cast<float>(number);
        if (std::isfinite(shorter)) {
            EXPECT_EQ(textOf(shorter), nlohmann::json(FltFieldReceiver::shortest(shorter)).dump());
        }
    };
    for (int i = 0; i < 20'000; ++i) {
        std::uint64_t const bits = random();
        double any = 0;
        std::memcpy(&any, &bits, sizeof any);
        if (std::isfinite(any))
            expectTheSame(any);
        auto const whole = static_cast<double>(static_cast<std::int64_t>(bits >> i % 64));
        for (double const number : {whole, whole / 8, -whole / 1000})
            expectTheSame(number);
    }
    for (double edge = 1; edge < 1e19; edge *= 10)
        for (double const number :
             {edge, std::nextafter(edge, 0), std::nextafter(edge, 1e20), edge - 1, -edge})
            expectTheSame(number);
    expectTheSame(0);
    expectTheSame(-0.0);
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

TEST(FltJsonText, escapesEachByteWhereverItStandsInALongText)
{
    for (int byte = 1; byte < 128; ++byte)
        for (std::size_t place = 0; place < 20; ++place) {
            std::string text = "a~ !#[]^ 0123456789 ";
            text[place] = static_cast<char>(byte);
            std::string const written = textOf(std::string_view(text));
            bool const isPlain = byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\';
            EXPECT_EQ(written == '"' + text + '"', isPlain) << byte << " at " << place;
            EXPECT_EQ(nlohmann::json::parse(written), text);
        }
}

TEST(FltJsonText, writesBytesAsTwoDigitsEach)
{
    FltJsonText json;
    json.bytes(std::string_view("\x00\xff\x1a", 3));
    EXPECT_EQ(json.written(), "\"00ff1a\"");
}

TEST(FltJsonText, growsWithWhatIsWrittenAndBeginsAnewInTheSameMemory)
{
    FltJsonText json;
    std::string expected;
    json.beginArray(FltJsonText::Length::counted);
    for (int i = 0; i < 2000; ++i) {
        json.integer(i);
        expected += ',' + std::to_string(i);
    }
    std::string const longText(10'000, 'x');
    json.text(longText);
    json.bytes(longText.substr(0, 5000));
    json.endArray();
    expected[0] = '[';
    EXPECT_EQ(json.written().substr(0, expected.size()), expected);
    EXPECT_EQ(json.written().size(), expected.size() + 3 + longText.size() + 3 + longText.size() + 1);
    json.clear();
    EXPECT_EQ(json.written(), "");
    json.integer(1);
    EXPECT_EQ(json.written(), "1");
}

TEST(FltJsonText, namesNoBitWithoutFlags)
{
    FltJsonText json;
    json.beginObject();
    json.flag("hidden", true);
    json.endObject();
    EXPECT_EQ(json.written(), "{}");
}

TEST(FltJsonText, namesBitsOfFlagsThatAreBytes)
{
    FltJsonText json;
    json.beginObject();
    json.beginFlags();
    json.key("flags");
    json.beginArray(FltJsonText::Length::fixed);
    json.integer(1);
    json.integer(0);
    json.endArray();
    json.endFlags();
    json.flag("enabled", true);
    json.endObject();
    EXPECT_EQ(json.written(), R"({"flags":{"word":[1,0],"enabled":true}})");
}

TEST(FltJsonText, writesEachPlainCharacterAsItIs)
{
    std::string plain;
    for (char character = ' '; character <= '~'; ++character)
        if (character != '"' && character != '\\')
            plain += character;
    EXPECT_EQ(textOf(std::string_view(plain)), '"' + plain + '"');
    EXPECT_EQ(textOf(std::string_view("\"\\\n\x7f")), "\"\\\"\\\\\\n\\u007f\"");
}

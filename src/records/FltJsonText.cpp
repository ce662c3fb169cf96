#include "records/FltJsonText.h"

#include "messages/FltText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::json;

bool isPlain(char character)
{
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

/// Whole numbers up to here are floats, and are written as they are.
constexpr float lastWhole = 1 << 24;

} // namespace

void FltJsonText::value(float number)
{
    if (std::abs(number) <= lastWhole && std::trunc(number) == number &&
        !(number == 0 && std::signbit(number))) {
        value(static_cast<std::int32_t>(number));
        text += ".0";
        return;
    }
    if (!std::isfinite(number))
        return value(static_cast<double>(number));
    // 0.1 rather than 0.10000000149011612
    char digits[32] = {};
    std::to_chars(digits, digits + sizeof digits, number);
    value(std::strtod(digits, nullptr));
}

void FltJsonText::value(double number)
{
    if (std::isnan(number))
        return value(std::string_view("NaN"));
    if (std::isinf(number))
        return value(std::string_view(number < 0 ? "-Infinity" : "Infinity"));
    separate();
    char digits[64];
    text.append(digits, nlohmann::detail::to_chars(digits, digits + sizeof digits, number));
}

void FltJsonText::value(bool truth)
{
    separate();
    text += truth ? "true" : "false";
}

void FltJsonText::value(std::string_view characters)
{
    separate();
    if (!std::all_of(characters.begin(), characters.end(), isPlain)) {
        Json const json(FltText::utf8(characters));
        text += FltText::printableJson(json.dump(-1, ' ', false, Json::error_handler_t::replace));
        return;
    }
    text += '"';
    text += characters;
    text += '"';
}

void FltJsonText::hexadecimal(std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    separate();
    text += '"';
    for (char const byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    text += '"';
}

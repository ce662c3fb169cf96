#include "records/FltJsonText.h"

#include "messages/FltText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

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

void FltJsonText::key(char const* name)
{
    separate();
    written += '"';
    written += name;
    written += "\":";
    isFirst = true;
    if (std::exchange(areFlags, false))
        last.begin = written.size();
}

void FltJsonText::integer(std::int64_t value)
{
    separate();
    char digits[24];
    written.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void FltJsonText::real(float value)
{
    if (std::abs(value) <= lastWhole && std::trunc(value) == value && !(value == 0 && std::signbit(value))) {
        integer(static_cast<std::int32_t>(value));
        written += ".0";
        return;
    }
    real(std::isfinite(value) ? shortest(value) : static_cast<double>(value));
}

void FltJsonText::real(double value)
{
    if (std::isnan(value))
        return text("NaN");
    if (std::isinf(value))
        return text(value < 0 ? "-Infinity" : "Infinity");
    separate();
    char digits[64];
    written.append(digits, nlohmann::detail::to_chars(digits, digits + sizeof digits, value));
}

void FltJsonText::text(std::string_view characters)
{
    separate();
    if (!std::all_of(characters.begin(), characters.end(), isPlain)) {
        Json const json(characters);
        written += FltText::printableJson(json.dump(-1, ' ', false, Json::error_handler_t::replace));
        return;
    }
    written += '"';
    written += characters;
    written += '"';
}

void FltJsonText::bytes(std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    separate();
    written += '"';
    for (char const byte : bytes) {
        written += digits[static_cast<unsigned char>(byte) >> 4];
        written += digits[static_cast<unsigned char>(byte) & 15];
    }
    written += '"';
}

void FltJsonText::beginFlags()
{
    areFlags = true;
    last = {};
}

void FltJsonText::beginArray(Length /*length*/)
{
    begin('[');
}

void FltJsonText::resumeArray()
{
    written.pop_back();
    isFirst = false;
}

/// Flags may be named when further members are there already: their value stays where it is, and becomes an
/// object.
void FltJsonText::flag(char const* name, bool isSet)
{
    if (!last.areNamed) {
        constexpr std::string_view head = "{\"word\":";
        written.insert(last.end, "}");
        written.insert(last.begin, head);
        last = {last.begin, last.end + head.size() + 1, true};
    }
    std::string named = ",\"";
    named += name;
    named += isSet ? "\":true" : "\":false";
    written.insert(last.end - 1, named);
    last.end += named.size();
}

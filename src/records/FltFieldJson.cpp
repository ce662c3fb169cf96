#include "records/FltFieldJson.h"

#include "messages/FltText.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

Json numberOf(double value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : "Infinity";
    return value;
}

/// The number of fewest digits that is this float: 0.1 rather than 0.10000000149011612.
Json numberOf(float value)
{
    if (!std::isfinite(value))
        return numberOf(static_cast<double>(value));
    char text[32] = {};
    std::to_chars(text, text + sizeof text, value);
    return std::strtod(text, nullptr);
}

std::string hexOf(std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (char const byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

bool holdsFlags(std::string_view name)
{
    return name == "flags" || name == "Flags";
}

} // namespace

void FltFieldJson::putInteger(char const* name, std::int64_t value)
{
    here()[name] = value;
    if (holdsFlags(name))
        flagWord = name;
}

void FltFieldJson::put(char const* name, float value)
{
    here()[name] = numberOf(value);
}

void FltFieldJson::put(char const* name, double value)
{
    here()[name] = numberOf(value);
}

void FltFieldJson::addInteger(std::int64_t value)
{
    here().push_back(value);
}

void FltFieldJson::add(float value)
{
    here().push_back(numberOf(value));
}

void FltFieldJson::add(double value)
{
    here().push_back(numberOf(value));
}

void FltFieldJson::begin(char const* name)
{
    Json& array = here()[name] = Json::array();
    levels.push_back(&array);
    if (holdsFlags(name))
        flagWord = name;
}

void FltFieldJson::beginRow()
{
    here().push_back(Json::array());
    levels.push_back(&here().back());
}

void FltFieldJson::open(char const* name)
{
    Json& object = here()[name] = Json::object();
    levels.push_back(&object);
}

void FltFieldJson::openElement(char const* name)
{
    Json& array = here()[name];
    array.push_back(Json::object());
    levels.push_back(&array.back());
}

void FltFieldJson::characters(char const* name, char const* characters, int size)
{
    if (beginsWith(name, "reserved") || beginsWith(name, "spare"))
        bytes(name, characters, static_cast<unsigned int>(size));
    else
        text(name, characters, size);
}

void FltFieldJson::rest(char const* name, std::unique_ptr<char[]> const& characters, unsigned int length)
{
    if (characters != nullptr)
        text(name, characters.get(), length > 4 ? static_cast<int>(length - 4) : 0);
}

void FltFieldJson::text(char const* name, char const* characters, int count)
{
    if (characters != nullptr)
        text(name, std::string_view(characters, ::strnlen(characters, static_cast<std::size_t>(count))));
}

void FltFieldJson::text(char const* name, std::string_view characters)
{
    here()[name] = FltText::utf8(characters);
}

void FltFieldJson::bytes(char const* name, char const* characters, unsigned int count)
{
    if (characters != nullptr)
        here()[name] = hexOf({characters, count});
}

void FltFieldJson::flag(char const* name, std::uint32_t word, int bit, char const* /*label*/)
{
    Json& flags = here()[flagWord];
    if (!flags.is_object())
        flags = Json::object({{"word", flags}});
    flags[name] = (word >> bit & 1) != 0;
}

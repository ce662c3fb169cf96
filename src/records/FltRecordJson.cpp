#include "records/FltRecordJson.h"

#include "records/FltFieldJson.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

/// Bytes that follow the first one of a character in UTF-8; -1 for a byte that begins none.
int followersOf(unsigned char first)
{
    if (first < 0x80)
        return 0;
    if (first >= 0xc2 && first < 0xe0)
        return 1;
    if (first >= 0xe0 && first < 0xf0)
        return 2;
    return first >= 0xf0 && first < 0xf5 ? 3 : -1;
}

/// The lowest and highest byte that may follow the first one: elsewhere stand overlong forms, surrogates, and
/// what lies beyond the last character.
bool isSecond(unsigned char first, unsigned char second)
{
    unsigned const lowest = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
    unsigned const highest = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
    return second >= lowest && second <= highest;
}

bool isUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        auto const byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
        int const followers = followersOf(byte(i));
        if (followers < 0 || text.size() - i <= static_cast<std::size_t>(followers))
            return false;
        for (int k = 1; k <= followers; ++k) {
            unsigned char const follower = byte(i + static_cast<std::size_t>(k));
            if (k == 1 ? !isSecond(byte(i), follower) : (follower & 0xc0) != 0x80)
                return false;
        }
        i += static_cast<std::size_t>(followers) + 1;
    }
    return true;
}

} // namespace

std::string FltRecordJson::utf8(std::string_view text)
{
    if (isUtf8(text))
        return std::string(text);
    std::string result;
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        if (byte < 0x80) {
            result += character;
        } else {
            result += static_cast<char>(0xc0 | byte >> 6);
            result += static_cast<char>(0x80 | (byte & 0x3f));
        }
    }
    return result;
}

nlohmann::ordered_json FltRecordJson::of(FltRecord const& record, std::uint64_t byteOffset)
{
    FltRecordRow const* const row = FltRecordTable::find(record.getOpcode());
    Json fields = Json::object();
    FltFieldJson visitor(fields);
    bool const listed = row != nullptr && row->list(record, visitor);
    if (auto const* const unknown = dynamic_cast<FltRecordUnknown const*>(&record))
        FltRecordUnknown::fields(*unknown, visitor);
    return {{"opcode", record.getOpcode()},
            {"class", listed ? row->className : "FltRecordUnknown"},
            {"category", record.getRecordCategory()},
            {"length", record.getLength()},
            {"offset", byteOffset},
            {"fields", std::move(fields)}};
}

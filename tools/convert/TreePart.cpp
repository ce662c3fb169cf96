#include "convert/TreePart.h"

#include "support/Program.h"

#include <charconv>
#include <optional>

namespace
{

/// More parts than anybody has work for; a plan holds numbers of each.
constexpr std::uint64_t mostParts = 1'000'000;

std::optional<std::uint64_t> numberIn(std::string_view text)
{
    std::uint64_t number = 0;
    auto const [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace

TreePart TreePart::named(std::string const& text)
{
    std::string_view const words = text;
    std::size_t const slash = words.find('/');
    auto const number = numberIn(words.substr(0, slash));
    auto const count = slash != std::string::npos ? numberIn(words.substr(slash + 1)) : std::nullopt;
    if (!number || !count || *number >= *count || *count > mostParts)
        throw UsageError("--shard takes a part and how many there are, such as 0/8 to 7/8, not " + text);
    return {*number, *count};
}

std::uint64_t TreePart::countIn(std::string const& option, std::string const& text)
{
    auto const count = numberIn(text);
    if (!count || *count == 0 || *count > mostParts)
        throw UsageError(option + " takes how many parts there are, a number from 1 on, not " + text);
    return *count;
}

std::uint64_t TreePart::hash(std::string_view place)
{
    constexpr std::uint64_t offset = 0xcbf29ce484222325U, prime = 0x100000001b3U;
    std::uint64_t sum = offset;
    for (char const character : place) {
        sum ^= static_cast<unsigned char>(character);
        sum *= prime;
    }
    sum ^= sum >> 33U;
    sum *= 0xff51afd7ed558ccdU;
    sum ^= sum >> 33U;
    sum *= 0xc4ceb9fe1a85ec53U;
    return sum ^ (sum >> 33U);
}

#include "support/LikeNames.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace
{

std::string lowerCase(std::string text)
{
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

/// How many letters have to be changed, added or taken away to make one text of the other.
std::size_t distance(std::string const& from, std::string const& to)
{
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            std::size_t const change = diagonal + (from[i - 1] == to[j - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({change, row[j] + 1, row[j - 1] + 1}));
        }
    }
    return row[to.size()];
}

/// How unlike a wanted name is to another one, or to the likest of its words: "towr" to "control_tower".
std::size_t unlikeness(std::string const& wanted, std::string const& name)
{
    if (name.find(wanted) != std::string::npos)
        return std::min<std::size_t>(distance(wanted, name), 1);
    std::size_t least = distance(wanted, name);
    for (std::size_t begin = 0; begin < name.size();) {
        std::size_t const end = std::min(name.find_first_of("_-. ", begin), name.size());
        least = std::min(least, distance(wanted, name.substr(begin, end - begin)));
        begin = end + 1;
    }
    return least;
}

} // namespace

LikeNames::LikeNames(std::string const& wanted) : wanted(lowerCase(wanted)) {}

void LikeNames::offer(std::string const& name)
{
    constexpr std::size_t longest = 64;
    constexpr std::size_t mostNames = 3;
    if (name.empty() || std::max(name.size(), wanted.size()) > longest)
        return;
    std::size_t const farthest = std::max<std::size_t>(wanted.size() / 3, 1);
    std::size_t const far = unlikeness(wanted, lowerCase(name));
    if (far > farthest)
        return;
    best.emplace(far, name);
    if (best.size() > mostNames)
        best.erase(std::prev(best.end()));
}

std::vector<std::string> LikeNames::found() const
{
    std::vector<std::string> names;
    names.reserve(best.size());
    for (auto const& [far, name] : best)
        names.push_back(name);
    return names;
}

#include "shot/NodeSearch.h"

#include "support/SceneNodes.h"

#include "toolkit/SoNodeName.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoNode.h>
#include <algorithm>
#include <cctype>
#include <set>
#include <utility>

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

/// A node that bears a name of the database; null if none does. The toolkit would keep the name for ever if
/// it were asked.
SoNode* bearerOf(SoNode* scene, std::string const& name)
{
    SoNode* bearer = nullptr;
    std::string const wanted = SoNodeName::uncut(name);
    SceneNodes::forEach(scene, [&](SoNode& node) {
        if (bearer == nullptr && SoNodeName::uncut(SoNodeName::wholeOf(node)) == wanted)
            bearer = &node;
    });
    return bearer;
}

} // namespace

SoPath* NodeSearch::find(SoNode* scene, std::string const& name)
{
    SoNode* const bearer = bearerOf(scene, name);
    if (name.empty() || bearer == nullptr)
        return nullptr;
    bool const isCut = SoNodeName::wholeOf(*bearer) != bearer->getName().getString();
    for (bool const isHiddenToo : {false, true}) {
        SoSearchAction search;
        if (isCut)
            search.setNode(bearer); // others bear the same name
        else
            search.setName(bearer->getName());
        search.setInterest(SoSearchAction::FIRST);
        search.setSearchingAll(isHiddenToo);
        search.apply(scene);
        if (SoPath* const path = search.getPath(); path != nullptr) {
            path->ref();
            return path;
        }
    }
    return nullptr;
}

std::vector<std::string> NodeSearch::namesLike(SoNode* scene, std::string const& name)
{
    constexpr std::size_t longest = 64;
    constexpr std::size_t mostNames = 3;
    std::string const wanted = lowerCase(name);
    std::size_t const farthest = std::max<std::size_t>(wanted.size() / 3, 1);
    std::set<std::pair<std::size_t, std::string>> found;
    SceneNodes::forEach(scene, [&](SoNode& node) {
        std::string const other = node.getName().getString();
        if (other.empty() || std::max(other.size(), wanted.size()) > longest)
            return;
        std::size_t const far = unlikeness(wanted, lowerCase(other));
        if (far > farthest)
            return;
        found.emplace(far, other);
        if (found.size() > mostNames)
            found.erase(std::prev(found.end()));
    });
    std::vector<std::string> names;
    names.reserve(found.size());
    for (auto const& [far, other] : found)
        names.push_back(other);
    return names;
}

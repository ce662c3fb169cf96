#include "convert/ReferenceGraph.h"

#include "convert/ReferenceCircles.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <sys/stat.h>
#include <utility>

namespace
{

std::vector<DatabaseScan::Reference> const none;

} // namespace

void ReferenceGraph::add(std::string const& file, DatabaseScan const& scan)
{
    files[file].scan = scan;
}

std::vector<DatabaseScan::Reference> const& ReferenceGraph::references(std::string const& file) const
{
    auto const entry = files.find(file);
    return entry != files.end() ? entry->second.scan.references : none;
}

void ReferenceGraph::choose(std::vector<std::string> const& roots)
{
    for (std::string const& root : roots)
        visit(root);
}

void ReferenceGraph::chooseByNames()
{
    std::vector<std::string> names;
    names.reserve(files.size());
    for (auto const& [name, file] : files)
        names.push_back(name);
    std::sort(names.begin(), names.end());
    std::unordered_map<std::string, std::size_t> numbers;
    for (std::size_t i = 0; i < names.size(); ++i)
        numbers.emplace(names[i], i);
    ReferenceCircles::Edges edges(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        for (DatabaseScan::Reference const& reference : references(names[i]))
            if (auto const target = numbers.find(reference.identity); target != numbers.end())
                edges[i].push_back(target->second);
    for (std::vector<std::size_t> const& group : ReferenceCircles::groupsOf(edges))
        visit(names[group.front()]);
}

/// Goes through what a file leads to, in depth: a reference is decided when all below it are.
void ReferenceGraph::visit(std::string const& root)
{
    auto const begin = files.find(root);
    if (begin == files.end() || begin->second.state != State::unseen)
        return;
    std::vector<Step> way{{&begin->second}};
    begin->second.state = State::open;
    while (!way.empty()) {
        File& file = *way.back().file;
        if (way.back().next == file.scan.references.size()) {
            file.state = State::done;
            way.pop_back();
            continue;
        }
        DatabaseScan::Reference const& reference = file.scan.references[way.back().next];
        auto const target = files.find(reference.identity);
        if (target != files.end() && target->second.state == State::unseen) {
            target->second.state = State::open;
            way.push_back({&target->second});
            continue; // and comes back to this reference
        }
        decide(file, reference);
        ++way.back().next;
    }
}

void ReferenceGraph::decide(File& file, DatabaseScan::Reference const& reference)
{
    auto const target = files.find(reference.identity);
    if (target == files.end() || target->second.state != State::done)
        return;
    std::uint64_t const each = target->second.inclusions + 1;
    bool const isTooMuch = reference.count > (mostInclusions - file.inclusions) / each;
    if (isTooMuch || target->second.chain >= longestChain)
        return;
    file.inclusions += reference.count * each;
    file.chain = std::max(file.chain, target->second.chain + 1);
    file.chosen.insert(reference.identity);
}

bool ReferenceGraph::isChosen(std::string const& from, std::string const& to) const
{
    auto const entry = files.find(from);
    return entry != files.end() && entry->second.chosen.count(to) != 0;
}

/// Adds the textures of a file, and of all that it leads to and that isn't among the files met.
void ReferenceGraph::collectTextures(std::string const& root, std::unordered_set<std::string>& met,
                                     TextureNames& names) const
{
    std::vector<std::string> open{root};
    while (!open.empty()) {
        auto const entry = files.find(open.back());
        open.pop_back();
        if (entry == files.end() || !met.insert(entry->first).second)
            continue;
        addTextures(entry->first, names);
        for (DatabaseScan::Reference const& reference : entry->second.scan.references)
            open.push_back(reference.identity);
    }
}

void ReferenceGraph::addTextures(std::string const& file, TextureNames& names) const
{
    auto const entry = files.find(file);
    if (entry != files.end())
        for (std::string const& name : entry->second.scan.textureNames)
            names.try_emplace(name, file);
}

std::map<std::string, ReferenceGraph::TextureNames>
ReferenceGraph::textureSearches(std::vector<DatabaseScan::Reference> const& roots) const
{
    auto const directoryOf = [](DatabaseScan::Reference const& database) {
        return std::filesystem::path(database.path).parent_path().string();
    };
    std::map<std::string, TextureNames> searches;
    std::map<std::string, std::unordered_set<std::string>> met; // by directories of roots
    for (DatabaseScan::Reference const& root : roots)
        collectTextures(root.identity, met[directoryOf(root)], searches[directoryOf(root)]);
    for (auto const& [name, file] : files)
        for (DatabaseScan::Reference const& reference : file.scan.references)
            addTextures(reference.identity, searches[directoryOf(reference)]);
    return searches;
}

std::int64_t ReferenceGraph::timeOf(std::string const& file)
{
    constexpr std::int64_t second = 1'000'000'000;
    struct stat status = {};
    return ::stat(file.c_str(), &status) == 0 ? status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec
                                              : std::numeric_limits<std::int64_t>::max();
}

/// The latest changes come first, and each goes to all that needs the file and has none yet: so every file is
/// visited once.
void ReferenceGraph::readTimes(bool withReferences)
{
    std::unordered_map<std::string, std::vector<std::string>> referring;
    std::vector<std::pair<std::int64_t, std::string>> changes;
    for (auto const& [name, file] : files) {
        std::int64_t latest = timeOf(name);
        for (std::string const& texture : file.scan.textures)
            latest = std::max(latest, timeOf(texture));
        for (DatabaseScan::Reference const& reference : withReferences ? file.scan.references : none) {
            referring[reference.identity].push_back(name);
            if (!knows(reference.identity))
                latest = std::numeric_limits<std::int64_t>::max();
        }
        changes.emplace_back(latest, name);
    }
    std::sort(changes.rbegin(), changes.rend());
    for (auto const& [time, name] : changes) {
        std::vector<std::string> open{name};
        while (!open.empty()) {
            std::string const next = std::move(open.back());
            open.pop_back();
            if (files[next].change)
                continue;
            files[next].change = time;
            std::vector<std::string> const& more = referring[next];
            open.insert(open.end(), more.begin(), more.end());
        }
    }
}

bool ReferenceGraph::hasChangedSince(std::string const& file, std::int64_t time) const
{
    auto const entry = files.find(file);
    return entry == files.end() || !entry->second.change || *entry->second.change >= time;
}

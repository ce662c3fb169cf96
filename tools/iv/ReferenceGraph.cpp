#include "iv/ReferenceGraph.h"

#include <algorithm>
#include <sys/stat.h>

namespace
{

bool isLater(timespec one, timespec other)
{
    return one.tv_sec != other.tv_sec ? one.tv_sec > other.tv_sec : one.tv_nsec > other.tv_nsec;
}

/// Whether a file isn't older than a time. One that isn't there counts as new.
bool isNewFile(std::string const& path, timespec time)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) != 0 || !isLater(time, status.st_mtim);
}

} // namespace

void ReferenceGraph::add(std::string const& file, DatabaseScan const& scan)
{
    files[file].scan = scan;
}

std::vector<DatabaseScan::Reference> const& ReferenceGraph::references(std::string const& file) const
{
    static std::vector<DatabaseScan::Reference> const none;
    auto const entry = files.find(file);
    return entry != files.end() ? entry->second.scan.references : none;
}

void ReferenceGraph::choose(std::vector<std::string> const& roots)
{
    for (std::string const& root : roots)
        visit(root);
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

bool ReferenceGraph::hasChangedSince(std::string const& file, timespec time) const
{
    std::unordered_set<std::string> seen{file};
    std::vector<std::string> open{file};
    while (!open.empty()) {
        std::string const path = std::move(open.back());
        open.pop_back();
        auto const entry = files.find(path);
        if (entry == files.end() || isNewFile(path, time))
            return true;
        DatabaseScan const& scan = entry->second.scan;
        for (std::string const& texture : scan.textures)
            if (isNewFile(texture, time))
                return true;
        for (DatabaseScan::Reference const& reference : scan.references)
            if (seen.insert(reference.identity).second)
                open.push_back(reference.identity);
    }
    return false;
}

#include "inspect/FltDependencies.h"

#include "messages/FltLimits.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <unordered_set>

namespace
{

namespace fs = std::filesystem;

std::string slashed(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string canonical(std::string const& path)
{
    std::error_code problem;
    fs::path const result = fs::weakly_canonical(path, problem);
    return problem ? path : result.string();
}

bool isFile(std::string const& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

/// The path that a stored name means when it is taken as it stands.
std::string storedPath(std::string const& name, std::string const& database)
{
    fs::path const path = slashed(name);
    return (path.is_absolute() ? path : fs::path(slashed(database)).parent_path() / path).string();
}

} // namespace

FltDependencies::FltDependencies(FltInventory const& inventory, FindTexture find)
    : findTexture(std::move(find))
{
    chain.push_back(canonical(inventory.path()));
    take(inventory);
}

void FltDependencies::take(FltInventory const& inventory)
{
    for (auto const& [index, entry] : inventory.textures) {
        std::string const path = findTexture(entry.name, inventory.path());
        bool const isElsewhere =
            !path.empty() && canonical(path) != canonical(storedPath(entry.name, inventory.path()));
        allTextures.push_back({entry.name, inventory.path(), path, entry.offset, entry.uses, isElsewhere});
    }
    for (FltInventory::Reference const& reference : inventory.references)
        if (!reference.path.empty())
            takeReference(reference, inventory.path());
}

std::string FltDependencies::pathOf(std::string const& database, std::string const& reference)
{
    std::string const name = slashed(reference.substr(0, reference.find('<')));
    std::string const directory = fs::path(slashed(database)).parent_path().string();
    std::string const path =
        (directory.empty() ? "" : directory + "/") + (name.compare(0, 2, "./") == 0 ? name.substr(2) : name);
    return isFile(path) || !isFile(name) ? path : name;
}

void FltDependencies::takeReference(FltInventory::Reference const& stored, std::string const& database)
{
    Reference reference{stored.path,   database,     pathOf(database, stored.path),
                        stored.offset, State::found, ""};
    std::size_t const position = allReferences.size();
    allReferences.push_back(reference);
    if (isFile(reference.path)) {
        follow(reference);
    } else {
        reference.path.clear();
        reference.state = State::missing;
    }
    allReferences[position] = std::move(reference);
}

void FltDependencies::follow(Reference& reference)
{
    std::string const file = canonical(reference.path);
    if (std::find(chain.begin(), chain.end(), file) != chain.end()) {
        reference.state = State::cycle;
        return;
    }
    if (chain.size() > FltLimits::externalReferenceDepth) {
        reference.state = State::tooDeep;
        return;
    }
    auto const [entry, isNew] = visited.try_emplace(file);
    if (isNew) {
        chain.push_back(file);
        try {
            take(FltInventory(reference.path));
        } catch (std::runtime_error const& problem) {
            visited[file] = problem.what();
        }
        chain.pop_back();
    }
    reference.problem = visited[file];
    if (!reference.problem.empty())
        reference.state = State::unreadable;
}

std::vector<std::string> FltDependencies::files() const
{
    std::vector<std::string> list;
    std::unordered_set<std::string> seen;
    auto const add = [&](std::string const& path) {
        if (!path.empty() && seen.insert(canonical(path)).second)
            list.push_back(path);
    };
    seen.insert(chain.front());
    for (Texture const& texture : allTextures)
        add(texture.path);
    for (Reference const& reference : allReferences)
        add(reference.path);
    return list;
}

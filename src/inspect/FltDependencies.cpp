#include "inspect/FltDependencies.h"

#include "messages/FltLimits.h"
#include "model/FltReferencedFile.h"
#include "records/FltOpcode.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordTexturePattern.h"
#include "textures/FltTextureAttributeFile.h"
#include "textures/Picture.h"
#include "toolkit/StackSpace.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <unordered_set>

namespace
{

namespace fs = std::filesystem;

constexpr std::uint32_t mostLevels = FltLimits::hierarchyDepth;

std::string slashed(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string directoryOf(std::string const& file)
{
    return file.substr(0, file.rfind('/') + 1);
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

template <std::size_t size>
std::string textOf(char const (&characters)[size])
{
    return {characters, ::strnlen(characters, size)};
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
    take(inventory, 0);
}

/// @return the levels in a file and below it
std::uint32_t FltDependencies::take(FltInventory const& inventory, std::uint32_t levelsAbove)
{
    for (auto const& [index, entry] : inventory.textures) {
        std::string const path = findTexture(entry.name, inventory.path());
        bool const isElsewhere =
            !path.empty() && canonical(path) != canonical(storedPath(entry.name, inventory.path()));
        allTextures.push_back({entry.name, inventory.path(), path, entry.offset, entry.uses, isElsewhere,
                               attributesOf(entry.name, path, inventory.path())});
    }
    std::uint32_t height = 0;
    for (FltInventory::Node const& node : inventory.nodes)
        height = std::max(height, node.depth);
    if (levelsAbove != 0 && levelsAbove + height >= mostLevels)
        takeLevels(inventory, levelsAbove);
    for (FltInventory::Reference const& reference : inventory.references) {
        if (reference.path.empty())
            continue;
        std::uint32_t const depth = inventory.nodes[reference.node].depth;
        height = std::max(height, depth + takeReference(reference, inventory.path(), levelsAbove + depth));
    }
    return height;
}

FltTextureAttributes FltDependencies::attributesOf(std::string const& name, std::string const& picture,
                                                   std::string const& database)
{
    FltTextureAttributes attributes = FltTextureAttributeFile::find(
        attributeSearch, name, picture, {directoryOf(chain.front()), directoryOf(database)});
    if (attributes.path.empty() || picture.empty())
        return attributes;
    Picture const read = Picture::read(picture);
    std::string problem =
        read.pixels != nullptr ? FltTextureAttributeFile::contradiction(attributes, *read.pixels) : "";
    if (!problem.empty())
        attributes.problems.push_back(std::move(problem));
    return attributes;
}

void FltDependencies::takeLevels(FltInventory const& inventory, std::uint32_t levelsAbove)
{
    auto const first =
        std::find_if(inventory.nodes.begin(), inventory.nodes.end(),
                     [&](FltInventory::Node const& node) { return levelsAbove + node.depth >= mostLevels; });
    allDeepLevels.push_back({inventory.path(), first->offset, first->opcode});
}

std::string FltDependencies::nameIn(FltRecordScan const& scan)
{
    if (auto const* const texture = dynamic_cast<FltRecordTexturePattern const*>(scan.record()))
        return textOf(texture->fileName);
    auto const* const reference = dynamic_cast<FltRecordExternalReference const*>(scan.record());
    return reference != nullptr ? textOf(reference->asciiPath) : "";
}

/// @return the levels below the reference
std::uint32_t FltDependencies::takeReference(FltInventory::Reference const& stored,
                                             std::string const& database, std::uint32_t levelsAbove)
{
    std::uint32_t height = 0;
    Reference reference{stored.path,   database,     search.find(database, stored.path),
                        stored.offset, State::found, ""};
    std::size_t const position = allReferences.size();
    allReferences.push_back(reference);
    reference.isElsewhere = reference.path != FltReferencedFile::pathOf(database, stored.path);
    if (isFile(reference.path)) {
        height = follow(reference, levelsAbove);
    } else {
        reference.path.clear();
        reference.state = State::missing;
    }
    allReferences[position] = std::move(reference);
    return height;
}

std::uint32_t FltDependencies::follow(Reference& reference, std::uint32_t levelsAbove)
{
    std::string const file = canonical(reference.path);
    if (std::find(chain.begin(), chain.end(), file) != chain.end()) {
        reference.state = State::cycle;
        return 0;
    }
    if (chain.size() > FltLimits::externalReferenceDepth || levelsAbove >= mostLevels ||
        !StackSpace::holds(FltLimits::stackForALevel)) {
        reference.state = State::tooDeep;
        return 0;
    }
    auto const [entry, isNew] = visited.try_emplace(file);
    if (isNew) {
        chain.push_back(file);
        try {
            visited[file].height = take(FltInventory(reference.path), levelsAbove);
        } catch (std::runtime_error const& problem) {
            visited[file].problem = problem.what();
        }
        chain.pop_back();
    } else if (levelsAbove + entry->second.height >= mostLevels) {
        allDeepLevels.push_back({reference.database, reference.offset, FltOpcode::externalReference});
    }
    Visited const& found = visited[file];
    reference.problem = found.problem;
    if (!reference.problem.empty())
        reference.state = State::unreadable;
    return found.height;
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

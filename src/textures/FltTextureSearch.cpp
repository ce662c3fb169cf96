#include "textures/FltTextureSearch.h"

#include "toolkit/ImageSearch.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr char const* foldersOfImages[] = {"texture", "textures", "images", "pics", "pictures"};

constexpr std::size_t mostPlacesTold = 64;

std::string withSlash(std::string directory)
{
    if (directory.empty())
        return "./";
    return directory.back() == '/' ? directory : directory + '/';
}

bool isAbsolute(std::string const& path)
{
    return !path.empty() && path[0] == '/';
}

/// A drive, as in "C:", or the way up: what no tail begins with.
bool leadsElsewhere(std::string const& part)
{
    return part == ".." || part.back() == ':';
}

void addOnce(std::vector<std::string>& list, std::string text)
{
    if (std::find(list.begin(), list.end(), text) == list.end())
        list.push_back(std::move(text));
}

} // namespace

FltTextureSearch::FltTextureSearch(std::vector<std::string> directories, FltReadableTree readable)
    : directories(std::move(directories)), readable(readable), known(std::move(readable))
{
    for (std::string& directory : ImageSearch::directories())
        this->directories.push_back(std::move(directory));
}

FltTextureSearch::Result FltTextureSearch::find(std::string const& name,
                                                std::vector<std::string> const& ownDirectories,
                                                Accept const& accept)
{
    std::vector<std::string> places;
    for (Parts const* const list : {&ownDirectories, &std::as_const(directories)})
        for (std::string const& directory : *list)
            addOnce(places, withSlash(directory));

    std::string const turned = FltKnownDirectories::withSlashes(name);
    Parts const parts = FltKnownDirectories::partsOf(turned);
    if (parts.empty())
        return {};
    for (Way const way : {Way{false, false}, Way{true, false}, Way{false, true}, Way{true, true}})
        if (std::string path = findBy(way, name, parts, places, accept); !path.empty())
            return {std::move(path), {}, 0};
    std::string const naming = ownDirectories.empty() ? "" : withSlash(ownDirectories.back());
    std::stable_partition(places.begin(), places.end(),
                          [&naming](std::string const& place) { return place == naming; });
    return notFound(turned, parts, places);
}

/// @param name   with forward slashes
/// @param places that of the file that names it first
FltTextureSearch::Result FltTextureSearch::notFound(std::string const& name, Parts const& parts,
                                                    std::vector<std::string> const& places)
{
    Result missing;
    missing.otherDirectories = places.size();
    if (isAbsolute(name))
        missing.tried.push_back(name);
    else if (!places.empty())
        --missing.otherDirectories;
    for (std::string const& place : places) {
        if (missing.tried.size() >= mostPlacesTold)
            break;
        if (!isAbsolute(name) && parts.front().back() != ':')
            addOnce(missing.tried, place + name);
        addOnce(missing.tried, place + parts.back());
    }
    return missing;
}

std::string FltTextureSearch::findBy(Way way, std::string const& name, Parts const& parts,
                                     std::vector<std::string> const& places, Accept const& accept)
{
    auto const isTaken = [&](std::string const& path) {
        OpenFile const file = readable.open(path);
        return file.isOpen() && accept(path, file);
    };
    bool const isExact = !way.ignoresCase && !way.changesEnding;
    bool const isFromRoot = isAbsolute(name) || isAbsolute(FltKnownDirectories::withSlashes(name));
    if (isExact && isAbsolute(name) && isTaken(name))
        return name;
    if (isExact && !isFromRoot && name.find('\\') != std::string::npos)
        for (std::string const& place : places)
            if (isTaken(place + name))
                return place + name;
    FltKnownDirectories::Visited visited;
    for (auto begin = parts.begin(); begin != parts.end(); ++begin) {
        bool const isWhole = begin == parts.begin();
        if (isWhole ? begin->back() == ':' : leadsElsewhere(*begin))
            continue;
        for (std::string const& place : places)
            if (std::string path = known.find(way, place, begin, parts.end(), visited, accept); !path.empty())
                return path;
    }
    for (char const* const folder : foldersOfImages) {
        Parts const inFolder = {folder, parts.back()};
        FltKnownDirectories::Visited visitedFolders;
        for (std::string const& place : places)
            if (std::string path =
                    known.find(way, place, inFolder.begin(), inFolder.end(), visitedFolders, accept);
                !path.empty())
                return path;
    }
    return isExact ? ImageSearch::findIf(name, isTaken) : "";
}

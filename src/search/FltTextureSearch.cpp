#include "search/FltTextureSearch.h"

#include "toolkit/ImageSearch.h"

#include <Inventor/SoInput.h>
#include <Inventor/lists/SbStringList.h>
#include <algorithm>
#include <cctype>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

/// Endings of images, those first that such databases use most.
constexpr char const* endings[] = {".rgb",  ".rgba", ".png", ".jpg",  ".jpeg", ".int",
                                   ".inta", ".sgi",  ".tif", ".tiff", ".bw",   ".dds"};

constexpr char const* foldersOfImages[] = {"texture", "textures", "images", "pics", "pictures"};

constexpr std::size_t mostPlacesTold = 16;

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

std::string withSlash(std::string directory)
{
    if (directory.empty())
        return "./";
    return directory.back() == '/' ? directory : directory + '/';
}

std::string withForwardSlashes(std::string name)
{
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

bool isAbsolute(std::string const& path)
{
    return !path.empty() && path[0] == '/';
}

/// The parts of a path, without empty ones and those that say "here".
std::vector<std::string> partsOf(std::string const& path)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= path.size();) {
        std::size_t const end = std::min(path.find('/', begin), path.size());
        std::string part = path.substr(begin, end - begin);
        if (!part.empty() && part != ".")
            parts.push_back(std::move(part));
        begin = end + 1;
    }
    return parts;
}

/// A drive, as in "C:", or the way up: what no tail begins with.
bool leadsElsewhere(std::string const& part)
{
    return part == ".." || part.back() == ':';
}

std::string stemOf(std::string const& name)
{
    std::size_t const dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

void addOnce(std::vector<std::string>& list, std::string text)
{
    if (std::find(list.begin(), list.end(), text) == list.end())
        list.push_back(std::move(text));
}

} // namespace

FltTextureSearch::FltTextureSearch(std::vector<std::string> directories, FltReadableTree readable)
    : directories(std::move(directories)), readable(std::move(readable))
{
    SbStringList const& toolkits = SoInput::getDirectories();
    for (int i = 0; i < toolkits.getLength(); ++i)
        this->directories.emplace_back(toolkits[i]->getString());
}

FltTextureSearch::Result FltTextureSearch::find(std::string const& name,
                                                std::vector<std::string> const& ownDirectories,
                                                Accept const& accept)
{
    std::vector<std::string> places;
    for (Parts const* const list : {&ownDirectories, &std::as_const(directories)})
        for (std::string const& directory : *list)
            addOnce(places, withSlash(directory));

    std::string const turned = withForwardSlashes(name);
    Parts const parts = partsOf(turned);
    if (parts.empty())
        return {};
    for (Way const way : {Way{false, false}, Way{true, false}, Way{false, true}, Way{true, true}})
        if (std::string path = findBy(way, name, parts, places, accept); !path.empty())
            return {std::move(path), {}};

    Result missing;
    if (isAbsolute(turned))
        missing.tried.push_back(turned);
    for (std::string const& place : places) {
        if (missing.tried.size() >= mostPlacesTold)
            break;
        if (!isAbsolute(turned) && !leadsElsewhere(parts.front()))
            addOnce(missing.tried, place + turned);
        addOnce(missing.tried, place + parts.back());
    }
    return missing;
}

std::string FltTextureSearch::findBy(Way way, std::string const& name, Parts const& parts,
                                     std::vector<std::string> const& places, Accept const& accept)
{
    auto const isTaken = [&](std::string const& path) { return isReadableFile(path) && accept(path); };
    bool const isExact = !way.ignoresCase && !way.changesEnding;
    bool const isFromRoot = isAbsolute(name) || isAbsolute(withForwardSlashes(name));
    if (isExact && isAbsolute(name) && isTaken(name))
        return name;
    if (isExact && !isFromRoot && name.find('\\') != std::string::npos)
        for (std::string const& place : places)
            if (isTaken(place + name))
                return place + name;
    for (auto begin = parts.begin(); begin != parts.end(); ++begin) {
        bool const isWhole = begin == parts.begin();
        if (isWhole ? begin->back() == ':' : leadsElsewhere(*begin))
            continue;
        for (std::string const& place : places)
            if (std::string path = findBelow(way, place, begin, parts.end(), accept); !path.empty())
                return path;
    }
    for (char const* const folder : foldersOfImages) {
        Parts const inFolder = {folder, parts.back()};
        for (std::string const& place : places)
            if (std::string path = findBelow(way, place, inFolder.begin(), inFolder.end(), accept);
                !path.empty())
                return path;
    }
    return isExact ? ImageSearch::findIf(name, isTaken) : "";
}

std::string FltTextureSearch::findBelow(Way way, std::string const& directory, Parts::const_iterator part,
                                        Parts::const_iterator end, Accept const& accept)
{
    bool const isLast = std::next(part) == end;
    if (!isLast && *part == "..")
        return findBelow(way, directory + "../", std::next(part), end, accept);
    for (std::string const& match :
         matches({way.ignoresCase, way.changesEnding && isLast}, directory, *part)) {
        std::string path = directory + match;
        if (!isLast) {
            if (std::string found = findBelow(way, path + '/', std::next(part), end, accept); !found.empty())
                return found;
        } else if (isReadableFile(path) && accept(path)) {
            return path;
        }
    }
    return {};
}

std::vector<std::string> FltTextureSearch::matches(Way way, std::string const& directory,
                                                   std::string const& name)
{
    Listing const& listing = listingOf(directory);
    std::vector<std::string> found;
    auto const look = [&](std::string const& wanted) {
        if (!listing.isComplete || (!way.ignoresCase && listing.names.count(wanted) != 0))
            addOnce(found, wanted);
        if (!way.ignoresCase)
            return;
        auto const others = listing.byLowerCase.find(lowerCase(wanted));
        if (others != listing.byLowerCase.end())
            for (std::string const& other : others->second)
                addOnce(found, other);
    };
    if (!way.changesEnding) {
        look(name);
        return found;
    }
    std::string const stem = stemOf(name);
    for (char const* const ending : endings)
        look(stem + ending);
    return found;
}

FltTextureSearch::Listing const& FltTextureSearch::listingOf(std::string const& directory)
{
    auto const [known, isNew] = listings.try_emplace(directory);
    Listing& listing = known->second;
    if (!isNew)
        return listing;
    struct stat status = {};
    if (!readable.holds(directory) || ::stat(directory.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        listing.isComplete = true; // nothing is there
        return listing;
    }
    std::unique_ptr<DIR, int (*)(DIR*)> const stream(::opendir(directory.c_str()), ::closedir);
    if (stream == nullptr)
        return listing;
    listing.isComplete = true;
    while (dirent const* const entry = ::readdir(stream.get())) {
        std::string const name = entry->d_name;
        listing.names.insert(name);
        listing.byLowerCase[lowerCase(name)].push_back(name);
    }
    for (auto& [lower, names] : listing.byLowerCase)
        std::sort(names.begin(), names.end()); // the same choice on every machine
    return listing;
}

bool FltTextureSearch::isReadableFile(std::string const& path) const
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::access(path.c_str(), R_OK) == 0 && readable.holds(path);
}

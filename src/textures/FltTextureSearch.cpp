#include "textures/FltTextureSearch.h"

#include "toolkit/ImageSearch.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

namespace
{

/// Endings of images, those first that such databases use most.
constexpr char const* endings[] = {".rgb",  ".rgba", ".png", ".jpg",  ".jpeg", ".int",
                                   ".inta", ".sgi",  ".tif", ".tiff", ".bw",   ".dds"};

constexpr char const* foldersOfImages[] = {"texture", "textures", "images", "pics", "pictures"};

constexpr std::size_t mostPlacesTold = 64;

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

    std::string const turned = withForwardSlashes(name);
    Parts const parts = partsOf(turned);
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
    bool const isFromRoot = isAbsolute(name) || isAbsolute(withForwardSlashes(name));
    if (isExact && isAbsolute(name) && isTaken(name))
        return name;
    if (isExact && !isFromRoot && name.find('\\') != std::string::npos)
        for (std::string const& place : places)
            if (isTaken(place + name))
                return place + name;
    Visited visited;
    for (auto begin = parts.begin(); begin != parts.end(); ++begin) {
        bool const isWhole = begin == parts.begin();
        if (isWhole ? begin->back() == ':' : leadsElsewhere(*begin))
            continue;
        for (std::string const& place : places)
            if (std::string path = findBelow(way, place, begin, parts.end(), visited, accept); !path.empty())
                return path;
    }
    for (char const* const folder : foldersOfImages) {
        Parts const inFolder = {folder, parts.back()};
        Visited visitedFolders;
        for (std::string const& place : places)
            if (std::string path =
                    findBelow(way, place, inFolder.begin(), inFolder.end(), visitedFolders, accept);
                !path.empty())
                return path;
    }
    return isExact ? ImageSearch::findIf(name, isTaken) : "";
}

/// The directories that the parts but the last lead to are looked into in the order of preference.
std::string FltTextureSearch::findBelow(Way way, std::string const& place, Parts::const_iterator part,
                                        Parts::const_iterator end, Visited& visited, Accept const& accept)
{
    Directory* const first = directoryAt(place);
    if (first == nullptr)
        return {};
    auto const isKnown = [&](Stop const& stop) {
        return !visited.emplace(stop.directory, std::distance(part, end)).second;
    };
    std::vector<Stop> stops = {{first, place}};
    for (;; ++part) {
        stops.erase(std::remove_if(stops.begin(), stops.end(), isKnown), stops.end());
        if (stops.empty())
            return {};
        if (std::next(part) == end)
            break;
        stops = stepInto({way.ignoresCase, false}, stops, *part);
    }
    for (Stop const& stop : stops)
        for (std::string const& match : matches(way, *stop.directory, *part)) {
            std::string path = stop.path + match;
            OpenFile const file = readable.open(path);
            if (file.isOpen() && accept(path, file))
                return path;
        }
    return {};
}

/// The directories of a name in others.
std::vector<FltTextureSearch::Stop> FltTextureSearch::stepInto(Way way, std::vector<Stop> const& stops,
                                                               std::string const& part)
{
    std::vector<Stop> next;
    auto const add = [&](Stop const& stop, std::string const& name) {
        Directory* const directory = directoryBelow(*stop.directory, name);
        if (directory == nullptr)
            return;
        std::string path = stop.path + name + '/';
        bool const isTooLong = path.size() + NAME_MAX >= PATH_MAX;
        next.push_back({directory, isTooLong ? directory->path : std::move(path)});
    };
    for (Stop const& stop : stops) {
        if (part == "..") {
            add(stop, part);
            continue;
        }
        for (std::string const& match : matches(way, *stop.directory, part))
            add(stop, match);
    }
    return next;
}

std::vector<std::string> FltTextureSearch::matches(Way way, Directory const& directory,
                                                   std::string const& name)
{
    std::vector<std::string> found;
    auto const look = [&](std::string const& wanted) {
        if (!directory.isComplete || (!way.ignoresCase && directory.names.count(wanted) != 0))
            addOnce(found, wanted);
        if (!way.ignoresCase)
            return;
        auto const others = directory.byLowerCase.find(lowerCase(wanted));
        if (others != directory.byLowerCase.end())
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

FltTextureSearch::Directory* FltTextureSearch::directoryAt(std::string const& place)
{
    auto const [at, isNew] = places.try_emplace(place, nullptr);
    if (isNew)
        at->second = read(place);
    return at->second;
}

FltTextureSearch::Directory* FltTextureSearch::directoryBelow(Directory& parent, std::string const& name)
{
    auto const at = parent.below.find(name);
    if (at != parent.below.end())
        return at->second;
    Directory* const directory = read(parent.path + name + '/');
    if (directory != nullptr || parent.isComplete) // else any name in a database would be kept
        parent.below.emplace(name, directory);
    return directory;
}

/// The directory at a path, read if it is met for the first time; null if there is none.
FltTextureSearch::Directory* FltTextureSearch::read(std::string const& path)
{
    OpenFile const place = readable.openDirectory(path);
    std::optional<OpenFile::Identity> const identity = place.isOpen() ? place.identity() : std::nullopt;
    if (!identity)
        return nullptr;
    auto const [at, isNew] = known.try_emplace(*identity);
    Directory& directory = at->second;
    if (!isNew)
        return &directory;
    directory.path = path;
    OpenFile list(::openat(place.descriptor(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::unique_ptr<DIR, int (*)(DIR*)> const stream(list.isOpen() ? ::fdopendir(list.descriptor()) : nullptr,
                                                     ::closedir);
    if (stream == nullptr)
        return &directory;
    list.release();
    directory.isComplete = true;
    while (dirent const* const entry = ::readdir(stream.get())) {
        std::string const name = entry->d_name;
        directory.names.insert(name);
        directory.byLowerCase[lowerCase(name)].push_back(name);
    }
    for (auto& [lower, names] : directory.byLowerCase)
        std::sort(names.begin(), names.end()); // the same choice on every machine
    return &directory;
}

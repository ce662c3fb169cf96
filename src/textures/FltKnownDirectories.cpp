#include "textures/FltKnownDirectories.h"

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

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

std::string stemOf(std::string const& name)
{
    std::size_t const dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

} // namespace

std::string FltKnownDirectories::withSlashes(std::string name)
{
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

FltKnownDirectories::Parts FltKnownDirectories::partsOf(std::string const& path)
{
    Parts parts;
    for (std::size_t begin = 0; begin <= path.size();) {
        std::size_t const end = std::min(path.find('/', begin), path.size());
        std::string part = path.substr(begin, end - begin);
        if (!part.empty() && part != ".")
            parts.push_back(std::move(part));
        begin = end + 1;
    }
    return parts;
}

/// The directories that the parts but the last lead to are looked into in the order of preference.
std::string FltKnownDirectories::find(Way way, std::string const& place, Parts::const_iterator part,
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
std::vector<FltKnownDirectories::Stop> FltKnownDirectories::stepInto(Way way, std::vector<Stop> const& stops,
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

std::vector<std::string> FltKnownDirectories::matches(Way way, Directory const& directory,
                                                      std::string const& name)
{
    std::vector<std::string> found;
    auto const look = [&](std::string const& wanted) {
        if (!directory.isComplete || (!way.ignoresCase && directory.names.count(wanted) != 0))
            found.push_back(wanted);
        if (!way.ignoresCase)
            return;
        auto const others = directory.byLowerCase.find(lowerCase(wanted));
        if (others != directory.byLowerCase.end())
            found.insert(found.end(), others->second.begin(), others->second.end());
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

FltKnownDirectories::Directory* FltKnownDirectories::directoryAt(std::string const& place)
{
    auto const [at, isNew] = places.try_emplace(place, nullptr);
    if (isNew)
        at->second = read(place);
    return at->second;
}

FltKnownDirectories::Directory* FltKnownDirectories::directoryBelow(Directory& parent,
                                                                    std::string const& name)
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
FltKnownDirectories::Directory* FltKnownDirectories::read(std::string const& path)
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

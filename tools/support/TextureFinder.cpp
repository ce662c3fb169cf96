#include "support/TextureFinder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace
{

namespace fs = std::filesystem;

bool isFile(fs::path const& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

} // namespace

std::string TextureFinder::operator()(std::string const& name, std::string const& database) const
{
    std::string turned = name;
    std::replace(turned.begin(), turned.end(), '\\', '/');
    fs::path const stored = turned;
    if (stored.is_absolute() && isFile(stored))
        return stored.string();
    std::vector<fs::path> places{fs::path(database).parent_path()};
    places.insert(places.end(), directories.begin(), directories.end());
    // The whole stored path first, then ever shorter ends of it.
    std::vector<fs::path> parts(stored.begin(), stored.end());
    for (std::size_t first = stored.is_absolute() ? 1 : 0; first < parts.size(); ++first) {
        fs::path tail;
        for (std::size_t i = first; i < parts.size(); ++i)
            tail /= parts[i];
        for (fs::path const& place : places)
            if (isFile(place / tail))
                return (place / tail).string();
    }
    return "";
}

#include "convert/ReferredFiles.h"

#include <optional>
#include <sys/stat.h>

namespace
{

std::optional<std::pair<dev_t, ino_t>> identityOf(std::string const& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return std::pair{status.st_dev, status.st_ino};
}

} // namespace

void ReferredFiles::add(std::string const& path, std::string const& what)
{
    if (auto const identity = identityOf(path))
        files.try_emplace(*identity, what);
}

std::string const* ReferredFiles::reasonToKeep(std::string const& path) const
{
    auto const identity = identityOf(path);
    auto const known = identity ? files.find(*identity) : files.end();
    return known != files.end() ? &known->second : nullptr;
}

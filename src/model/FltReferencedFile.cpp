#include "model/FltReferencedFile.h"

#include <algorithm>

namespace
{

std::string slashed(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

} // namespace

std::string FltReferencedFile::pathOf(std::string const& database, std::string const& reference)
{
    std::string path = slashed(reference);
    std::size_t const node = path.rfind('<');
    if (!path.empty() && path.back() == '>' && node != std::string::npos)
        path.erase(node);
    if (!path.empty() && path.front() == '/')
        return path;
    std::string const from = slashed(database);
    return from.substr(0, from.rfind('/') + 1) + (path.compare(0, 2, "./") == 0 ? path.substr(2) : path);
}

#include "model/FltReferencedFile.h"

#include <algorithm>

namespace
{

std::string slashed(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

/// Where the bracket before the name of a node stands; the end if there is none.
std::size_t nodeIn(std::string const& reference)
{
    if (reference.empty() || reference.back() != '>')
        return reference.size();
    return std::min(reference.rfind('<'), reference.size());
}

} // namespace

std::string FltReferencedFile::fileOf(std::string const& reference)
{
    return reference.substr(0, nodeIn(reference));
}

std::string FltReferencedFile::nodeOf(std::string const& reference)
{
    std::size_t const bracket = nodeIn(reference);
    return bracket < reference.size() ? reference.substr(bracket + 1, reference.size() - bracket - 2) : "";
}

std::string FltReferencedFile::pathOf(std::string const& database, std::string const& reference)
{
    std::string path = slashed(fileOf(reference));
    if (!path.empty() && path.front() == '/')
        return path;
    std::string const from = slashed(database);
    return from.substr(0, from.rfind('/') + 1) + (path.compare(0, 2, "./") == 0 ? path.substr(2) : path);
}

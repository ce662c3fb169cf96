#include "search/FltReadableTree.h"

#include <filesystem>
#include <system_error>

namespace
{

/// The real place of a file, with a slash at its end; empty if there is none.
std::string realPathOf(std::string const& path)
{
    std::error_code problem;
    std::string real = std::filesystem::canonical(path.empty() ? "." : path, problem).string();
    if (problem)
        return {};
    if (real.back() != '/')
        real += '/';
    return real;
}

} // namespace

FltReadableTree::FltReadableTree(std::optional<std::string> const& directory)
    : isLimited(directory.has_value()), root(directory ? realPathOf(*directory) : "")
{
}

bool FltReadableTree::holds(std::string const& path) const
{
    return !isLimited || (!root.empty() && realPathOf(path).compare(0, root.size(), root) == 0);
}

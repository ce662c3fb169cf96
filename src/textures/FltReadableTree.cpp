#include "textures/FltReadableTree.h"

#include "toolkit/RegularFile.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

#ifdef SYS_openat2
#include <linux/openat2.h>
#endif

namespace
{

/// The real place of a file, with a slash at its end; empty, with errno set, if there is none.
std::string realPathOf(std::string const& path)
{
    std::error_code problem;
    std::string real = std::filesystem::canonical(path.empty() ? "." : path, problem).string();
    if (problem) {
        errno = problem.value();
        return {};
    }
    if (real.back() != '/')
        real += '/';
    return real;
}

/// The name of a directory with one slash at its end.
std::string withSlash(std::string directory)
{
    if (directory.empty())
        directory = ".";
    directory.erase(directory.find_last_not_of('/') + 1);
    return directory + '/';
}

bool begins(std::string const& text, std::string const& begin)
{
    return text.compare(0, begin.size(), begin) == 0;
}

/// Opens a name from a directory on, unless anything in it leads out of there. Not every system has that.
int openBeneath(int directory, std::string const& name, int flags)
{
#ifdef SYS_openat2
    open_how how = {};
    how.flags = static_cast<unsigned>(flags);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    return static_cast<int>(::syscall(SYS_openat2, directory, name.c_str(), &how, sizeof how));
#else
    errno = ENOSYS;
    return -1;
#endif
}

/// Opens a name without links and ".." from a directory on, part by part. A part that is a link meanwhile
/// isn't followed.
int openWithoutLinks(int directory, std::string const& name, int flags)
{
    OpenFile parent;
    int from = directory;
    std::size_t begin = 0;
    for (std::size_t end = name.find('/'); end != std::string::npos; end = name.find('/', begin)) {
        std::string const part = name.substr(begin, end - begin);
        OpenFile next(::openat(from, part.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!next.isOpen())
            return -1;
        parent = std::move(next);
        from = parent.descriptor();
        begin = end + 1;
    }
    return ::openat(from, name.c_str() + begin, flags | O_NOFOLLOW);
}

} // namespace

FltReadableTree::FltReadableTree(std::optional<std::string> const& directory)
    : isLimited(directory.has_value()), given(directory ? withSlash(*directory) : ""),
      root(directory ? realPathOf(*directory) : ""), rootDirectory(std::make_shared<OpenFile const>())
{
    if (!root.empty())
        rootDirectory =
            std::make_shared<OpenFile const>(::open(given.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

bool FltReadableTree::holds(std::string const& path) const
{
    return !isLimited || (rootDirectory->isOpen() && begins(realPathOf(path), root));
}

OpenFile FltReadableTree::open(std::string const& path) const
{
    return RegularFile::open([&](int flags) { return openAs(path, flags | O_CLOEXEC); });
}

OpenFile FltReadableTree::openDirectory(std::string const& path) const
{
    return OpenFile(openAs(path, O_PATH | O_DIRECTORY | O_CLOEXEC));
}

/// A descriptor of a file that is one of them; otherwise -1, with errno set.
int FltReadableTree::openAs(std::string const& path, int flags) const
{
    if (!isLimited)
        return ::open(path.c_str(), flags);
    if (!rootDirectory->isOpen()) {
        errno = EXDEV;
        return -1;
    }
    std::optional<std::string> const name = nameFromRoot(path);
    int const descriptor = name ? openBeneath(rootDirectory->descriptor(), *name, flags) : -1;
    return descriptor >= 0 ? descriptor : openReal(path, flags);
}

/// The same for a name that leads out and in again, as an absolute link does, and for systems that know no
/// other way.
int FltReadableTree::openReal(std::string const& path, int flags) const
{
    std::string real = realPathOf(path);
    if (real.empty())
        return -1;
    if (!begins(real, root)) {
        errno = EXDEV;
        return -1;
    }
    real.pop_back();
    std::string const name = real.size() > root.size() ? real.substr(root.size()) : ".";
    return openWithoutLinks(rootDirectory->descriptor(), name, flags);
}

/// What a path names below the directory, if that is plain to see.
std::optional<std::string> FltReadableTree::nameFromRoot(std::string const& path) const
{
    for (std::string const* const directory : {&given, &root})
        if (begins(path, *directory))
            return "./" + path.substr(directory->size());
    return std::nullopt;
}

#include "toolkit/NamelessFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{

std::string folderOf(std::string const& path)
{
    std::size_t const slash = path.rfind('/');
    return slash != std::string::npos ? path.substr(0, slash + 1) : "./";
}

/// What an open file is called while it has no name.
std::string pathOf(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

} // namespace

int NamelessFile::open(std::string const& target)
{
    int const descriptor = ::open(folderOf(target).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600);
    if (descriptor >= 0 && ::access(pathOf(descriptor).c_str(), F_OK) == 0)
        return descriptor;
    if (descriptor >= 0)
        ::close(descriptor);
    return -1;
}

int NamelessFile::giveName(int descriptor, std::string const& name)
{
    return ::linkat(AT_FDCWD, pathOf(descriptor).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0
               ? 0
               : errno;
}

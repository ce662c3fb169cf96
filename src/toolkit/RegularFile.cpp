#include "toolkit/RegularFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

int RegularFile::open(char const* path)
{
    struct stat status = {};
    if (::stat(path, &status) != 0)
        return -1;
    int const descriptor =
        S_ISREG(status.st_mode) ? ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY) : -1;
    if (descriptor >= 0 && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        return descriptor;
    if (descriptor >= 0)
        ::close(descriptor); // something else took the name meanwhile
    if (!S_ISREG(status.st_mode))
        errno = EINVAL;
    return -1;
}

bool RegularFile::isReadable(char const* path)
{
    struct stat status = {};
    return ::stat(path, &status) == 0 && !S_ISSOCK(status.st_mode) &&
           ::faccessat(AT_FDCWD, path, R_OK, AT_EACCESS) == 0;
}

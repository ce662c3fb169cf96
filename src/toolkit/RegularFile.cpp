#include "toolkit/RegularFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// The file itself, or none, with errno set, if it is no regular one.
OpenFile regularOnly(OpenFile file)
{
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.descriptor(), &status) != 0)
        return {};
    if (S_ISREG(status.st_mode))
        return file;
    errno = EINVAL;
    return {};
}

} // namespace

OpenFile RegularFile::open(char const* path)
{
    return open([path](int flags) { return ::open(path, flags | O_CLOEXEC); });
}

OpenFile RegularFile::open(std::function<int(int flags)> const& descriptorFor)
{
    if (!regularOnly(OpenFile(descriptorFor(O_PATH))).isOpen())
        return {};
    // Something else may have taken the name meanwhile.
    return regularOnly(OpenFile(descriptorFor(O_RDONLY | O_NONBLOCK | O_NOCTTY)));
}

bool RegularFile::isReadable(char const* path)
{
    struct stat status = {};
    return ::stat(path, &status) == 0 && !S_ISSOCK(status.st_mode) &&
           ::faccessat(AT_FDCWD, path, R_OK, AT_EACCESS) == 0;
}

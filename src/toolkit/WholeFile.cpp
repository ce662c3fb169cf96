#include "toolkit/WholeFile.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

/// The permissions that a new file gets, or those of the one that it replaces.
mode_t permissionsFor(std::string const& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0)
        return status.st_mode & 0777;
    mode_t const mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

WholeFile::WholeFile(std::string path) : path(std::move(path)), temporary(this->path + ".XXXXXX")
{
    struct stat status = {};
    if (::stat(this->path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        reason = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        temporary.clear();
        return;
    }
    int const descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        reason = errno;
        temporary.clear();
        return;
    }
    file = ::fdopen(descriptor, "wb");
    if (file == nullptr) {
        reason = errno;
        ::close(descriptor);
    }
}

WholeFile::~WholeFile()
{
    if (file != nullptr)
        std::fclose(file);
    if (!temporary.empty())
        ::unlink(temporary.c_str());
}

int WholeFile::commit()
{
    if (file == nullptr)
        return reason;
    bool const isBroken = std::ferror(file) != 0;
    ::fchmod(::fileno(file), permissionsFor(path));
    errno = 0;
    bool const isClosed = std::fclose(std::exchange(file, nullptr)) == 0;
    if (isBroken || !isClosed)
        return reason = errno != 0 ? errno : EIO;
    if (std::rename(temporary.c_str(), path.c_str()) != 0)
        return reason = errno;
    temporary.clear();
    return 0;
}

bool WholeFile::areOne(std::string const& first, std::string const& second)
{
    struct stat one = {};
    struct stat other = {};
    return ::stat(first.c_str(), &one) == 0 && ::stat(second.c_str(), &other) == 0 &&
           one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

#include "toolkit/WholeFile.h"

#include "toolkit/NamelessFile.h"
#include "toolkit/TemporaryName.h"

#include <cerrno>
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

WholeFile::WholeFile(std::string path) : path(std::move(path))
{
    struct stat status = {};
    if (::stat(this->path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        reason = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        return;
    }
    int descriptor = NamelessFile::open(this->path);
    if (descriptor < 0) {
        temporary = TemporaryName::beside(this->path);
        descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    }
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

int WholeFile::close()
{
    if (file == nullptr)
        return reason;
    errno = 0;
    if (std::ferror(file) != 0 || std::fflush(file) != 0)
        reason = errno != 0 ? errno : EIO;
    ::fchmod(::fileno(file), permissionsFor(path));
    if (reason == 0 && temporary.empty()) {
        temporary = TemporaryName::beside(path);
        reason = NamelessFile::giveName(::fileno(file), temporary);
    }
    if (std::fclose(std::exchange(file, nullptr)) != 0 && reason == 0)
        reason = errno;
    return reason;
}

int WholeFile::commit()
{
    if (close() != 0)
        return reason;
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

#include "toolkit/OpenFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

OpenFile::~OpenFile()
{
    if (isOpen())
        ::close(file);
}

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept
{
    OpenFile const before(std::exchange(file, other.release()));
    return *this;
}

OpenFile OpenFile::copy() const
{
    return OpenFile(::fcntl(file, F_DUPFD_CLOEXEC, 0));
}

FILE* OpenFile::intoStream(char const* mode)
{
    FILE* const stream = isOpen() ? ::fdopen(file, mode) : nullptr;
    if (stream != nullptr)
        release();
    return stream;
}

std::uint64_t OpenFile::size() const
{
    struct stat status = {};
    return ::fstat(file, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::optional<OpenFile::Identity> OpenFile::identity() const
{
    struct stat status = {};
    if (::fstat(file, &status) != 0)
        return std::nullopt;
    return Identity(status.st_dev, status.st_ino);
}

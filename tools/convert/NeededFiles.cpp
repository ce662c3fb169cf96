#include "convert/NeededFiles.h"

#include <ctime>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

std::int64_t nanoseconds(timespec const& time)
{
    constexpr std::int64_t second = 1'000'000'000;
    return time.tv_sec * second + time.tv_nsec;
}

/// By the clock with which the system marks changes of files, whatever the process takes for the time. The
/// begin of all times if nobody knows, so that every file counts as changed.
std::int64_t now()
{
    int const file = ::memfd_create("clock", MFD_CLOEXEC);
    struct stat status = {};
    bool const isKnown = file >= 0 && ::fstat(file, &status) == 0;
    if (file >= 0)
        ::close(file);
    return isKnown ? nanoseconds(status.st_ctim) : 0;
}

} // namespace

NeededFiles::NeededFiles() : begin(now()) {}

void NeededFiles::add(std::string const& path)
{
    struct stat status = {};
    if (!known.insert(path).second || ::stat(path.c_str(), &status) != 0)
        return;
    // Nobody can set this time back, as that of the last change of the contents.
    settled = settled && nanoseconds(status.st_ctim) < begin;
    if (S_ISREG(status.st_mode))
        list.push_back({path, {static_cast<std::uint64_t>(status.st_size), nanoseconds(status.st_mtim)}});
}

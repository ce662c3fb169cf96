#include "convert/FileStamp.h"

#include <sys/stat.h>

std::optional<FileStamp> FileStamp::of(std::string const& path)
{
    constexpr std::int64_t second = 1'000'000'000;
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileStamp{static_cast<std::uint64_t>(status.st_size),
                     status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

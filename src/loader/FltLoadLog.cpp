#include "loader/FltLoadLog.h"

#include "loader/FltLoadError.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <sys/stat.h>

namespace
{

using Kind = FltLoadError::Kind;

/// What each log begins with. One of a database that couldn't be read is empty.
constexpr std::string_view firstLine = "beginning of parsing\n";

/// Whether nothing stands at a path, or a log.
bool mayBeReplaced(std::string const& path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0 || (S_ISREG(status.st_mode) && status.st_size == 0))
        return true;
    if (!S_ISREG(status.st_mode))
        return false;
    std::string begin(firstLine.size(), '\0');
    std::ifstream(path, std::ios::binary).read(begin.data(), static_cast<std::streamsize>(begin.size()));
    return begin == firstLine;
}

} // namespace

FltLoadLog::FltLoadLog(std::optional<std::string> const& log, std::string const& database)
{
    if (!log) {
        redirect.emplace(nullptr);
        return;
    }
    path = log->empty() ? database + ".log" : *log;
    errno = 0;
    SideFile::Outcome outcome = SideFile::Outcome::refused;
    if (mayBeReplaced(path))
        outcome = stream.buffer.open(path.c_str(), database.c_str());
    if (outcome == SideFile::Outcome::refused)
        throw FltLoadError(
            Kind::refused, path,
            "no log is written, since what stands there is no log of this program. Choose another "
            "name for the log, or remove it.");
    if (outcome == SideFile::Outcome::failed)
        throw FltLoadError(Kind::refused, path,
                           std::string("the log can't be written: ") + std::strerror(errno) +
                               ". Check the directory and its permissions, or load without a log.");
    redirect.emplace(&stream);
}

bool FltLoadLog::close()
{
    redirect.reset();
    return path.empty() || stream.buffer.close();
}

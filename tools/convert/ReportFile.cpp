#include "convert/ReportFile.h"

#include "support/ToolError.h"

#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr int openFlags = O_RDWR | O_APPEND | O_CLOEXEC | O_NOCTTY;
constexpr mode_t permissions = 0666;

std::string cannotWrite(std::string const& path, int reason)
{
    return path + ": cannot write this report: " + std::strerror(reason) +
           ". Check the directory, its permissions and the space on the disk.";
}

/// Makes a file this process's. The processes that it starts have no part in that.
/// @return whether it is no other one's
bool lock(int file)
{
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return ::fcntl(file, F_SETLK, &whole) == 0;
}

/// @return the bytes that were written; all of them unless errno tells why not
std::size_t writeAll(int file, std::string const& text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        ssize_t const count = ::write(file, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR)
            break;
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return done;
}

} // namespace

ReportFile::ReportFile(std::string path, ReportRun run)
    : path(std::move(path)), run(std::move(run)),
      before([this](std::size_t database, ReportLine const&, ReportReader::Place const& place) {
          places.resize(std::max(places.size(), database + 1));
          places[database] = place;
      })
{
    open();
    bool const isWritten = read();
    std::string problem;
    if (!before.run() && isWritten)
        problem = "is there already, and is no report. Choose another name.";
    else if (!isSole && before.run() && !before.run()->isLike(this->run))
        problem = "another run writes this report, with other options. Choose another name, or wait for it.";
    if (problem.empty())
        return;
    ::close(std::exchange(file, -1));
    throw ToolError(this->path + ": " + problem, ExitCode::wrongUsage);
}

ReportFile::~ReportFile()
{
    if (file >= 0)
        ::close(file);
}

void ReportFile::open()
{
    do {
        if (file >= 0)
            ::close(file);
        file = ::open(path.c_str(), openFlags | O_CREAT, permissions);
        struct stat status = {};
        if (file >= 0 && ::fstat(file, &status) == 0 && !S_ISREG(status.st_mode)) {
            ::close(std::exchange(file, -1));
            errno = EINVAL;
        }
        if (file < 0)
            throw ToolError(cannotWrite(path, errno));
        isSole = lock(file);
    } while (!isStillThere());
}

/// Whether the open file is the one of that name: another run may have put a new one there.
bool ReportFile::isStillThere() const
{
    struct stat mine = {}, there = {};
    return ::fstat(file, &mine) == 0 && ::stat(path.c_str(), &there) == 0 && mine.st_dev == there.st_dev &&
           mine.st_ino == there.st_ino;
}

/// Reads what earlier runs have left. @return whether there is a line
bool ReportFile::read()
{
    bool hasLine = false;
    std::array<char, 65536> buffer{};
    off_t offset = 0;
    for (ssize_t count = 0; (count = ::pread(file, buffer.data(), buffer.size(), offset)) > 0;
         offset += count) {
        std::string_view const bytes(buffer.data(), static_cast<std::size_t>(count));
        hasLine = hasLine || bytes.find('\n') != std::string_view::npos;
        before.add(bytes);
    }
    before.end();
    return hasLine;
}

/// An earlier line as it stands; nothing if the file has become shorter.
std::string ReportFile::textOf(std::string const& input) const
{
    std::optional<std::size_t> const number = before.numberOf(input);
    if (!number)
        return "";
    ReportReader::Place const& place = places[*number];
    std::string text(place.size, '\0');
    ssize_t const count = ::pread(file, text.data(), text.size(), static_cast<off_t>(place.offset));
    return count == static_cast<ssize_t>(text.size()) ? text : "";
}

std::optional<ReportLine> ReportFile::earlierLine(std::string const& input) const
{
    return ReportLine::from(textOf(input));
}

/// Writes the first lines of a new report. @return whether all could be written
bool ReportFile::writeBegin(int next, std::vector<std::string> const& takenOver) const
{
    constexpr std::size_t block = 1 << 16;
    std::string text = run.text();
    for (std::string const& input : takenOver) {
        text += textOf(input);
        if (text.size() < block)
            continue;
        if (writeAll(next, text) != text.size())
            return false;
        text.clear();
    }
    return writeAll(next, text) == text.size();
}

void ReportFile::begin(std::vector<std::string> const& takenOver)
{
    if (!isSole) {
        append(run.text());
        return;
    }
    std::string const temporary = TemporaryName::beside(path);
    int const next = ::open(temporary.c_str(), openFlags | O_CREAT | O_EXCL, permissions);
    // Locked before it has its place, so that no other run takes it for nobody's.
    bool const isWhole = next >= 0 && lock(next) && writeBegin(next, takenOver) &&
                         ::rename(temporary.c_str(), path.c_str()) == 0;
    int const reason = errno;
    if (isWhole) {
        ::close(std::exchange(file, next));
        return;
    }
    if (next >= 0) {
        ::close(next);
        ::unlink(temporary.c_str());
    }
    fail(reason);
}

void ReportFile::add(ReportLine const& line)
{
    if (!isStillThere() && !isSole) {
        ::close(file);
        file = ::open(path.c_str(), openFlags);
    }
    append(line.text());
}

void ReportFile::append(std::string const& text)
{
    std::string const whole = isTorn ? "\n" + text : text;
    std::size_t const done = writeAll(file, whole);
    isTorn = done != whole.size() && (isTorn || done != 0);
    if (done != whole.size())
        fail(errno);
}

void ReportFile::fail(int reason)
{
    if (firstProblem.empty())
        firstProblem = cannotWrite(path, reason);
}

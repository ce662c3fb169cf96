#include "convert/ReportFile.h"

#include "support/ToolError.h"

#include "toolkit/TemporaryName.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
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

ReportFile::ReportFile(std::string path, ReportRun run) : path(std::move(path)), run(std::move(run))
{
    open();
    std::string const text = contents();
    before = Report::from(text);
    std::string problem;
    if (!before.run && text.find('\n') != std::string::npos)
        problem = "is there already, and is no report. Choose another name.";
    else if (!isSole && before.run && !before.run->isLike(this->run))
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

std::string ReportFile::contents() const
{
    std::string text;
    std::array<char, 65536> buffer{};
    for (ssize_t count = 0;
         (count = ::pread(file, buffer.data(), buffer.size(), static_cast<off_t>(text.size()))) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    return text;
}

void ReportFile::begin(std::vector<ReportLine> const& takenOver)
{
    if (!isSole) {
        append(run.text());
        return;
    }
    std::string text = run.text();
    for (ReportLine const& line : takenOver)
        text += line.text();
    std::string const temporary = TemporaryName::beside(path);
    int const next = ::open(temporary.c_str(), openFlags | O_CREAT | O_EXCL, permissions);
    // Locked before it has its place, so that no other run takes it for nobody's.
    bool const isWhole = next >= 0 && lock(next) && writeAll(next, text) == text.size() &&
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

#include "support/OutputFile.h"

#include "support/FileEnding.h"
#include "support/ToolError.h"

#include "toolkit/NamelessFile.h"
#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

/// Removes the file that is being written if a signal ends the program.
class SignalGuard
{
public:
    static void protect(std::string const& file)
    {
        installOnce();
        isSet = false;
        if (file.size() >= name.size())
            return;
        std::copy(file.c_str(), file.c_str() + file.size() + 1, name.begin());
        isSet = true;
    }
    static void release() { isSet = false; }

private:
    static constexpr int endings[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU};

    static void installOnce()
    {
        static bool installed = false;
        if (std::exchange(installed, true))
            return;
        for (int const number : endings) {
            struct sigaction before = {};
            ::sigaction(number, nullptr, &before);
            if (before.sa_handler != SIG_DFL)
                continue; // ignored, as under nohup, or somebody else's
            struct sigaction action = {};
            action.sa_handler = removeAndDie;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            ::sigaction(number, &action, nullptr);
        }
    }
    static void removeAndDie(int number)
    {
        if (isSet)
            ::unlink(name.data());
        ::raise(number);
    }

    static inline std::array<char, PATH_MAX> name{};
    static inline std::atomic<bool> isSet = false;
};

bool isSameFile(struct stat const& a, struct stat const& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool isStandardOutput(struct stat const& status)
{
    struct stat out = {};
    return ::fstat(STDOUT_FILENO, &out) == 0 && isSameFile(out, status);
}

void refuseKept(std::string const& path, struct stat const& status, std::vector<KeptFile> const& kept)
{
    for (KeptFile const& file : kept) {
        struct stat other = {};
        if (::stat(file.path.c_str(), &other) == 0 && isSameFile(other, status))
            throw ToolError(path + ": the output would replace " + file.what +
                                ". Choose another name for it.",
                            ExitCode::wrongUsage);
    }
}

/// The file that a name leads to over links, which need not be there.
std::string behindLinks(std::string const& path)
{
    constexpr int mostLinks = 40;
    std::filesystem::path file = path;
    std::error_code problem;
    for (int i = 0; i < mostLinks && std::filesystem::is_symlink(file, problem); ++i) {
        std::filesystem::path const next = std::filesystem::read_symlink(file, problem);
        if (problem)
            break;
        file = file.parent_path() / next;
    }
    return file.string();
}

std::string keptText(std::string const& path)
{
    return path + ": this file is there already, and --no-clobber keeps it. Choose another name.";
}

mode_t permissionsOfNewFiles()
{
    mode_t const mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

OutputFile::OutputFile(std::string path, std::vector<KeptFile> const& kept, Existing existing)
    : existing(existing), path(std::move(path))
{
    struct stat status = {};
    if (this->path == "-") {
        if (::fstat(STDOUT_FILENO, &status) == 0)
            refuseKept("standard output", status, kept);
        file = stdout;
        return;
    }
    bool const isThere = ::stat(this->path.c_str(), &status) == 0;
    if (isThere)
        refuseKept(this->path, status, kept);
    if (isThere && isStandardOutput(status)) {
        file = stdout; // as with /dev/stdout
        return;
    }
    if (isThere && S_ISDIR(status.st_mode))
        fail(EISDIR);
    if (isThere && !S_ISREG(status.st_mode)) {
        openStream();
        return;
    }
    if (isThere && existing == Existing::keep)
        fail(EEXIST);
    if (isThere && ::access(this->path.c_str(), W_OK) != 0)
        fail(errno);
    target = behindLinks(this->path);
    openTemporary(isThere ? status.st_mode & 0777 : permissionsOfNewFiles());
}

OutputFile::~OutputFile()
{
    discard();
}

void OutputFile::openStream()
{
    int const descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        fail(errno);
    file = ::fdopen(descriptor, "wb");
    if (file == nullptr) {
        int const reason = errno;
        ::close(descriptor);
        fail(reason);
    }
}

void OutputFile::openTemporary(mode_t permissions)
{
    int descriptor = NamelessFile::open(target);
    if (descriptor < 0) {
        temporary = TemporaryName::beside(target);
        SignalGuard::protect(temporary);
        descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    }
    if (descriptor < 0)
        discardAndFail(errno);
    if (::fchmod(descriptor, permissions) == 0)
        file = ::fdopen(descriptor, "wb");
    if (file == nullptr) {
        int const reason = errno;
        ::close(descriptor);
        discardAndFail(reason);
    }
}

/// Gives the file its place. @return 0, or the error number
int OutputFile::takePlace()
{
    if (temporary.empty()) {
        temporary = TemporaryName::beside(target);
        SignalGuard::protect(temporary);
        if (int const reason = NamelessFile::giveName(::fileno(file), temporary); reason != 0)
            return reason;
    }
    int const reason = std::fclose(std::exchange(file, nullptr)) != 0 ? errno : 0;
    return reason == 0 ? rename() : reason;
}

/// Gives the whole file the name of the target. @return 0, or the error number
int OutputFile::rename() const
{
    if (existing == Existing::replace)
        return std::rename(temporary.c_str(), target.c_str()) != 0 ? errno : 0;
    if (::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    bool const isUnknownHere = errno == EINVAL || errno == ENOSYS; // to the file system, or the kernel
    if (!isUnknownHere)
        return errno;
    if (::link(temporary.c_str(), target.c_str()) != 0)
        return errno;
    ::unlink(temporary.c_str());
    return 0;
}

bool OutputFile::isStream(std::string const& path)
{
    struct stat status = {};
    return path == "-" ||
           (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode));
}

std::string OutputFile::problemOfReplacing(std::string const& path)
{
    struct stat status = {};
    bool const isFile = path != "-" && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile && !isStandardOutput(status) ? keptText(path) : "";
}

bool OutputFile::isTerminal() const
{
    return file != nullptr && ::isatty(::fileno(file)) != 0;
}

int OutputFile::flush(FILE* file)
{
    bool const isBroken = std::ferror(file) != 0;
    errno = 0;
    if (std::fflush(file) == 0 && !isBroken)
        return 0;
    // A stream that broke earlier doesn't know why. The output is lost, so another byte does no harm.
    if (errno == 0 && ::write(::fileno(file), "", 1) == 1)
        errno = EIO;
    return errno;
}

void OutputFile::commit()
{
    int reason = flush(file);
    if (reason == 0 && !target.empty())
        reason = takePlace();
    else if (file != stdout && std::fclose(std::exchange(file, nullptr)) != 0 && reason == 0)
        reason = errno;
    if (reason != 0)
        discardAndFail(reason);
    temporary.clear();
    SignalGuard::release();
}

void OutputFile::discard()
{
    if (file != nullptr && file != stdout)
        std::fclose(file);
    file = nullptr;
    if (temporary.empty())
        return;
    std::remove(temporary.c_str());
    temporary.clear();
    SignalGuard::release();
}

void OutputFile::discardAndFail(int reason)
{
    discard();
    fail(reason);
}

void OutputFile::fail(int reason) const
{
    if (reason == EEXIST && existing == Existing::keep)
        throw ToolError(keptText(path));
    throw ToolError((path == "-" ? "standard output" : path) + ": cannot write: " + std::strerror(reason) +
                    ". Check the directory, its permissions and the space on the disk.");
}

void OutputFile::checkEnding(std::string const& path, std::vector<std::string_view> const& endings)
{
    struct stat status = {};
    if (path == "-" || (::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)))
        return;
    std::string const ending = FileEnding::of(path);
    std::string known;
    for (std::string_view const one : endings) {
        if (ending == one)
            return;
        known += (known.empty() ? "" : " or ") + std::string(one);
    }
    throw ToolError(path + ": this program can't write such a file. Choose a name that ends in " + known +
                        ".",
                    ExitCode::wrongUsage);
}

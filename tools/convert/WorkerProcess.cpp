#include "convert/WorkerProcess.h"

#include "support/ToolError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr std::size_t mostErrorText = 64 << 10;

/// Reads once. @return the bytes; -1 for "try again later", 0 at the end of the stream
ssize_t readSome(int stream, std::array<char, 65536>& buffer)
{
    ssize_t count = -1;
    do
        count = ::read(stream, buffer.data(), buffer.size());
    while (count < 0 && errno == EINTR);
    if (count < 0 && errno != EAGAIN)
        return 0; // as a child does that died with something unread
    return count;
}

/// Writes all of a text. @return false if nobody reads it any more
bool writeAll(int socket, std::string const& text)
{
    for (std::size_t done = 0; done < text.size();) {
        ssize_t const count = ::send(socket, text.data() + done, text.size() - done, MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR)
            return false;
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

[[noreturn]] void failToStart()
{
    throw ToolError(std::string("cannot start another process: ") + std::strerror(errno) +
                    ". End other programs, or give a smaller number to --jobs.");
}

/// Ends this process when its parent does.
void endWithParent(pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent)
        ::_exit(1);
}

} // namespace

WorkerProcess::WorkerProcess(Work const& work, std::vector<int> const& others)
{
    int sockets[2];
    int pipe[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0)
        failToStart();
    if (::pipe2(pipe, O_CLOEXEC) != 0) {
        ::close(sockets[0]);
        ::close(sockets[1]);
        failToStart();
    }
    pid_t const parent = ::getpid();
    process = ::fork();
    if (process == 0) {
        endWithParent(parent);
        for (int const other : others)
            ::close(other);
        ::close(sockets[0]);
        ::close(pipe[0]);
        ::dup2(pipe[1], STDERR_FILENO);
        ::close(pipe[1]);
        serve(sockets[1], work);
    }
    int const reason = errno;
    ::close(sockets[1]);
    ::close(pipe[1]);
    socket = sockets[0];
    errors = pipe[0];
    ::fcntl(errors, F_SETFL, O_NONBLOCK);
    if (process < 0) {
        ::close(socket);
        ::close(errors);
        errno = reason;
        failToStart();
    }
}

WorkerProcess::~WorkerProcess()
{
    ::close(socket);
    ::close(errors);
    if (process > 0)
        ::waitpid(process, nullptr, 0);
}

void WorkerProcess::serve(int socket, Work const& work)
{
    std::array<char, 65536> buffer{};
    std::string arrived;
    for (ssize_t count = 0; (count = readSome(socket, buffer)) > 0;) {
        arrived.append(buffer.data(), static_cast<std::size_t>(count));
        while (std::optional<WorkerMessage> const request = WorkerMessage::takeFrom(arrived)) {
            auto const tell = [socket](std::string const& note) {
                writeAll(socket, WorkerMessage{WorkerMessage::Kind::note, {note}}.bytes());
            };
            WorkerMessage const reply{WorkerMessage::Kind::reply, work(request->fields, tell)};
            if (!writeAll(socket, reply.bytes()))
                ::_exit(1);
        }
    }
    ::_exit(0);
}

void WorkerProcess::send(std::vector<std::string> const& request) const
{
    writeAll(socket, WorkerMessage{WorkerMessage::Kind::request, request}.bytes());
}

bool WorkerProcess::receive()
{
    std::array<char, 65536> buffer{};
    ssize_t count = -1;
    do
        count = ::recv(socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
    while (count < 0 && errno == EINTR);
    if (count > 0)
        arrived.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && errno == EAGAIN);
}

std::string WorkerProcess::howItEnded()
{
    int status = 0;
    ::waitpid(std::exchange(process, -1), &status, 0);
    if (WIFSIGNALED(status)) {
        int const signal = WTERMSIG(status);
        return "signal " + std::to_string(signal) + " (" + ::strsignal(signal) + ")";
    }
    return "exit code " + std::to_string(WEXITSTATUS(status));
}

void WorkerProcess::receiveErrors()
{
    std::array<char, 65536> buffer{};
    for (ssize_t count = 0; (count = readSome(errors, buffer)) > 0;) {
        std::size_t const kept = std::min(static_cast<std::size_t>(count), mostErrorText - errorText.size());
        errorText.append(buffer.data(), kept);
        hasMoreErrors = hasMoreErrors || kept < static_cast<std::size_t>(count);
    }
}

std::string WorkerProcess::takeErrors()
{
    receiveErrors();
    std::string text = std::exchange(errorText, {});
    if (std::exchange(hasMoreErrors, false))
        text += "... and more\n";
    return text;
}

#include "robustness/MeasuredConversion.h"

#include "support/ConvertedScene.h"
#include "support/ProcessUsage.h"
#include "support/SmallVertexPalettes.h"
#include "support/Text.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <malloc.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
extern "C" int __lsan_do_recoverable_leak_check();
#endif

namespace
{

[[noreturn]] void fail(std::string const& what)
{
    throw std::runtime_error("a conversion in a process of its own: " + what);
}

/// What the process hands over, in front of the messages.
struct Figures {
    int result;
    std::size_t logSize;
    std::size_t memory;
};

void put(int pipe, char const* bytes, std::size_t size)
{
    while (size > 0) {
        ssize_t const written = ::write(pipe, bytes, size);
        if (written < 0)
            fail("its results can't be handed over");
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
}

std::string takeAll(int pipe)
{
    std::string taken;
    char block[65536];
    for (ssize_t size; (size = ::read(pipe, block, sizeof block)) > 0;)
        taken.append(block, static_cast<std::size_t>(size));
    return taken;
}

bool hasLeaks()
{
#ifdef __SANITIZE_ADDRESS__
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}

void convertInto(int pipe, std::string const& bytes)
{
    SmallVertexPalettes const small(1000);
    std::size_t const before = ProcessUsage::peakMemory();
    std::string messages;
    Figures figures{};
    {
        ConvertedScene const scene(bytes, "nowhere/large.flt", CaptureBuffer::nothing);
        messages = scene.messages;
        figures.result = scene.result;
        figures.logSize = scene.logSize;
    }
    figures.memory = ProcessUsage::peakMemory() - before;
    put(pipe, reinterpret_cast<char const*>(&figures), sizeof figures);
    put(pipe, messages.data(), messages.size());
}

[[noreturn]] void runChild(int pipe, std::string const& bytes)
{
    try {
        convertInto(pipe, bytes);
        _exit(hasLeaks() ? 2 : 0);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        _exit(1);
    }
}

} // namespace

MeasuredConversion::MeasuredConversion(std::string const& bytes)
{
    int ends[2];
    if (::pipe(ends) != 0)
        fail("it gets no pipe");
    std::fflush(nullptr);
    malloc_trim(0); // what this process doesn't need any more the child doesn't begin with
    pid_t const child = ::fork();
    if (child < 0)
        fail("it can't be started");
    if (child == 0)
        runChild(ends[1], bytes);
    ::close(ends[1]);
    std::string const taken = takeAll(ends[0]);
    ::close(ends[0]);
    int status = 0;
    if (::waitpid(child, &status, 0) != child)
        fail("it is lost");
    if (WIFSIGNALED(status))
        fail(std::string("it was ended by the signal ") + strsignal(WTERMSIG(status)));
    if (WEXITSTATUS(status) != 0)
        fail(WEXITSTATUS(status) == 2 ? "it leaves leaks" : "it failed");
    Figures figures{};
    if (taken.size() < sizeof figures)
        fail("its results are missing");
    std::memcpy(&figures, taken.data(), sizeof figures);
    result = figures.result;
    logSize = figures.logSize;
    memory = figures.memory;
    messages = taken.substr(sizeof figures);
}

int MeasuredConversion::countMessages(std::string const& text) const
{
    return countOf(messages, text);
}

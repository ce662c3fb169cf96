#include "shot/Ceilings.h"

#include "support/ExitCode.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <fstream>
#include <unistd.h>

namespace
{

/// Bytes for a handler that writes a line and ends the process.
constexpr std::size_t signalStackSize = std::size_t(64) << 10;

/// What to say when something runs out: a signal handler can't make it then.
class LastWords
{
public:
    void set(std::string const& text)
    {
        length = std::min(text.size(), words.size());
        std::copy_n(text.begin(), length, words.begin());
    }

    [[noreturn]] void sayAndEnd() const
    {
        static_cast<void>(!::write(STDERR_FILENO, words.data(), length));
        ::_exit(static_cast<int>(ExitCode::failed));
    }

private:
    std::array<char, 4096> words{};
    std::size_t length = 0;
};

LastWords outOfTime;
LastWords outOfMemory;

constexpr int timeSignals[] = {SIGALRM, SIGXCPU};

/// What libraries end in that don't look whether they get the memory they ask for.
constexpr int memorySignals[] = {SIGSEGV, SIGBUS, SIGABRT};

void endForTime(int)
{
    outOfTime.sayAndEnd();
}

void endForMemory(int)
{
    outOfMemory.sayAndEnd();
}

/// Sets what a signal does, unless something else takes care of it already.
void handle(int number, void (*handler)(int))
{
    struct sigaction before = {};
    ::sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_DFL)
        return;
    struct sigaction ours = {};
    ours.sa_handler = handler;
    ours.sa_flags = SA_ONSTACK;
    ::sigaction(number, &ours, nullptr);
}

void handleNoMore(int number, void (*handler)(int))
{
    struct sigaction before = {};
    ::sigaction(number, nullptr, &before);
    if (before.sa_handler == handler)
        std::signal(number, SIG_DFL);
}

/// Bytes of the process's address space.
std::uint64_t memoryInUse()
{
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

/// Seconds of processor time so far, the last one counted as a whole.
std::uint64_t processorSecondsUsed()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + 1);
}

/// Lowers a limit of the process. @return what it was
template <class Resource>
rlimit lower(Resource resource, std::uint64_t most)
{
    rlimit before = {};
    ::getrlimit(resource, &before);
    rlimit after = before;
    after.rlim_cur = std::min<rlim_t>(before.rlim_cur, most);
    ::setrlimit(resource, &after);
    return before;
}

} // namespace

Ceilings::Ceilings(Limits const& limits, std::string const& who) : signalStack(signalStackSize)
{
    stack_t ours = {};
    ours.ss_sp = signalStack.data();
    ours.ss_size = signalStack.size();
    ::sigaltstack(&ours, &stackBefore);
    outOfTime.set(who + ": takes too long, and is left out.\n");
    outOfMemory.set(who + ": needs more memory than it may have, and is left out.\n");
    for (int const number : timeSignals)
        handle(number, endForTime);
    for (int const number : memorySignals)
        handle(number, endForMemory);
    processorBefore = lower(RLIMIT_CPU, processorSecondsUsed() + limits.processorSeconds);
    memoryBefore = lower(RLIMIT_AS, memoryInUse() + limits.bytes);
    ::alarm(limits.seconds);
}

Ceilings::~Ceilings()
{
    ::alarm(0);
    ::setrlimit(RLIMIT_CPU, &processorBefore);
    ::setrlimit(RLIMIT_AS, &memoryBefore);
    for (int const number : timeSignals)
        handleNoMore(number, endForTime);
    for (int const number : memorySignals)
        handleNoMore(number, endForMemory);
    ::sigaltstack(&stackBefore, nullptr);
}

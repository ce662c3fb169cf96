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

/// What to say when time runs out: a signal handler can't make it then.
std::array<char, 4096> message{};
std::size_t messageLength = 0;

void sayAndEnd(int)
{
    static_cast<void>(!::write(STDERR_FILENO, message.data(), messageLength));
    ::_exit(static_cast<int>(ExitCode::failed));
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

Ceilings::Ceilings(Limits const& limits, std::string const& who)
{
    std::string const text = who + ": takes too long, and is left out.\n";
    messageLength = std::min(text.size(), message.size());
    std::copy_n(text.begin(), messageLength, message.begin());
    std::signal(SIGALRM, sayAndEnd);
    std::signal(SIGXCPU, sayAndEnd);
    processorBefore = lower(RLIMIT_CPU, processorSecondsUsed() + limits.processorSeconds);
    memoryBefore = lower(RLIMIT_AS, memoryInUse() + limits.bytes);
    ::alarm(limits.seconds);
}

Ceilings::~Ceilings()
{
    ::alarm(0);
    ::setrlimit(RLIMIT_CPU, &processorBefore);
    ::setrlimit(RLIMIT_AS, &memoryBefore);
    std::signal(SIGALRM, SIG_DFL);
    std::signal(SIGXCPU, SIG_DFL);
}

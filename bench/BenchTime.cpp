#include "BenchTime.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

double secondsOf(timeval const& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

double cpuOf(rusage const& usage)
{
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

double memoryOf(rusage const& usage)
{
    return static_cast<double>(usage.ru_maxrss) * 1024.0;
}

rusage usageSoFar()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

[[noreturn]] void fail(char const* what)
{
    std::fprintf(stderr, "bench: %s\n", what);
    std::exit(1);
}

/// Runs the steps and sends what each took; ends the process.
[[noreturn]] void runSteps(std::vector<BenchTime::Work> const& steps, int target)
{
    try {
        for (BenchTime::Work const& step : steps) {
            BenchTime const time = BenchTime::of(step);
            if (write(target, &time, sizeof time) != sizeof time)
                _exit(1);
        }
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "bench: %s\n", problem.what());
        _exit(1);
    }
    _exit(0);
}

} // namespace

BenchTime BenchTime::best(BenchTime const& a, BenchTime const& b)
{
    return {std::min(a.wall, b.wall), std::min(a.cpu, b.cpu), std::min(a.peakMemory, b.peakMemory)};
}

BenchTime BenchTime::of(std::function<void()> const& work)
{
    rusage const before = usageSoFar();
    Clock::time_point const begin = Clock::now();
    work();
    double const wall = secondsSince(begin);
    rusage const after = usageSoFar();
    return {wall, cpuOf(after) - cpuOf(before), memoryOf(after)};
}

BenchTime BenchTime::apart(int runs, Work const& work)
{
    BenchTime time = stepsApart({work}).front();
    for (int run = 1; run < runs; ++run)
        time = best(time, stepsApart({work}).front());
    return time;
}

std::vector<BenchTime> BenchTime::stepsApart(std::vector<Work> const& steps)
{
    int ends[2];
    if (pipe(ends) != 0)
        fail("cannot make a pipe");
    std::fflush(nullptr);
    pid_t const child = fork();
    if (child < 0)
        fail("cannot start a process");
    if (child == 0)
        runSteps(steps, ends[1]);
    close(ends[1]);
    std::vector<BenchTime> times(steps.size());
    double cpu = 0;
    bool received = true;
    for (BenchTime& time : times) {
        received = received && read(ends[0], &time, sizeof time) == sizeof time;
        cpu += time.cpu;
    }
    close(ends[0]);
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0 || !received)
        fail("the work of a run failed");
    times.push_back({0, std::max(cpuOf(usage) - cpu, 0.0), memoryOf(usage)});
    return times;
}

BenchTime BenchTime::ofCommand(int runs, std::string const& command)
{
    auto const run = [&command] {
        rusage before{};
        rusage after{};
        getrusage(RUSAGE_CHILDREN, &before);
        Clock::time_point const begin = Clock::now();
        if (std::system(command.c_str()) != 0)
            fail("a command failed");
        double const wall = secondsSince(begin);
        getrusage(RUSAGE_CHILDREN, &after);
        return BenchTime{wall, cpuOf(after) - cpuOf(before), memoryOf(after)};
    };
    BenchTime time = run();
    for (int i = 1; i < runs; ++i)
        time = best(time, run());
    return time;
}

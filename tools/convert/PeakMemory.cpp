#include "convert/PeakMemory.h"

#include <fstream>
#include <string>
#include <sys/resource.h>

void PeakMemory::reset()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

std::uint64_t PeakMemory::bytes()
{
    constexpr std::uint64_t unit = 1024;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (std::uint64_t kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes * unit;
    struct rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::uint64_t>(usage.ru_maxrss) * unit;
}

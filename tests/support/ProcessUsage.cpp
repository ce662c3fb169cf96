#include "support/ProcessUsage.h"

#include <cstdio>
#include <filesystem>
#include <iterator>
#include <malloc.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

std::size_t ProcessUsage::memoryInUse()
{
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    malloc_trim(0);
    char const* const name = "/proc/self/statm";
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(name, "r"), std::fclose);
    std::size_t pages = 0;
    if (file == nullptr || std::fscanf(file.get(), "%*u %zu", &pages) != 1 || pages == 0)
        throw std::runtime_error(std::string(name) + " doesn't tell the memory in use");
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
#endif
}

std::size_t ProcessUsage::peakMemory()
{
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0 || usage.ru_maxrss <= 0)
        throw std::runtime_error("the system doesn't tell the most memory that was in use");
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

double ProcessUsage::processorSeconds()
{
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) != 0)
        throw std::runtime_error("the system doesn't tell the processor time");
    auto const seconds = [](timeval const& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

std::size_t ProcessUsage::openFiles()
{
    namespace fs = std::filesystem;
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

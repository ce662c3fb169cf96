#pragma once

// Included before everything else in a build of "./dev mutants". There each changed place of the sources is
// (velloMutant(17) ? changed : unchanged), and the environment says which change is switched on.

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

class VelloMutants
{
public:
    static bool isOn(int number)
    {
        static VelloMutants const mutants;
        if (mutants.reached != nullptr && number < mutants.count)
            mutants.reached[number] = 1;
        return number == mutants.chosen;
    }

private:
    VelloMutants()
    {
        if (char const* const text = std::getenv("VELLOREADER_MUTANT"))
            chosen = std::atoi(text);
        // A byte for each place. What is mapped outlives a process that is killed.
        char const* const file = std::getenv("VELLOREADER_MUTANTS_REACHED");
        int const descriptor = file != nullptr ? ::open(file, O_RDWR | O_CLOEXEC) : -1;
        struct stat status = {};
        if (descriptor < 0 || ::fstat(descriptor, &status) != 0)
            return;
        void* const bytes = ::mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ | PROT_WRITE,
                                   MAP_SHARED, descriptor, 0);
        ::close(descriptor);
        if (bytes == MAP_FAILED)
            return;
        reached = static_cast<char*>(bytes);
        count = static_cast<int>(status.st_size);
    }

    int chosen = -1;
    char* reached = nullptr;
    int count = 0;
};

/// Whether a change is switched on. Never where the compiler computes a constant.
constexpr bool velloMutant(int number)
{
    return !__builtin_is_constant_evaluated() && VelloMutants::isOn(number);
}

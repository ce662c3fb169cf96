#include "shot/Ceilings.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

constexpr Ceilings::Limits wide = {100, 100, std::uint64_t{1} << 30};

/// Whether the process may have so much more memory.
bool canMap(std::size_t bytes)
{
    void* const place = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED)
        return false;
    ::munmap(place, bytes);
    return true;
}

void work()
{
    for (volatile unsigned i = 0;; i = i + 1) {
    }
}

/// Goes down until the stack is used up.
unsigned descend(unsigned level)
{
    volatile char frame[4096];
    frame[level % sizeof frame] = static_cast<char>(level);
    return level == 0xffffffff ? 0 : descend(level + 1) + static_cast<unsigned>(frame[level % sizeof frame]);
}

} // namespace

TEST(Ceilings, endWorkThatTakesTooMuchProcessorTime)
{
    EXPECT_EXIT(
        {
            Ceilings::Limits limits = wide;
            limits.processorSeconds = 0;
            Ceilings const ceilings(limits, "fltshot: town.flt");
            work();
        },
        testing::ExitedWithCode(1), "^fltshot: town.flt: takes too long, and is left out.\n$");
}

TEST(Ceilings, endWorkThatWaits)
{
    EXPECT_EXIT(
        {
            Ceilings::Limits limits = wide;
            limits.seconds = 1;
            Ceilings const ceilings(limits, "fltshot: town.flt");
            ::pause();
        },
        testing::ExitedWithCode(1), "takes too long");
}

TEST(Ceilings, endWorkOfLibrariesThatDoNotSurviveWithoutMemory)
{
    EXPECT_EXIT(
        {
            std::signal(SIGABRT, SIG_DFL);
            Ceilings const ceilings(wide, "fltshot: town.flt");
            std::abort();
        },
        testing::ExitedWithCode(1),
        "^fltshot: town.flt: needs more memory than it may have, and is left out.\n$");
}

TEST(Ceilings, speakEvenWhenTheStackIsUsedUp)
{
    EXPECT_EXIT(
        {
            std::signal(SIGSEGV, SIG_DFL);
            Ceilings const ceilings(wide, "fltshot: town.flt");
            ::_exit(descend(1) == 0 ? 0 : 2);
        },
        testing::ExitedWithCode(1), "^fltshot: town.flt: needs more memory than it may have");
}

TEST(Ceilings, refuseMoreMemoryWhileTheyHold)
{
    {
        Ceilings const ceilings(wide, "fltshot");
        EXPECT_FALSE(canMap(std::size_t{2} << 30));
        EXPECT_TRUE(canMap(std::size_t{1} << 20));
    }
    EXPECT_TRUE(canMap(std::size_t{2} << 30));
}

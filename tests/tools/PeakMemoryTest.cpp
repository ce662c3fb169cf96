#include "convert/PeakMemory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

TEST(PeakMemory, countsFromTheLastReset)
{
    // From the system itself: what allocators get back they may keep.
    constexpr std::size_t size = 64 << 20;
    void* const large =
        ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    ASSERT_NE(large, MAP_FAILED);
    ASSERT_EQ(::munmap(large, size), 0);
    std::uint64_t const before = PeakMemory::bytes();
    EXPECT_GE(before, size);
    PeakMemory::reset();
    EXPECT_LT(PeakMemory::bytes(), before - size / 2);
    EXPECT_GT(PeakMemory::bytes(), 0U);
}

#include "convert/PeakMemory.h"

#include <gtest/gtest.h>
#include <vector>

TEST(PeakMemory, countsFromTheLastReset)
{
    constexpr std::size_t size = 64 << 20;
    {
        std::vector<char> const large(size, 'x');
        EXPECT_GE(PeakMemory::bytes(), large.size());
    }
    std::uint64_t const before = PeakMemory::bytes();
    PeakMemory::reset();
    EXPECT_LE(PeakMemory::bytes(), before);
    EXPECT_GT(PeakMemory::bytes(), 0U);
}

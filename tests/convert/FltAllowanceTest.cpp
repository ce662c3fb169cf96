#include "convert/FltAllowance.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltAllowanceTest, TheLimitItselfMayBeSpent)
{
    FltAllowance allowance({10, 3});
    EXPECT_TRUE(allowance.spend(4));
    EXPECT_TRUE(allowance.spend(6));
    EXPECT_FALSE(allowance.isExceeded());
}

TEST(FltAllowanceTest, OneMoreExceedsItForGood)
{
    FltAllowance allowance({10, 3});
    EXPECT_FALSE(allowance.spend(11));
    EXPECT_TRUE(allowance.isExceeded());
    EXPECT_FALSE(allowance.spend(0));
}

TEST(FltAllowanceTest, ItGrowsWithTheBytesThatAreRead)
{
    FltAllowance allowance({10, 3});
    allowance.growBy(5);
    EXPECT_EQ(allowance.getLimit(), 25);
    EXPECT_TRUE(allowance.spend(25));
    EXPECT_FALSE(allowance.spend(1));
    allowance.growBy(1);
    EXPECT_TRUE(allowance.spend(2));
}

} // namespace

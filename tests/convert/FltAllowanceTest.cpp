#include "convert/FltAllowance.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltAllowanceTest, TheLimitItselfMayBeSpent)
{
    FltAllowance allowance(10);
    EXPECT_TRUE(allowance.spend(4));
    EXPECT_TRUE(allowance.spend(6));
    EXPECT_FALSE(allowance.isExceeded());
}

TEST(FltAllowanceTest, OneMoreExceedsItForGood)
{
    FltAllowance allowance(10);
    EXPECT_FALSE(allowance.spend(11));
    EXPECT_TRUE(allowance.isExceeded());
    EXPECT_FALSE(allowance.spend(0));
}

} // namespace

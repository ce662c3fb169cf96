#include "support/ProgressLine.h"

#include <gtest/gtest.h>

TEST(ProgressLine, saysHowLongTheRestTakesWhenAPartIsDone)
{
    EXPECT_EQ(ProgressLine::timeLeft(10, 0.5), "about 0:10 left");
    EXPECT_EQ(ProgressLine::timeLeft(60, 0.25), "about 3:00 left");
    EXPECT_EQ(ProgressLine::timeLeft(3600, 0.5), "about 1:00:00 left");
    EXPECT_EQ(ProgressLine::timeLeft(3, 1), "about 0:00 left");
}

TEST(ProgressLine, saysNothingAsLongAsNobodyCanKnow)
{
    EXPECT_EQ(ProgressLine::timeLeft(10, 0), "");
    EXPECT_EQ(ProgressLine::timeLeft(10, 1e-9), "");
}

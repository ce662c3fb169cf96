#include "records/FltUnits.h"

#include <gtest/gtest.h>

TEST(FltUnits, AreTheLengthsThatTheirNumbersStandFor)
{
    EXPECT_EQ(FltUnits::metresIn(0), 1);
    EXPECT_EQ(FltUnits::metresIn(1), 1000);
    EXPECT_EQ(FltUnits::metresIn(4), 0.3048);
    EXPECT_EQ(FltUnits::metresIn(5), 0.0254);
    EXPECT_EQ(FltUnits::metresIn(8), 1852);
}

TEST(FltUnits, NumbersThatStandForNoneCountAsMetres)
{
    for (std::size_t const unit : {2, 3, 6, 7, 9, 255})
        EXPECT_EQ(FltUnits::metresIn(unit), 1) << unit;
}

#include "records/FltSummedVertexOffsets.h"

#include <gtest/gtest.h>

TEST(FltSummedVertexOffsets, AddUpTheLengthsOfVerticesAfterTheHead)
{
    FltSummedVertexOffsets offsets;
    EXPECT_EQ(offsets.next(40), 8U);
    EXPECT_EQ(offsets.next(56), 48U);
    EXPECT_EQ(offsets.next(40), 104U);
}

#include "records/FltRowIndex.h"

#include <gtest/gtest.h>

namespace
{

struct Row {
    int opcode;
    char name;
};

constexpr Row rows[] = {{2, 'a'}, {3, 'b'}, {7, 'c'}};
using Index = FltRowIndex<7, Row, 3>;
constexpr Index rowIndex(rows);

static_assert(rowIndex.find(3) == &rows[1]);

TEST(FltRowIndex, findsTheRowOfAnOpcode)
{
    EXPECT_EQ(rowIndex.find(2), &rows[0]);
    EXPECT_EQ(rowIndex.find(7), &rows[2]);
    for (int const opcode : {-1, 0, 1, 4, 6, 8, 70000})
        EXPECT_EQ(rowIndex.find(opcode), nullptr) << opcode;
}

TEST(FltRowIndex, tellsWhereARowStands)
{
    EXPECT_EQ(rowIndex.positionOf(2), 0);
    EXPECT_EQ(rowIndex.positionOf(7), 2);
    for (int const opcode : {-1, 0, 4, 8, 70000})
        EXPECT_LT(rowIndex.positionOf(opcode), 0) << opcode;
}

TEST(FltRowIndex, tellsWhetherRowsStandInTheirOrder)
{
    EXPECT_TRUE(Index::isInOrder(rows));
    EXPECT_FALSE(Index::isInOrder({{2, 'a'}, {2, 'b'}, {7, 'c'}}));
    EXPECT_FALSE(Index::isInOrder({{3, 'a'}, {2, 'b'}, {7, 'c'}}));
    EXPECT_FALSE(Index::isInOrder({{2, 'a'}, {3, 'b'}, {8, 'c'}}));
    EXPECT_FALSE(Index::isInOrder({{0, 'a'}, {3, 'b'}, {7, 'c'}}));
}

} // namespace

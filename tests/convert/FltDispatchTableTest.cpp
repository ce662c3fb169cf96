#include "convert/FltDispatchTable.h"

#include <climits>
#include <gtest/gtest.h>

namespace
{

using Handler = int (*)();
using Table = FltDispatchTable<Handler>;

int one()
{
    return 1;
}

int two()
{
    return 2;
}

constexpr Table table({{FltOpcode::header, one}, {FltOpcode::namePalette, two}});

TEST(FltDispatchTableTest, FindsTheHandlerOfAnOpcode)
{
    ASSERT_NE(table.find(1), nullptr);
    EXPECT_EQ(table.find(1)(), 1);
    ASSERT_NE(table.find(114), nullptr);
    EXPECT_EQ(table.find(114)(), 2);
}

TEST(FltDispatchTableTest, AnyOtherNumberHasNone)
{
    for (int const opcode : {INT_MIN, -1, 0, 2, 113, 115, 65535, INT_MAX})
        EXPECT_EQ(table.find(opcode), nullptr) << opcode;
}

TEST(FltDispatchTableTest, RowsOutOfOrderTwiceOrBeyondTheLastOpcodeAreRefused)
{
    EXPECT_THROW(Table({{5, one}, {4, two}}), std::logic_error);
    EXPECT_THROW(Table({{5, one}, {5, two}}), std::logic_error);
    EXPECT_THROW(Table({{FltOpcode::last + 1, one}}), std::logic_error);
    EXPECT_THROW(Table({{0, one}}), std::logic_error);
}

} // namespace

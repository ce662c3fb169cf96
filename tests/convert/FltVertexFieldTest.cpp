#include "convert/FltVertexField.h"

#include <Inventor/fields/SoMFInt32.h>
#include <cstdint>
#include <gtest/gtest.h>

namespace
{

class FltVertexFieldTest : public testing::Test
{
protected:
    FltVertexFieldTest() { values.setField(field); }

    std::vector<std::int32_t> shown()
    {
        values.show();
        return {field.getValues(0), field.getValues(0) + field.getNum()};
    }

    SoMFInt32 field;
    FltVertexField<SoMFInt32, std::int32_t> values{0};
};

} // namespace

TEST_F(FltVertexFieldTest, TakesNothingBeyondItsSize)
{
    values.setNum(2);
    for (int i = 0; i < 4; ++i)
        values.set(i, 5 + i);
    EXPECT_EQ(values.find(2), nullptr);
    values.setNum(4);
    EXPECT_EQ(shown(), (std::vector<std::int32_t>{5, 6, 0, 0})) << "what is new in it is zero";
    values.set(3, 9);
    values.set(4, 9);
    EXPECT_EQ(shown(), (std::vector<std::int32_t>{5, 6, 0, 9}));
}

TEST_F(FltVertexFieldTest, HasZerosWhereNothingWasWritten)
{
    values.setNum(4);
    values.set(2, 7);
    EXPECT_EQ(shown(), (std::vector<std::int32_t>{0, 0, 7, 0}));
    values.setNum(2);
    values.setNum(3);
    EXPECT_EQ(shown(), (std::vector<std::int32_t>{0, 0, 0}));
}

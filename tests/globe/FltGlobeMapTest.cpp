#include "globe/FltGlobeMap.h"

#include <gtest/gtest.h>

namespace
{

/// A map of the flat earth about 48 N 9 E, in feet, or of degrees.
class FltGlobeMapTest : public testing::Test
{
protected:
    explicit FltGlobeMapTest(int kind = 0)
    {
        visual.info.projection = kind;
        visual.info.originLatitude = 48;
        visual.info.originLongitude = 9;
    }

    void useFeet()
    {
        visual.info.unit = FltDatabaseInfo::Unit::feet;
        visual.metresPerUnit = 0.3048;
    }

    FltGlobeMap map()
    {
        projection.emplace(visual.info);
        return {visual, *projection};
    }

    FltVisual visual;
    std::optional<FltProjection> projection;
};

double lengthOf(SbDPMatrix const& matrix, int row)
{
    return SbVec3d(matrix[row][0], matrix[row][1], matrix[row][2]).length();
}

} // namespace

TEST_F(FltGlobeMapTest, takesPointsForNearThatLieLessThanHalfAKilometreApart)
{
    FltGlobeMap const metres = map();
    for (int axis = 0; axis < 3; ++axis) {
        SbVec3d way(0, 0, 0);
        way[axis] = 499.9;
        EXPECT_TRUE(metres.areNear({7, 8, 9}, SbVec3d(7, 8, 9) + way)) << axis;
        EXPECT_TRUE(metres.areNear({7, 8, 9}, SbVec3d(7, 8, 9) - way)) << axis;
        way[axis] = 500;
        EXPECT_FALSE(metres.areNear({0, 0, 0}, way)) << axis;
    }
    EXPECT_FALSE(metres.areNear({0, 0, 0}, {300, 300, 300}));
}

TEST_F(FltGlobeMapTest, measuresWhatIsNearInMetresWhateverTheUnit)
{
    useFeet();
    FltGlobeMap const feet = map();
    for (int axis = 0; axis < 3; ++axis) {
        SbVec3d way(0, 0, 0);
        way[axis] = 1640;
        EXPECT_TRUE(feet.areNear({0, 0, 0}, way)) << axis;
        way[axis] = 1641;
        EXPECT_FALSE(feet.areNear({0, 0, 0}, way)) << axis;
    }
}

TEST_F(FltGlobeMapTest, measuresWhatIsNearInDegreesOnTheGroundAndUpwardInMetres)
{
    visual.info.projection = 5;
    FltGlobeMap const degrees = map();
    for (int axis = 0; axis < 2; ++axis) {
        SbVec3d way(0, 0, 0);
        way[axis] = 0.0045;
        EXPECT_TRUE(degrees.areNear({9, 48, 0}, SbVec3d(9, 48, 0) + way)) << axis;
        way[axis] = 0.0046;
        EXPECT_FALSE(degrees.areNear({9, 48, 0}, SbVec3d(9, 48, 0) + way)) << axis;
    }
    EXPECT_TRUE(degrees.areNear({9, 48, 0}, {9, 48, 499}));
    EXPECT_FALSE(degrees.areNear({9, 48, 0}, {9, 48, 501}));
}

TEST_F(FltGlobeMapTest, countsFromAPlaceThatItIsMovedToUnlessThatIsNone)
{
    FltGlobeMap moved = map();
    EXPECT_TRUE(moved.moveTo({100, 200, 300}));
    EXPECT_LT(moved.placeOf({100, 200, 300}).value().length(), 1e-6);
    EXPECT_NEAR(moved.placeOf({100, 200, 310}).value()[2], 10, 1e-6);
    EXPECT_NEAR(moved.placeOf({110, 200, 300}).value()[0], 10, 1e-2);
    EXPECT_NEAR(moved.placeOf({100, 210, 300}).value()[1], 10, 1e-2);
    EXPECT_FALSE(moved.moveTo({1e9, 1e9, 0}));
    EXPECT_FALSE(moved.placeOf({1e9, 1e9, 0}));
    EXPECT_LT(moved.placeOf({100, 200, 300}).value().length(), 1e-6) << "it stays where it was";
}

TEST_F(FltGlobeMapTest, tellsWhatItDoesToShortWays)
{
    useFeet();
    FltGlobeMap feet = map();
    ASSERT_TRUE(feet.moveTo({0, 0, 0}));
    SbDPMatrix const turn = feet.turnAt({0, 0, 0}).value();
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_NEAR(turn[row][column], row == column ? 0.3048 : 0, 1e-5) << row << column;
    EXPECT_FALSE(feet.turnAt({1e9, 1e9, 0}));
}

TEST_F(FltGlobeMapTest, stretchesWhatStandsAsAWholeUnlessItIsAModel)
{
    useFeet();
    FltGlobeMap feet = map();
    ASSERT_TRUE(feet.moveTo({0, 0, 0}));
    SbDPMatrix around;
    around.setScale(2.0);
    around[3][0] = 100;
    SbVec3d const middle(10, 0, 5);
    for (bool const isModel : {false, true}) {
        SbDPMatrix const stand = feet.standOf(around, middle, isModel).value();
        for (int row = 0; row < 3; ++row)
            EXPECT_NEAR(lengthOf(stand, row), 2 * 0.3048, isModel ? 1e-12 : 1e-3) << row;
        SbVec3d place;
        stand.multVecMatrix(middle, place);
        EXPECT_LT((place - feet.placeOf({120, 0, 10}).value()).length(), 1e-9);
    }
    around[3][0] = 1e9;
    around[3][1] = 1e9;
    EXPECT_FALSE(feet.standOf(around, middle, true));
    EXPECT_FALSE(feet.standOf(around, middle, false));
}

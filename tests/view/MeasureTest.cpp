#include "view/Measure.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

TEST(MeasureTest, TellsTheDistanceOfEachSecondPlaceFromTheOneBefore)
{
    auto* const lines = new SoSeparator;
    lines->ref();
    {
        Measure measure(*lines);
        EXPECT_TRUE(measure.take(SbVec3f(1, 1, 1), "m").contains("second place"));
        EXPECT_EQ(0, lines->getNumChildren());
        EXPECT_EQ("Distance 5 m  (x 3  y -4  z 0)", measure.take(SbVec3f(4, -3, 1), "m"));
        EXPECT_EQ(1, lines->getNumChildren());
        EXPECT_TRUE(measure.take(SbVec3f(0, 0, 0), "m").contains("second place")) << "it begins anew";
        EXPECT_EQ(0, lines->getNumChildren());
        measure.clear();
        EXPECT_TRUE(measure.take(SbVec3f(0, 0, 0), "m").contains("second place"));
    }
    lines->unref();
}

} // namespace

#include "view/AxesCross.h"

#include <Inventor/SbVec3f.h>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

void expectNear(double x, double y, QPointF const& end)
{
    EXPECT_NEAR(x, end.x(), 1e-6);
    EXPECT_NEAR(y, end.y(), 1e-6);
}

TEST(AxesCrossTest, ShowsXToTheRightAndYUpFromAbove)
{
    auto const [x, y, z] = AxesCross::endsOf(SbRotation::identity());
    expectNear(1, 0, x);
    expectNear(0, -1, y);
    expectNear(0, 0, z);
}

TEST(AxesCrossTest, ShowsZUpFromTheFront)
{
    auto const [x, y, z] = AxesCross::endsOf(SbRotation(SbVec3f(1, 0, 0), static_cast<float>(M_PI / 2)));
    expectNear(1, 0, x);
    expectNear(0, 0, y);
    expectNear(0, -1, z);
}

TEST(AxesCrossTest, DrawsXInRed)
{
    AxesCross cross;
    cross.show(SbRotation::identity());
    QImage const drawn = cross.grab().toImage();
    QColor const right = drawn.pixelColor(drawn.width() / 2 + 10, drawn.height() / 2);
    EXPECT_GT(right.red(), right.green() + 50);
    EXPECT_GT(right.red(), right.blue() + 50);
}

} // namespace

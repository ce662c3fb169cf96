#include "view/ScaleBar.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

TEST(ScaleBarTest, IsTheLongestRoundNumberThatFits)
{
    EXPECT_DOUBLE_EQ(100, ScaleBar::roundLength(199));
    EXPECT_DOUBLE_EQ(200, ScaleBar::roundLength(200.1));
    EXPECT_DOUBLE_EQ(500, ScaleBar::roundLength(999));
    EXPECT_DOUBLE_EQ(0.02, ScaleBar::roundLength(0.03));
    for (double const nothing :
         {0.0, -1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(0, ScaleBar::roundLength(nothing));
}

TEST(ScaleBarTest, SaysItsLengthAndDrawsIt)
{
    ScaleBar bar;
    EXPECT_EQ("", bar.text());
    bar.show(0.25, "m"); // of 120 pixels are 30 m
    EXPECT_EQ("20 m", bar.text());
    QImage const drawn = bar.grab().toImage();
    QColor const ink = bar.palette().color(QPalette::WindowText);
    int length = 0;
    for (int x = 0; x < drawn.width(); ++x)
        length += drawn.pixelColor(x, drawn.height() - 6) == ink ? 1 : 0;
    EXPECT_EQ(81, length);
}

} // namespace

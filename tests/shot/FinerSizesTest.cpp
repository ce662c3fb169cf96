#include "shot/FinerSizes.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

TEST(FinerSizesTest, holdForPointsAndLinesAsLongAsTheObjectLives)
{
    SoNodeRef<SoSeparator> const scene(new SoSeparator);
    auto* const points = new SoDrawStyle;
    points->pointSize = 12;
    auto* const lines = new SoDrawStyle;
    lines->lineWidth = 3;
    for (SoNode* const node : {points, lines, points})
        scene->addChild(node);
    {
        FinerSizes const sizes(scene.get(), 2);
        EXPECT_EQ(points->pointSize.getValue(), 24) << "once, though it stands at two places";
        EXPECT_EQ(points->lineWidth.getValue(), 2) << "the toolkit's usual width is 1";
        EXPECT_EQ(lines->lineWidth.getValue(), 6);
    }
    EXPECT_EQ(points->pointSize.getValue(), 12);
    EXPECT_EQ(points->lineWidth.getValue(), 0);
    EXPECT_EQ(lines->lineWidth.getValue(), 3);
    SoNodeRef<SoDrawStyle> const usual(FinerSizes::makeUsual(3));
    EXPECT_EQ(usual->pointSize.getValue(), 3);
    EXPECT_EQ(usual->lineWidth.getValue(), 3);
}

#include "shot/BothSides.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

TEST(BothSides, ShowAsLongAsTheyAreAskedForWithTheFrontWhereItWas)
{
    SoNodeRef<SoSeparator> const scene(new SoSeparator);
    auto* const hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::CLOCKWISE;
    hints->shapeType = SoShapeHints::SOLID;
    scene->addChild(new SoSeparator);
    static_cast<SoSeparator*>(scene->getChild(0))->addChild(hints);
    {
        BothSides const both(scene.get());
        EXPECT_EQ(hints->shapeType.getValue(), SoShapeHints::UNKNOWN_SHAPE_TYPE);
        EXPECT_EQ(hints->vertexOrdering.getValue(), SoShapeHints::CLOCKWISE);
    }
    EXPECT_EQ(hints->shapeType.getValue(), SoShapeHints::SOLID);
    BothSides const ofNothing(nullptr);
}

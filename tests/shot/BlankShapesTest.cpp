#include "shot/BlankShapes.h"

#include "toolkit/SoNodeRef.h"
#include "toolkit/SoSilentField.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

namespace
{

/// What is said of a shape.
struct Look {
    bool isLit = false;
    bool namesTexture = true;
    bool hasPicture = false;
    SbColor color{1, 1, 1};
    std::uint32_t corner = 0xffffffff;
};

std::size_t countWith(Look const& look)
{
    SoNodeRef<SoSeparator> const scene(new SoSeparator);
    auto* const shape = new SoSeparator;
    scene->addChild(shape);
    auto* const light = new SoLightModel;
    light->model = look.isLit ? SoLightModel::PHONG : SoLightModel::BASE_COLOR;
    shape->addChild(light);
    auto* const texture = new SoTexture2;
    if (look.namesTexture)
        SoSilentField::set(texture->filename, "gone.rgb"); // it would be looked for
    unsigned char const pixel[] = {1};
    if (look.hasPicture)
        texture->image.setValue(SbVec2s(1, 1), 1, pixel);
    shape->addChild(texture);
    auto* const material = new SoMaterial;
    material->diffuseColor = look.color;
    shape->addChild(material);
    auto* const faces = new SoIndexedFaceSet;
    auto* const corners = new SoVertexProperty;
    corners->orderedRGBA.set1Value(0, 0xffffffff);
    corners->orderedRGBA.set1Value(1, look.corner);
    faces->vertexProperty = corners;
    shape->addChild(faces);
    return BlankShapes::countIn(scene.get());
}

} // namespace

TEST(BlankShapesTest, areWhiteUnlitAndWithoutTheTextureThatTheyName)
{
    Look look;
    EXPECT_EQ(countWith(look), 1U);
    look.isLit = true;
    EXPECT_EQ(countWith(look), 0U);
    look = {};
    look.namesTexture = false;
    EXPECT_EQ(countWith(look), 0U);
    look = {};
    look.hasPicture = true;
    EXPECT_EQ(countWith(look), 0U);
    look = {};
    look.color.setValue(1, 0, 1);
    EXPECT_EQ(countWith(look), 0U);
    look = {};
    look.corner = 0xff0000ff;
    EXPECT_EQ(countWith(look), 0U) << "a corner in another colour shows the form";
}

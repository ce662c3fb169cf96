#include "scene/FltLightNodes.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>
#include <gtest/gtest.h>

namespace
{

FltVisualLight light(FltVisualLight::Kind kind)
{
    FltVisualLight light;
    light.kind = kind;
    light.position = SbVec3d(1, 2, 3);
    light.direction = SbVec3f(0, 1, 0);
    light.color = SbColor(1, 0.5F, 0);
    light.cutOffAngle = 0.25F;
    light.dropOffRate = 0.75F;
    return light;
}

template <class Node>
SoNodeRef<Node> make(FltVisualLight::Kind kind)
{
    SoNodeRef<SoLight> const node(FltLightNodes::make(light(kind)));
    EXPECT_EQ(node->getTypeId(), Node::getClassTypeId());
    EXPECT_EQ(node->color.getValue(), SbColor(1, 0.5F, 0));
    return SoNodeRef<Node>(dynamic_cast<Node*>(node.get()));
}

} // namespace

TEST(FltLightNodes, shineInADirection)
{
    auto const node = make<SoDirectionalLight>(FltVisualLight::Kind::infinite);
    EXPECT_EQ(node->direction.getValue(), SbVec3f(0, 1, 0));
}

TEST(FltLightNodes, shineFromAPlace)
{
    auto const node = make<SoPointLight>(FltVisualLight::Kind::local);
    EXPECT_EQ(node->location.getValue(), SbVec3f(1, 2, 3));
}

TEST(FltLightNodes, fadeAsTheirAttenuationSays)
{
    FltVisualLight lamp = light(FltVisualLight::Kind::local);
    EXPECT_EQ(FltLightNodes::fadingOf(lamp, 1), nullptr);
    lamp.attenuation[1] = 0.25F;
    lamp.attenuation[2] = 4;
    SoNodeRef<SoEnvironment> const fading(FltLightNodes::fadingOf(lamp, 1));
    ASSERT_NE(fading.get(), nullptr);
    EXPECT_EQ(fading->attenuation.getValue(), SbVec3f(4, 0.25F, 1)) << "the toolkit begins with the square";
    SoNodeRef<SoEnvironment> const inHalves(FltLightNodes::fadingOf(lamp, 0.5));
    EXPECT_EQ(inHalves->attenuation.getValue(), SbVec3f(16, 0.5F, 1)) << "by distances in the world";
    lamp.kind = FltVisualLight::Kind::infinite;
    EXPECT_EQ(FltLightNodes::fadingOf(lamp, 1), nullptr) << "a sun has no distance";
}

TEST(FltLightNodes, shineInACone)
{
    auto const node = make<SoSpotLight>(FltVisualLight::Kind::spot);
    EXPECT_EQ(node->location.getValue(), SbVec3f(1, 2, 3));
    EXPECT_EQ(node->direction.getValue(), SbVec3f(0, 1, 0));
    EXPECT_EQ(node->cutOffAngle.getValue(), 0.25F);
    EXPECT_EQ(node->dropOffRate.getValue(), 0.75F);
}

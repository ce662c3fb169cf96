#include "convert/FltLODCentres.h"

#include "convert/FltAllowance.h"
#include "convert/FltOneTimeWarnings.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>
#include <gtest/gtest.h>
#include <iostream>

namespace
{

class FltLODCentresTest : public testing::Test
{
protected:
    FltLODCentresTest()
    {
        lod->ref();
        lod->addChild(children);
        order = scene.silence(children);
    }
    ~FltLODCentresTest() override { lod->unref(); }

    static void addCubeAt(SoSeparator* parent, float x)
    {
        auto* const place = new SoTranslation;
        place->translation.setValue(x, 0, 0);
        parent->addChild(place);
        parent->addChild(new SoCube);
    }

    StreamCapture const err{std::cerr};
    FltSilencedScene scene;
    FltAllowance steps{{100, 0}};
    FltOneTimeWarnings warnings;
    FltLODCentres centres{scene, steps, warnings};
    SoLOD* lod = new SoLOD;
    SoSeparator* children = new SoSeparator;
    FltSilencedScene::Order order = 0;
};

TEST_F(FltLODCentresTest, TheCentreIsThatOfTheBoxAroundTheChildren)
{
    addCubeAt(children, 3);
    centres.setFromBox(*lod, children, order, 1);
    EXPECT_EQ(lod->center.getValue(), SbVec3f(3, 0, 0));
    EXPECT_EQ(err.str(), "");
}

TEST_F(FltLODCentresTest, TheBoxIsNotedSoThatALaterOneKnowsWhatWasAddedSince)
{
    auto* const inner = new SoSeparator;
    FltSilencedScene::Order const innerOrder = scene.silence(inner);
    children->addChild(inner);
    children->boundingBoxCaching = SoSeparator::ON;
    addCubeAt(inner, 10);
    centres.setFromBox(*lod, children, order, 1);
    scene.forgetBox(innerOrder);
    addCubeAt(inner, 10);
    centres.setFromBox(*lod, children, order, 1);
    EXPECT_EQ(lod->center.getValue(), SbVec3f(15, 0, 0));
}

TEST_F(FltLODCentresTest, WithoutStepsLeftTheCentreStaysAndOneWarningIsGiven)
{
    addCubeAt(children, 3);
    centres.setFromBox(*lod, children, order, 100); // all there are
    addCubeAt(children, 3);
    for (int i = 0; i < 3; ++i)
        centres.setFromBox(*lod, children, order, 1);
    EXPECT_EQ(lod->center.getValue(), SbVec3f(3, 0, 0));
    EXPECT_EQ(err.str(), "WARNING ! Levels of detail are nested too deeply: some keep a centre of (0, 0, "
                         "0)\n(Warning Level: 2)\n\n");
}

} // namespace

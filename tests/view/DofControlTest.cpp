#include "view/DofControl.h"

#include "LoadedViewDatabase.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QSlider>

namespace
{

/// The control of the degree of freedom "door".
class DofControlTest : public LoadedViewDatabase
{
protected:
    DofControlTest() { showDoor(); }

    void showDoor() { control.show(loaded.scene, 0, loaded.storedJoints.at(0)); }

    template <class Widget>
    Widget& part(char const* name) const
    {
        return *control.findChild<Widget*>(name);
    }
    QDoubleSpinBox& number(char const* name) const
    {
        return part<QDoubleSpinBox>(("number " + std::string(name)).c_str());
    }

    SbBox3f box() const
    {
        SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
        action.apply(node("door"));
        return action.getBoundingBox();
    }

    DofControl control;
};

TEST_F(DofControlTest, TurnsTheNodesBelowTheRecordInTheScene)
{
    EXPECT_NEAR(20, box().getMax()[0], 1e-3f);
    number("yaw").setValue(90);
    EXPECT_NEAR(10, box().getMax()[0], 1e-3f);
    EXPECT_NEAR(10, box().getMax()[1], 1e-3f);
    EXPECT_EQ(90, loaded.scene.degreesOfFreedom()[0].yaw.current);
    EXPECT_EQ(1000, part<QSlider>("slider yaw").value());
}

TEST_F(DofControlTest, MovesEachOfTheNineValues)
{
    char const* const names[] = {"x", "y", "z", "pitch", "roll", "yaw", "x scale", "y scale", "z scale"};
    for (int i = 0; i < 9; ++i)
        number(names[i]).setValue(2 + i);
    FltDegreeOfFreedom const door = loaded.scene.degreesOfFreedom()[0];
    std::vector<double> const moved = {
        door.translation[0].current, door.translation[1].current, door.translation[2].current,
        door.pitch.current,          door.roll.current,           door.yaw.current,
        door.scale[0].current,       door.scale[1].current,       door.scale[2].current};
    EXPECT_EQ((std::vector<double>{2, 3, 4, 5, 6, 7, 8, 9, 10}), moved);
}

TEST_F(DofControlTest, GoesBackToTheFileAndToThePointsAsTheyAreStored)
{
    SbBox3f const before = box();
    number("x").setValue(5);
    number("z scale").setValue(2);
    part<QPushButton>("stored").click();
    EXPECT_EQ(before.getMax(), box().getMax());
    EXPECT_EQ(0, number("x").value());
    EXPECT_EQ(1, number("z scale").value()) << "a scale of 0 counts as 1";
    part<QPushButton>("neutral").click();
    EXPECT_EQ(1, loaded.scene.degreesOfFreedom()[0].scale[0].current);
    EXPECT_EQ(before.getMax(), box().getMax());
}

TEST_F(DofControlTest, KnowsTheLimitsAndTheStepOfTheRecord)
{
    EXPECT_EQ("limited to 0 … 90", part<QSlider>("slider yaw").toolTip());
    EXPECT_EQ("not limited", part<QSlider>("slider pitch").toolTip());
    EXPECT_EQ(5, number("yaw").singleStep());
    EXPECT_EQ("°", number("yaw").suffix());
    EXPECT_EQ("", number("x").suffix());
    part<QSlider>("slider yaw").setValue(500);
    EXPECT_EQ(45, number("yaw").value());
}

TEST_F(DofControlTest, ShowsWhereThePartIsNow)
{
    number("yaw").setValue(30);
    control.clear();
    showDoor();
    EXPECT_EQ(30, number("yaw").value());
    part<QPushButton>("stored").click();
    EXPECT_EQ(0, number("yaw").value());
}

TEST_F(DofControlTest, LeavesTheSceneAloneAfterItWasCleared)
{
    control.clear();
    number("yaw").setValue(30);
    part<QPushButton>("stored").click();
    EXPECT_EQ(0, loaded.scene.degreesOfFreedom()[0].yaw.current);
}

} // namespace

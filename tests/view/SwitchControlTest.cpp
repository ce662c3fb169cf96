#include "view/SwitchControl.h"

#include "LoadedViewDatabase.h"

#include <Inventor/nodes/SoSwitch.h>
#include <QComboBox>
#include <QListWidget>

namespace
{

/// The control of the switch "lamp".
class SwitchControlTest : public LoadedViewDatabase
{
protected:
    SwitchControlTest() { showLamp(); }

    void showLamp()
    {
        SoNode* const lamp = node("lamp");
        control.show(loaded.scene, loaded.scene.switchOf(*lamp).value(), *static_cast<SoGroup*>(lamp), 0);
    }

    QComboBox& masks() const { return *control.findChild<QComboBox*>("mask"); }
    QListWidget& children() const { return *control.findChild<QListWidget*>("children"); }
    bool isChecked(int child) const { return children().item(child)->checkState() == Qt::Checked; }

    /// Which children the scene shows.
    std::string shown() const
    {
        std::string all;
        auto* const lamp = static_cast<SoGroup*>(node("lamp"));
        for (int i = 0; i < lamp->getNumChildren(); ++i)
            if (lamp->getChild(i)->isOfType(SoSwitch::getClassTypeId()))
                all += static_cast<SoSwitch*>(lamp->getChild(i))->whichChild.getValue() == SO_SWITCH_ALL
                           ? '1'
                           : '0';
        return all;
    }

    SwitchControl control;
};

TEST_F(SwitchControlTest, OffersTheMasksAndTheChildren)
{
    ASSERT_EQ(3, masks().count());
    EXPECT_EQ("0 (current in the file)", masks().itemText(0));
    EXPECT_EQ("1", masks().itemText(1));
    EXPECT_EQ(0, masks().currentIndex());
    ASSERT_EQ(2, children().count());
    EXPECT_EQ("red", children().item(0)->text());
    EXPECT_EQ("green", children().item(1)->text());
    EXPECT_TRUE(isChecked(0));
    EXPECT_FALSE(isChecked(1));
}

TEST_F(SwitchControlTest, HasTheSceneShowTheChosenMask)
{
    masks().setCurrentIndex(2);
    EXPECT_EQ("11", shown());
    EXPECT_EQ(2, loaded.scene.switches()[0].currentMask);
    EXPECT_TRUE(isChecked(1));
    masks().setCurrentIndex(1);
    EXPECT_EQ("01", shown());
    EXPECT_FALSE(isChecked(0));
    showLamp();
    EXPECT_EQ(1, masks().currentIndex()) << "what is shown now";
}

TEST_F(SwitchControlTest, ShowsSingleChildrenAndTellsTheMaskThatShowsTheSame)
{
    children().item(0)->setCheckState(Qt::Unchecked);
    EXPECT_EQ("00", shown());
    EXPECT_EQ(-1, masks().currentIndex());
    children().item(1)->setCheckState(Qt::Checked);
    EXPECT_EQ("01", shown());
    EXPECT_EQ(1, masks().currentIndex());
}

TEST_F(SwitchControlTest, LeavesTheSceneAloneAfterItWasCleared)
{
    control.clear();
    masks().setCurrentIndex(1);
    EXPECT_EQ("10", shown());
}

TEST_F(SwitchControlTest, NamesTheMasks)
{
    FltWriter flt;
    flt.push().add(
        "Switch",
        {{"idASCII", "s"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 0}}});
    flt.addRaw(132, FltWriter::big32(1) + std::string("night\0", 6));
    flt.push().add("Group").pop().pop();
    flt.save(folder.path("named.flt"));
    LoadedScene named(FltLoader(), folder.path("named.flt"));
    control.show(named.scene, 0, *static_cast<SoGroup*>(nodeIn(named, "s")), 0);
    EXPECT_EQ("1: night", masks().itemText(1));
    EXPECT_EQ("child 0", children().item(0)->text());
    control.clear();
}

} // namespace

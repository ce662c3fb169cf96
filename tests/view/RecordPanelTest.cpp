#include "view/RecordPanel.h"

#include "LoadedViewDatabase.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoSeparator.h>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <nlohmann/json.hpp>

namespace
{

class RecordPanelTest : public LoadedViewDatabase
{
protected:
    QTreeWidget& tree() const { return *panel.findChild<QTreeWidget*>("fields"); }

    /// The value beside a name, anywhere; what isn't there or hidden: nothing.
    QString value(QString const& name) const
    {
        for (QTreeWidgetItem* item : tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive))
            if (!item->isHidden())
                return item->text(1);
        return {};
    }

    RecordPanel panel;
};

TEST_F(RecordPanelTest, ShowsAllFieldsOfARecordAndOfTheNode)
{
    panel.show(loaded.records.fieldsOf(place("door")), node("door"));
    EXPECT_EQ("door", value("idASCII"));
    EXPECT_EQ("90", value("maxYaw").section('.', 0, 0));
    EXPECT_EQ("0x4000000", value("flags"));
    EXPECT_EQ("yes", value("yawRotationIsLimited"));
    EXPECT_EQ("no", value("pitchRotationIsLimited"));
    EXPECT_EQ("AUTO", value("pickCulling"));
}

TEST_F(RecordPanelTest, SaysWhatNumbersCountIn)
{
    panel.show(loaded.records.fieldsOf(place("door")), nullptr, {}, "metres");
    EXPECT_TRUE(value("maxYaw").endsWith("°"));
    EXPECT_TRUE(value("XOriginOfDOFLocalCoordinateSystem").endsWith(" metres"));
    EXPECT_EQ("0.0", value("XMaxScale"));
}

TEST_F(RecordPanelTest, GivesNamesTheRoomThatTheyNeedAndLeavesAThirdToValues)
{
    auto const& tree = *panel.findChild<QTreeWidget*>("fields");
    panel.show(loaded.records.fieldsOf(place("door")), nullptr);
    panel.setVisible(true);
    panel.resize(1000, 400);
    int const needed = tree.columnWidth(0);
    EXPECT_GT(needed, tree.fontMetrics().horizontalAdvance("XPointInXYPlaneOfDOFLocalCoordinateSystem"));
    panel.resize(300, 400);
    EXPECT_LT(tree.columnWidth(0), needed);
    EXPECT_EQ(tree.viewport()->width() * 2 / 3, tree.columnWidth(0));
}

TEST_F(RecordPanelTest, LeavesWhatHoldsTheTextOfTheFilter)
{
    panel.show(loaded.records.fieldsOf(place("door")), nullptr);
    panel.findChild<QLineEdit*>()->setText("yaw");
    EXPECT_NE("", value("maxYaw"));
    EXPECT_EQ("", value("maxPitch"));
    panel.findChild<QLineEdit*>()->clear();
    EXPECT_NE("", value("maxPitch"));
}

TEST_F(RecordPanelTest, SaysWhatIsToBeKnownBesides)
{
    QLabel const& note = *panel.findChild<QLabel*>("note");
    EXPECT_TRUE(note.isHidden());
    panel.show({}, node("door"), "<b>nobody</b> knows");
    EXPECT_FALSE(note.isHidden());
    EXPECT_EQ("<b>nobody</b> knows", note.text());
    EXPECT_EQ(Qt::PlainText, note.textFormat());
    panel.show({}, node("door"));
    EXPECT_TRUE(note.isHidden());
}

TEST_F(RecordPanelTest, SaysWhyARecordHasNoFields)
{
    panel.show({{{"opcode", 96}, {"length", 28}, {"offset", 7}, {"error", "a count is negative"}}}, nullptr);
    EXPECT_EQ("a count is negative", value("error"));
}

TEST_F(RecordPanelTest, CutsLongLists)
{
    auto* const points = new SoCoordinate3;
    points->ref();
    points->point.setNum(100000);
    panel.show({}, points);
    EXPECT_TRUE(value("point").startsWith("100,000 values: "));
    EXPECT_LT(value("point").size(), 1000);
    points->unref();

    nlohmann::ordered_json const list = std::vector<int>(5000, 7);
    panel.show({{{"class", "X"}, {"opcode", 1}, {"length", 4}, {"offset", 0}, {"fields", {{"list", list}}}}},
               nullptr);
    EXPECT_EQ("5,000 entries", value("list"));
    EXPECT_EQ("4,000 more", value("…"));
}

} // namespace

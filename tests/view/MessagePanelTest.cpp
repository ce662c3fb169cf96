#include "view/MessagePanel.h"

#include <gtest/gtest.h>

namespace
{

FltMessage message(FltMessage::Level level, char const* text, std::int64_t offset, int count = 1)
{
    FltMessage made;
    made.level = level;
    made.text = text;
    made.file = "yard.flt";
    made.offset = offset;
    made.count = count;
    return made;
}

TEST(MessagePanelTest, ShowsTheWorstFirst)
{
    MessagePanel panel;
    panel.show(
        {message(FltMessage::Level::remark, "odd", 4), message(FltMessage::Level::error, "broken", 8)});
    ASSERT_EQ(2, panel.topLevelItemCount());
    EXPECT_EQ("broken", panel.topLevelItem(0)->text(1));
    EXPECT_EQ("byte 8", panel.topLevelItem(0)->text(2));
}

TEST(MessagePanelTest, GroupsMessagesOfOneCauseAndHoldsEachOfThem)
{
    MessagePanel panel;
    panel.show({message(FltMessage::Level::warning, "face 3 has 2 vertices", 100),
                message(FltMessage::Level::warning, "no texture", 150),
                message(FltMessage::Level::warning, "face 17 has 1 vertices", 200, 4)});
    ASSERT_EQ(2, panel.topLevelItemCount());
    QTreeWidgetItem const& faces = *panel.topLevelItem(0);
    EXPECT_EQ("face 3 has 2 vertices", faces.text(1));
    EXPECT_EQ("5", faces.text(3));
    ASSERT_EQ(2, faces.childCount());
    EXPECT_EQ("byte 200", faces.child(1)->text(2));
    EXPECT_EQ(0, panel.topLevelItem(1)->childCount());
}

} // namespace

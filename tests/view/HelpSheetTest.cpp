#include "view/HelpSheet.h"

#include "view/ViewKeys.h"

#include <QTreeWidget>
#include <gtest/gtest.h>

namespace
{

TEST(HelpSheetTest, HasALineForEveryKey)
{
    HelpSheet const sheet;
    auto const* const table = sheet.findChild<QTreeWidget*>("keys");
    ASSERT_NE(nullptr, table);
    auto const& keys = ViewKeys::all();
    ASSERT_EQ(static_cast<int>(keys.size()), table->topLevelItemCount());
    for (int i = 0; i < table->topLevelItemCount(); ++i) {
        EXPECT_EQ(keys[static_cast<std::size_t>(i)].keys, table->topLevelItem(i)->text(0).toStdString());
        EXPECT_EQ(keys[static_cast<std::size_t>(i)].purpose, table->topLevelItem(i)->text(1).toStdString());
    }
}

} // namespace

#include "view/ListColumns.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace
{

TEST(ListColumnsTest, FitWhatTheyHoldAndTheWindow)
{
    QTreeWidget tree;
    tree.setHeaderLabels({"Name", "Kind"});
    ListColumns::fit(tree, 0);
    tree.addTopLevelItem(new QTreeWidgetItem({QString(200, 'n'), "Degree of freedom"}));
    tree.resize(400, 200);
    tree.show();
    QHeaderView const& header = *tree.header();
    EXPECT_GE(header.sectionSize(1), tree.fontMetrics().horizontalAdvance("Degree of freedom"));
    EXPECT_EQ(tree.viewport()->width(), header.length());
}

} // namespace

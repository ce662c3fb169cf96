#include "view/TreeOpening.h"

#include "view/SceneTreeModel.h"

#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

namespace
{

/// A view that remembers how many rows there were when it was painted first.
class CountingView : public QTreeView
{
public:
    int rowsAtFirstPaint = -1;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (rowsAtFirstPaint < 0)
            rowsAtFirstPaint = static_cast<SceneTreeModel const*>(model())->rowsMade();
        QTreeView::paintEvent(event);
    }
};

class TreeOpeningTest : public testing::Test
{
protected:
    TreeOpeningTest() { root->ref(); }
    ~TreeOpeningTest() override
    {
        model.setScene(nullptr, nullptr, nullptr);
        root->unref();
    }

    static SoSeparator* groupOf(int cubes)
    {
        auto* const group = new SoSeparator;
        for (int i = 0; i < cubes; ++i)
            group->addChild(new SoCube);
        return group;
    }

    int rowsAtFirstPaint()
    {
        model.setScene(root, nullptr, nullptr);
        view.setUniformRowHeights(true);
        view.setModel(&model);
        TreeOpening::open(view);
        view.resize(300, 600);
        view.show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return view.rowsAtFirstPaint >= 0; }));
        return view.rowsAtFirstPaint;
    }

    SoSeparator* root = new SoSeparator;
    SceneTreeModel model;
    CountingView view;
};

TEST_F(TreeOpeningTest, MakesFewRowsOfAHundredThousandBeforeItIsPainted)
{
    for (int group = 0; group < 1000; ++group)
        root->addChild(groupOf(100));
    EXPECT_LT(rowsAtFirstPaint(), 200);
    EXPECT_EQ(1, model.rowCount());
}

TEST_F(TreeOpeningTest, MakesFewRowsOfAHundredThousandInOneGroup)
{
    for (int cube = 0; cube < 100000; ++cube)
        root->addChild(new SoCube);
    EXPECT_LT(rowsAtFirstPaint(), 200);
}

TEST_F(TreeOpeningTest, OpensTwoLevelsOfASmallTree)
{
    root->addChild(groupOf(2));
    root->addChild(groupOf(3));
    rowsAtFirstPaint();
    QModelIndex const top = model.index(0, 0);
    EXPECT_TRUE(view.isExpanded(top));
    EXPECT_TRUE(view.isExpanded(model.index(0, 0, top)));
    EXPECT_TRUE(view.isExpanded(model.index(1, 0, top)));
}

TEST_F(TreeOpeningTest, GoesOnToTheLastRowWhenSomebodyScrollsThere)
{
    for (int cube = 0; cube < 500; ++cube)
        root->addChild(new SoCube);
    rowsAtFirstPaint();
    QModelIndex const top = model.index(0, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        view.scrollToBottom();
        return model.rowCount(top) == 500;
    }));
}

} // namespace

#include "view/SceneTreeModel.h"

#include "LoadedViewDatabase.h"

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>
#include <QAbstractItemModelTester>

namespace
{

class SceneTreeModelTest : public LoadedViewDatabase
{
protected:
    SceneTreeModelTest() { model.setScene(loaded.scene.root(), &loaded.records, &loaded.match); }

    QString kindOf(QModelIndex const& index) const
    {
        return index.sibling(index.row(), SceneTreeModel::kindColumn).data().toString();
    }

    SbBox3f box() const
    {
        SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
        action.apply(loaded.scene.root());
        return action.getBoundingBox();
    }

    SceneTreeModel model;
};

TEST_F(SceneTreeModelTest, IsAWellFormedModel)
{
    QAbstractItemModelTester const tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setScene(loaded.scene.root(), &loaded.records, &loaded.match);
    EXPECT_TRUE(model.findNext("hut", {}).isValid());
    model.setScene(nullptr, nullptr, nullptr);
    EXPECT_EQ(0, model.rowCount());
}

TEST_F(SceneTreeModelTest, ShowsRecordsByTheirNamesAndKinds)
{
    QModelIndex const root = model.index(0, 0);
    EXPECT_EQ("yard", root.data().toString());
    EXPECT_EQ("Database", kindOf(root));
    QModelIndex const door = model.indexOfAddress("/door");
    ASSERT_TRUE(door.isValid());
    EXPECT_EQ("Degree of freedom", kindOf(door));
    EXPECT_EQ("Object, 1 face", kindOf(model.indexOfAddress("/door/panel")));
    EXPECT_EQ("/lamp/green", model.address(model.indexOfAddress("/lamp/green")));
}

TEST_F(SceneTreeModelTest, LeadsFromAnItemToItsPlaceAndBack)
{
    for (char const* address : {"/base/floor", "/door/panel", "/lamp/green", "/poster"}) {
        QModelIndex const index = model.indexOfAddress(address);
        SoPath* const path = model.path(index);
        ASSERT_NE(nullptr, path) << address;
        path->ref();
        EXPECT_EQ(model.node(index), path->getTail());
        EXPECT_EQ(index, model.indexOf(*path)) << address;
        path->unref();
    }
}

TEST_F(SceneTreeModelTest, HidesAndShowsWithoutLosingAnyPlace)
{
    QModelIndex const base = model.indexOfAddress("/base");
    float const before = box().getMax()[1];
    ASSERT_TRUE(model.setData(base, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(Qt::Unchecked, base.data(Qt::CheckStateRole).toInt());
    EXPECT_LT(box().getMax()[1], before);

    QModelIndex const floor = model.indexOfAddress("/base/floor");
    SoPath* const path = model.path(floor);
    path->ref();
    EXPECT_EQ(floor, model.indexOf(*path));
    path->unref();

    ASSERT_TRUE(model.setData(base, Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(before, box().getMax()[1]);
}

TEST_F(SceneTreeModelTest, FindsNamesInTheOrderOfTheTreeAndBeginsAnew)
{
    QModelIndex const first = model.findNext("OO", {});
    EXPECT_EQ("yard", model.index(0, 0).data().toString());
    EXPECT_EQ("/base/floor", model.address(first));
    EXPECT_EQ("/door", model.address(model.findNext("oo", first)));
    QModelIndex const poster = model.findNext("poster", {});
    EXPECT_EQ("/base/floor", model.address(model.findNext("floor", poster)));
    EXPECT_FALSE(model.findNext("Separator", {}).isValid()) << "a kind is no name";
    EXPECT_FALSE(model.findNext("nobody", {}).isValid());
    EXPECT_FALSE(model.findNext("", {}).isValid());
}

TEST_F(SceneTreeModelTest, GivesSharedPartsAnItemForEachPlace)
{
    auto* const root = new SoSeparator;
    root->ref();
    auto* const shared = new SoSeparator;
    shared->setName("shared");
    shared->addChild(new SoCube);
    root->addChild(shared);
    root->addChild(shared);
    RecordMatch const nothing;
    model.setScene(root, &loaded.records, &nothing);
    QModelIndex const top = model.index(0, 0);
    ASSERT_EQ(2, model.rowCount(top));
    QModelIndex const second = model.index(1, 0, top);
    SoPath* const path = model.path(second);
    path->ref();
    EXPECT_EQ(second, model.indexOf(*path));
    path->unref();
    model.setScene(nullptr, nullptr, nullptr);
    root->unref();
}

TEST_F(SceneTreeModelTest, LooksAtAScenesManyWaysOnlyWhenTheyAreOpened)
{
    // Each group holds the next one twice: 2^60 ways to the cube.
    auto* node = static_cast<SoNode*>(new SoCube);
    for (int i = 0; i < 60; ++i) {
        auto* const group = new SoSeparator;
        group->addChild(node);
        group->addChild(node);
        node = group;
    }
    node->ref();
    RecordMatch const nothing;
    model.setScene(node, &loaded.records, &nothing);
    EXPECT_EQ(2, model.rowCount(model.index(0, 0)));
    model.setScene(nullptr, nullptr, nullptr);
    node->unref();
}

} // namespace

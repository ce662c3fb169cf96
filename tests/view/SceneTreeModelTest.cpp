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
    SceneTreeModelTest() { show(loaded); }

    void show(LoadedScene& scene) { model.setScene(scene.scene.root(), &scene.scene, &scene.records); }

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
    show(loaded);
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
    model.setScene(root, nullptr, nullptr);
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

TEST_F(SceneTreeModelTest, KnowsTheRecordsBelowANodeThatIsNamedRoot)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "root"}});
    std::size_t const root = flt.lastOffset();
    flt.push().add("Object", {{"idASCII", "inner"}}).pop().pop();
    flt.save(folder.path("root.flt"));
    LoadedScene named(FltLoader(), folder.path("root.flt"));
    show(named);
    EXPECT_EQ("Group", kindOf(model.indexOfAddress("/root")));
    EXPECT_EQ("Object", kindOf(model.indexOfAddress("/root/inner")));
    EXPECT_EQ(root, model.record(model.indexOfAddress("/root")).value().offset);
    model.setScene(nullptr, nullptr, nullptr);
}

TEST_F(SceneTreeModelTest, GivesAShapeTheRecordOfItsObjectButNotItsKind)
{
    QModelIndex const object = model.indexOfAddress("/base/floor");
    QModelIndex const shape = model.index(0, 0, object);
    ASSERT_TRUE(shape.isValid());
    EXPECT_EQ("IndexedFaceSet", kindOf(shape));
    EXPECT_EQ("IndexedFaceSet", shape.data().toString());
    EXPECT_EQ(place("floor").offset, model.record(shape).value().offset);
    EXPECT_TRUE(model.record(object).value().isOwn);
    EXPECT_FALSE(model.record(shape).value().isOwn);
}

TEST_F(SceneTreeModelTest, ShowsNamesAsTheFileHasThemAndFindsThemSo)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "1 {x}"}}).push().pop();
    flt.add("Group", {{"idASCII", "1__y_"}}).add("LongID", {{"idASCII", std::string(300, 'n') + " 1"}});
    flt.push().pop().pop();
    flt.save(folder.path("names.flt"));
    LoadedScene names(FltLoader(), folder.path("names.flt"));
    show(names);
    QModelIndex const root = model.index(0, 0);
    EXPECT_EQ("1 {x}", model.index(0, 0, root).data().toString());
    EXPECT_EQ(302, model.index(1, 0, root).data().toString().size());
    EXPECT_EQ(model.index(0, 0, root), model.findNext(" {X", {}));
    EXPECT_EQ(model.index(0, 0, root), model.findNext("1 {", {}));
    EXPECT_EQ(model.index(1, 0, root), model.findNext("n 1", {}));
    EXPECT_EQ(model.index(0, 0, root), model.indexOfAddress("/1 {x}"));
    EXPECT_FALSE(model.findNext("1__", {}).isValid()) << "the file has no such name";
    model.setScene(nullptr, nullptr, nullptr);
}

TEST_F(SceneTreeModelTest, ShowsTheRecordsOfOtherFiles)
{
    save(folder.path("other.flt"));
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).add("Group", {{"idASCII", "base"}});
    flt.push().pop().pop();
    flt.save(folder.path("outer.flt"));
    LoadedScene outer(FltLoader(), folder.path("outer.flt"));
    show(outer);
    QModelIndex const reference = model.indexOfAddress("/other");
    EXPECT_EQ("External reference", kindOf(reference));
    EXPECT_EQ("yard", model.index(0, 0, reference).data().toString());
    EXPECT_EQ("Database", kindOf(model.index(0, 0, reference)));
    QModelIndex const floor = model.indexOfAddress("/other/yard/base/floor");
    EXPECT_EQ("Object, 1 face", kindOf(floor));
    EXPECT_EQ(folder.path("other.flt"), model.record(floor).value().file);
    EXPECT_EQ(folder.path("outer.flt"), model.record(model.indexOfAddress("/base")).value().file);
    model.setScene(nullptr, nullptr, nullptr);
}

TEST_F(SceneTreeModelTest, ShowsADatabaseInFeetAsOne)
{
    FltWriter flt(1570, {{"id", "feet"}, {"vertexCoordinateUnits", 4}});
    flt.push().add("Group", {{"idASCII", "g"}}).push().pop().pop();
    flt.save(folder.path("feet.flt"));
    LoadedScene feet(FltLoader(), folder.path("feet.flt"));
    show(feet);
    QModelIndex const root = model.index(0, 0);
    EXPECT_EQ("feet", root.data().toString());
    EXPECT_EQ("Database", kindOf(root));
    EXPECT_EQ("Separator", kindOf(model.index(0, 0, root))) << "what is scaled";
    model.setScene(nullptr, nullptr, nullptr);
}

TEST_F(SceneTreeModelTest, ShowsTheNodesAloneOfAnExactScene)
{
    LoadedScene exact(exactly(), path);
    show(exact);
    QModelIndex const door = model.indexOfAddress("/door");
    ASSERT_TRUE(door.isValid());
    EXPECT_EQ("Separator", kindOf(door));
    EXPECT_FALSE(model.record(door));
    model.setScene(nullptr, nullptr, nullptr);
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
    model.setScene(node, &loaded.scene, &loaded.records);
    EXPECT_EQ(2, model.rowCount(model.index(0, 0)));
    model.setScene(nullptr, nullptr, nullptr);
    node->unref();
}

TEST_F(SceneTreeModelTest, ShowsAPartAloneAndAllAgain)
{
    float const before = box().getMax()[0];
    model.showOnly(model.indexOfAddress("/door"));
    EXPECT_EQ(SbVec3f(10, 0, 0), box().getMin());
    EXPECT_EQ(SbVec3f(20, 0, 10), box().getMax());
    EXPECT_EQ(Qt::Checked, model.indexOfAddress("/door").data(Qt::CheckStateRole).toInt());
    EXPECT_EQ(Qt::Unchecked, model.indexOfAddress("/base").data(Qt::CheckStateRole).toInt());
    model.showOnly(model.indexOfAddress("/base/floor"));
    EXPECT_EQ(SbVec3f(0, 5, 0), box().getMin());
    model.showAll();
    EXPECT_EQ(before, box().getMax()[0]);
    EXPECT_EQ(Qt::Checked, model.indexOfAddress("/door").data(Qt::CheckStateRole).toInt());
}

TEST_F(SceneTreeModelTest, MakesTheRowsOfALargeGroupInParts)
{
    constexpr int count = 1000;
    auto* const root = new SoSeparator;
    root->ref();
    for (int i = 0; i < count; ++i) {
        auto* const cube = new SoCube;
        cube->setName(("cube" + std::to_string(i)).c_str());
        root->addChild(cube);
    }
    model.setScene(root, nullptr, nullptr);
    QModelIndex const top = model.index(0, 0);
    EXPECT_TRUE(model.hasChildren(top));
    int const first = model.rowCount(top);
    EXPECT_LT(first, 100);
    EXPECT_TRUE(model.canFetchMore(top));
    model.fetchMore(top);
    EXPECT_GT(model.rowCount(top), first);
    EXPECT_EQ(count - 1, model.findNext("cube999", {}).row()) << "a search looks at all";
    EXPECT_EQ(count, model.rowCount(top));
    EXPECT_EQ(count + 1, model.rowsMade());
    EXPECT_FALSE(model.canFetchMore(top));
    model.setScene(nullptr, nullptr, nullptr);
    root->unref();
}

} // namespace

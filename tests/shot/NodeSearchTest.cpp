#include "shot/NodeSearch.h"

#include "support/NameTable.h"
#include "support/SceneNodes.h"

#include "toolkit/SoNodeName.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SoPath.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

namespace
{

using Names = std::vector<std::string>;

class NodeSearchTest : public testing::Test
{
protected:
    template <class Group>
    Group* add(SoGroup* parent, char const* name) const
    {
        auto* const group = new Group;
        group->setName(name);
        parent->addChild(group);
        return group;
    }

    SoNodeRef<SoSeparator> const scene{new SoSeparator};
};

} // namespace

TEST_F(NodeSearchTest, prefersANodeThatNoSwitchHides)
{
    add<SoSeparator>(add<SoSwitch>(scene.get(), "off"), "tower");
    SoNode* const open = add<SoSeparator>(scene.get(), "tower");
    SoPath* const path = NodeSearch::find(scene.get(), "tower");
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(path->getTail(), open);
    path->unref();
}

TEST_F(NodeSearchTest, findsAHiddenNodeToo)
{
    SoNode* const hidden = add<SoSeparator>(add<SoSwitch>(scene.get(), "off"), "tower");
    SoPath* const path = NodeSearch::find(scene.get(), "tower");
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(path->getTail(), hidden);
    path->unref();
    EXPECT_EQ(NodeSearch::find(scene.get(), "Tower"), nullptr);
}

TEST_F(NodeSearchTest, findsANodeByItsNameInTheDatabase)
{
    SoNode* const tower = add<SoSeparator>(scene.get(), "control tower");
    SoPath* const path = NodeSearch::find(scene.get(), "control tower");
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(path->getTail(), tower);
    path->unref();
}

TEST_F(NodeSearchTest, tellsCutNamesApart)
{
    std::string const beginning(60'000, 'n');
    for (char const* const end : {"1", "2"})
        add<SoSeparator>(scene.get(), SoNodeName::of(beginning + end).c_str())
            ->addChild(SoNodeName::infoOf(beginning + end));
    for (int i = 0; i < 2; ++i) {
        SoPath* const path = NodeSearch::find(scene.get(), beginning + std::to_string(i + 1));
        ASSERT_NE(path, nullptr);
        EXPECT_EQ(path->getTail(), scene->getChild(i));
        path->unref();
    }
    EXPECT_EQ(NodeSearch::find(scene.get(), beginning + "3"), nullptr);
    EXPECT_EQ(NodeSearch::find(scene.get(), beginning + beginning), nullptr); // too long for the toolkit
}

TEST_F(NodeSearchTest, putsNoNameIntoTheToolkitsTable)
{
    EXPECT_EQ(NameTable::growth([&] { EXPECT_EQ(NodeSearch::find(scene.get(), "nobody"), nullptr); }), 0U);
}

TEST_F(NodeSearchTest, namesWhatIsLikeAName)
{
    for (char const* const name : {"control_tower", "hangar2", "hangar1", "lake", "hangar1"})
        add<SoSeparator>(scene.get(), name);
    EXPECT_EQ(NodeSearch::namesLike(scene.get(), "hangar"), (Names{"hangar1", "hangar2"}));
    EXPECT_EQ(NodeSearch::namesLike(scene.get(), "HANGER2"), (Names{"hangar2", "hangar1"}));
    EXPECT_EQ(NodeSearch::namesLike(scene.get(), "towr"), Names{"control_tower"});
    EXPECT_EQ(NodeSearch::namesLike(scene.get(), "runway"), Names{});
}

TEST_F(NodeSearchTest, walksThroughEachNodeOnce)
{
    auto* const shared = new SoCube;
    scene->addChild(shared);
    add<SoSeparator>(scene.get(), "a")->addChild(shared);
    std::size_t count = 0;
    SceneNodes::forEach(scene.get(), [&count](SoNode&) { ++count; });
    EXPECT_EQ(count, 3U);
}

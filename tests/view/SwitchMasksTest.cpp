#include "view/SwitchMasks.h"

#include "LoadedViewDatabase.h"

#include <Inventor/nodes/SoSwitch.h>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;
using SwitchMasksTest = LoadedViewDatabase;

TEST_F(SwitchMasksTest, ReadsTheBitsOfEachMask)
{
    SwitchMasks const masks(loaded.records.fieldsOf(record("lamp")).front()["fields"]);
    ASSERT_EQ(3, masks.count());
    EXPECT_EQ(0, masks.current());
    EXPECT_TRUE(masks.shows(0, 0));
    EXPECT_FALSE(masks.shows(0, 1));
    EXPECT_FALSE(masks.shows(1, 0));
    EXPECT_TRUE(masks.shows(2, 0) && masks.shows(2, 1));
}

TEST_F(SwitchMasksTest, ReadsMasksOfSeveralWords)
{
    SwitchMasks const masks(Json{{"numberOf32BitWordsPerMask", 2}, {"masks", {0, 1, -1, 0}}});
    ASSERT_EQ(2, masks.count());
    EXPECT_TRUE(masks.shows(0, 32));
    EXPECT_FALSE(masks.shows(0, 31));
    EXPECT_TRUE(masks.shows(1, 31));
    EXPECT_FALSE(masks.shows(1, 32));
}

TEST_F(SwitchMasksTest, ShowsNothingOfWhatIsNotThere)
{
    SwitchMasks const none(Json{{"numberOf32BitWordsPerMask", -3}, {"masks", Json::array()}});
    EXPECT_EQ(0, none.count());
    EXPECT_FALSE(none.shows(0, 0));
    SwitchMasks const one(Json{{"numberOf32BitWordsPerMask", 1}, {"masks", {1}}});
    EXPECT_FALSE(one.shows(1, 0));
    EXPECT_FALSE(one.shows(0, 32));
    EXPECT_FALSE(one.shows(-1, 0));
}

TEST_F(SwitchMasksTest, FindsTheSwitchesOfTheChildren)
{
    auto const children = SwitchMasks::childrenOf(*node("lamp"));
    ASSERT_EQ(2U, children.size());
    EXPECT_EQ(SO_SWITCH_ALL, children[0]->whichChild.getValue());
    EXPECT_EQ(SO_SWITCH_NONE, children[1]->whichChild.getValue());
}

} // namespace

#include "view/ViewKeys.h"

#include <QAction>
#include <gtest/gtest.h>
#include <set>
#include <stdexcept>

namespace
{

TEST(ViewKeysTest, GivesAnActionItsKeysAndATipThatSaysThem)
{
    QAction action;
    ViewKeys::assign(action, "top");
    EXPECT_EQ(QKeySequence("Ctrl+4"), action.shortcut());
    EXPECT_EQ("Look from the top (Ctrl+4)", action.toolTip());
    EXPECT_EQ("Look from the top", action.statusTip());
    EXPECT_THROW(ViewKeys::assign(action, "nothing"), std::invalid_argument);
}

TEST(ViewKeysTest, GivesACommandSeveralKeys)
{
    EXPECT_EQ((QList<QKeySequence>{QKeySequence("F1"), QKeySequence("?")}), ViewKeys::keysOf("help"));
}

TEST(ViewKeysTest, HasEachKeyOnceAndAPurposeForIt)
{
    std::set<std::string> keys;
    for (ProgramKey const& key : ViewKeys::all()) {
        EXPECT_TRUE(keys.insert(key.keys).second) << key.keys;
        EXPECT_FALSE(key.purpose.empty()) << key.keys;
    }
    EXPECT_EQ(1U, keys.count("F1 or ?"));
}

} // namespace

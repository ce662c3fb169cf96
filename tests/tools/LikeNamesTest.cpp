#include "support/LikeNames.h"

#include <gtest/gtest.h>

namespace
{

using Names = std::vector<std::string>;

Names like(std::string const& wanted, Names const& there)
{
    LikeNames names(wanted);
    for (std::string const& name : there)
        names.offer(name);
    return names.found();
}

} // namespace

TEST(LikeNames, DifferInAFewLetters)
{
    EXPECT_EQ(like("--recrods", {"--records", "--tree", "--json"}), Names{"--records"});
    EXPECT_EQ(like("TOWR", {"tower", "hangar"}), Names{"tower"});
    EXPECT_EQ(like("tower", {"hangar", "", "runway"}), Names{});
}

TEST(LikeNames, HoldTheWantedOneOrAWordLikeIt)
{
    EXPECT_EQ(like("path", {"--texture-path", "--tree"}), Names{"--texture-path"});
    EXPECT_EQ(like("towr", {"control_tower", "terminal"}), Names{"control_tower"});
}

TEST(LikeNames, AreTheLikestFirstAndAFewAtMost)
{
    EXPECT_EQ(like("tower", {"tower5", "towel", "power9", "tower"}), (Names{"tower", "towel", "tower5"}));
}

TEST(LikeNames, AreNotLookedForInTextsWithoutEnd)
{
    EXPECT_EQ(like(std::string(65, 'a'), {std::string(65, 'a')}), Names{});
}

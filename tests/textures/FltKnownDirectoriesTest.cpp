#include "textures/FltKnownDirectories.h"

#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

constexpr FltKnownDirectories::Way exactly{false, false};
constexpr FltKnownDirectories::Way inAnyCase{true, false};

class FltKnownDirectoriesTest : public testing::Test
{
protected:
    std::string find(FltKnownDirectories::Way way, std::string const& name)
    {
        FltKnownDirectories::Parts const parts = FltKnownDirectories::partsOf(name);
        FltKnownDirectories::Visited visited;
        return known.find(way, folder / "", parts.begin(), parts.end(), visited,
                          [](std::string const&, OpenFile const&) { return true; });
    }

    ScratchFolder folder;
    FltKnownDirectories known{FltReadableTree()};
};

} // namespace

TEST_F(FltKnownDirectoriesTest, FindsANameThroughAllOfItsParts)
{
    folder.write("a/b/Tree.rgb", "");
    EXPECT_EQ(find(exactly, "a/./b//Tree.rgb"), folder / "a/b/Tree.rgb");
    EXPECT_EQ(find(exactly, "a/../a/b/Tree.rgb"), folder / "a/../a/b/Tree.rgb");
    EXPECT_EQ(find(exactly, "A/b/tree.rgb"), "");
    EXPECT_EQ(find(inAnyCase, "A/b/tree.RGB"), folder / "a/b/Tree.rgb");
}

TEST_F(FltKnownDirectoriesTest, TakesTheFirstOfSeveralSpellings)
{
    folder.write("tree.rgb", "");
    folder.write("TREE.rgb", "");
    EXPECT_EQ(find(inAnyCase, "Tree.rgb"), folder / "TREE.rgb");
}

TEST_F(FltKnownDirectoriesTest, ReadsADirectoryOnce)
{
    folder.write("tree.rgb", "");
    EXPECT_NE(find(exactly, "tree.rgb"), "");
    folder.write("later.rgb", "");
    EXPECT_EQ(find(exactly, "later.rgb"), "");
}

TEST_F(FltKnownDirectoriesTest, TakesBackslashesForSlashes)
{
    EXPECT_EQ(FltKnownDirectories::withSlashes("a\\b/c"), "a/b/c");
}

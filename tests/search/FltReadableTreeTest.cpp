#include "search/FltReadableTree.h"

#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

class FltReadableTreeTest : public testing::Test
{
protected:
    ScratchFolder folder;
    std::string const inside = folder.write("tree/sub/inside", "");
    std::string const outside = folder.write("tree2/outside", "");
};

} // namespace

TEST_F(FltReadableTreeTest, HoldsEverythingWithoutADirectory)
{
    EXPECT_TRUE(FltReadableTree().holds(outside));
    EXPECT_TRUE(FltReadableTree().holds(folder / "nowhere"));
}

TEST_F(FltReadableTreeTest, HoldsTheDirectoryAndWhatIsBelow)
{
    for (std::string const& name : {folder / "tree", folder / "tree/", folder / "tree2/../tree/."}) {
        FltReadableTree const tree(name);
        EXPECT_TRUE(tree.holds(inside)) << name;
        EXPECT_TRUE(tree.holds(folder / "tree")) << name;
        EXPECT_TRUE(tree.holds(folder / "tree/sub/")) << name;
        EXPECT_FALSE(tree.holds(folder / "tree/sub/nowhere")) << name;
        EXPECT_FALSE(tree.holds(outside)) << name;
        EXPECT_FALSE(tree.holds(folder / "")) << name;
    }
}

TEST_F(FltReadableTreeTest, JudgesByTheRealPlace)
{
    std::filesystem::create_symlink(outside, folder / "tree/out");
    std::filesystem::create_directory_symlink(folder / "tree2", folder / "tree/folder");
    std::filesystem::create_symlink(inside, folder / "in");
    FltReadableTree const tree(folder / "tree");
    EXPECT_FALSE(tree.holds(folder / "tree/out"));
    EXPECT_FALSE(tree.holds(folder / "tree/folder/outside"));
    EXPECT_FALSE(tree.holds(folder / "tree/../tree2/outside"));
    EXPECT_TRUE(tree.holds(folder / "in"));
    EXPECT_TRUE(tree.holds(folder / "tree2/../tree/sub/inside"));
}

TEST_F(FltReadableTreeTest, HoldsNothingIfItsDirectoryIsNotThere)
{
    EXPECT_FALSE(FltReadableTree(folder / "nowhere").holds(inside));
    EXPECT_FALSE(FltReadableTree(folder / "nowhere").holds(folder / "nowhere"));
}

TEST_F(FltReadableTreeTest, HoldsAllFilesBelowTheRoot)
{
    EXPECT_TRUE(FltReadableTree("/").holds(outside));
}

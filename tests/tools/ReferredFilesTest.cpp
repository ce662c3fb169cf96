#include "convert/ReferredFiles.h"

#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(ReferredFilesTest, knowsAFileByEveryName)
{
    ScratchFolder const folder;
    std::string const picture = folder.write("pictures/tree.rgb", "a tree");
    std::filesystem::create_symlink("pictures/tree.rgb", folder / "soft.iv");
    std::filesystem::create_hard_link(picture, folder / "hard.iv");
    ReferredFiles files;
    files.add(folder / "pictures/../pictures/./tree.rgb", "a texture");
    for (std::string const name : {"pictures/tree.rgb", "soft.iv", "hard.iv", "./pictures//tree.rgb"}) {
        ASSERT_NE(files.reasonToKeep(folder / name), nullptr) << name;
        EXPECT_EQ(*files.reasonToKeep(folder / name), "a texture");
    }
    EXPECT_EQ(files.reasonToKeep(folder.write("other.iv", "a tree")), nullptr) << "equal, but another file";
}

TEST(ReferredFilesTest, keepsTheFirstReason)
{
    ScratchFolder const folder;
    std::string const file = folder.write("a.flt", "");
    ReferredFiles files;
    files.add(file, "the database a.flt");
    files.add(file, "a file that b.flt refers to");
    EXPECT_EQ(*files.reasonToKeep(file), "the database a.flt");
}

TEST(ReferredFilesTest, doesNotMindFilesThatAreNotThere)
{
    ScratchFolder const folder;
    ReferredFiles files;
    files.add(folder / "none.rgb", "a texture");
    EXPECT_EQ(files.reasonToKeep(folder / "none.rgb"), nullptr);
    EXPECT_EQ(files.reasonToKeep(""), nullptr);
}

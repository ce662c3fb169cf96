#include "support/DatabaseFiles.h"

#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

class DatabaseFilesTest : public testing::Test
{
protected:
    std::string file(std::string const& name) const { return folder.write(name, ""); }

    ScratchFolder folder;
};

using Files = std::vector<std::string>;

} // namespace

TEST_F(DatabaseFilesTest, FindsThoseOfADirectoryAndBelowItByName)
{
    std::string const b = file("models/b.FLT"), a = file("models/a.flt"),
                      deep = file("models/sub/deep/c.flt");
    file("models/notes.txt");
    std::filesystem::create_directories(folder / "models/folder.flt");
    DatabaseFiles const found = DatabaseFiles::below(folder / "models/");
    EXPECT_EQ(found.files, (Files{a, b, deep}));
    EXPECT_TRUE(found.problems.empty());
}

TEST_F(DatabaseFilesTest, FollowNoLinkToADirectory)
{
    std::string const a = file("models/a.flt");
    std::filesystem::create_directory_symlink(folder / "models", folder / "models/again");
    EXPECT_EQ(DatabaseFiles::below(folder / "models").files, Files{a});
}

TEST_F(DatabaseFilesTest, SayThatADirectoryHoldsNone)
{
    file("models/notes.txt");
    DatabaseFiles const found = DatabaseFiles::below(folder / "models");
    EXPECT_TRUE(found.files.empty());
    EXPECT_EQ(found.problems, Files{(folder / "models") + ": holds no database. Their names end in .flt."});
}

TEST_F(DatabaseFilesTest, AreThoseThatACommandLineNames)
{
    std::string const a = file("models/a.flt"), one = file("one.txt");
    DatabaseFiles const found = DatabaseFiles::named({one, folder / "models", folder / "gone.flt"});
    EXPECT_EQ(found.files, (Files{one, a, folder / "gone.flt"})) << "files as they are";
    EXPECT_TRUE(DatabaseFiles::isOneFile({one}));
    EXPECT_TRUE(DatabaseFiles::isOneFile({folder / "gone.flt"}));
    EXPECT_FALSE(DatabaseFiles::isOneFile({folder / "models"}));
    EXPECT_FALSE(DatabaseFiles::isOneFile({one, a}));
}

#include "toolkit/NamelessFile.h"

#include "support/ClosedInput.h"
#include "support/ScratchFolder.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

class NamelessFileTest : public testing::Test
{
protected:
    /// Opens a file in the folder, and closes it. @return its descriptor, or -1
    int opened() const
    {
        int const descriptor = NamelessFile::open(folder / "x");
        if (descriptor >= 0)
            ::close(descriptor);
        return descriptor;
    }

    ScratchFolder folder;
};

TEST_F(NamelessFileTest, MayHaveTheNumberOfStandardInput)
{
    bool const areKnown = opened() >= 0;
    ClosedInput const input;
    EXPECT_EQ(opened(), areKnown ? STDIN_FILENO : -1);
}

TEST_F(NamelessFileTest, IsNoneWhereThereIsNoDirectory)
{
    EXPECT_EQ(NamelessFile::open(folder / "none/x"), -1);
}

TEST_F(NamelessFileTest, HasNoNameUntilItGetsOneThatIsFree)
{
    int const file = NamelessFile::open(folder / "x");
    if (file >= 0) {
        EXPECT_EQ(::write(file, "new", 3), 3);
        EXPECT_TRUE(std::filesystem::is_empty(folder / ""));
        EXPECT_EQ(NamelessFile::giveName(file, folder / "x"), 0);
        EXPECT_EQ(contentsOf(folder / "x"), "new");
        EXPECT_EQ(NamelessFile::giveName(file, folder.write("taken", "old")), EEXIST);
        EXPECT_EQ(contentsOf(folder / "taken"), "old");
        ::close(file);
    }
}

} // namespace

#include "toolkit/OpenFile.h"

#include "support/ClosedInput.h"
#include "support/ProcessUsage.h"
#include "support/ScratchFolder.h"

#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utility>

namespace
{

class OpenFileTest : public testing::Test
{
protected:
    OpenFile open(std::string const& name) const
    {
        return OpenFile(::open((folder / name).c_str(), O_RDONLY | O_CLOEXEC));
    }

    ScratchFolder folder;
    std::string const path = folder.write("a", "text");
};

} // namespace

TEST_F(OpenFileTest, IsClosedOnceWithTheLastObject)
{
    std::size_t const before = ProcessUsage::openFiles();
    {
        OpenFile first = open("a");
        OpenFile second(std::move(first));
        first = open("a");
        EXPECT_EQ(ProcessUsage::openFiles(), before + 2);
        first = std::move(second);
        EXPECT_TRUE(first.isOpen());
        EXPECT_EQ(ProcessUsage::openFiles(), before + 1);
    }
    EXPECT_EQ(ProcessUsage::openFiles(), before);
}

TEST_F(OpenFileTest, KnowsItsSizeAndWhatItIs)
{
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    OpenFile const file = open("a");
    EXPECT_EQ(file.size(), 4U);
    EXPECT_EQ(file.identity(), OpenFile::Identity(status.st_dev, status.st_ino));
    EXPECT_EQ(file.copy().identity(), file.identity());
    EXPECT_NE(file.copy().descriptor(), file.descriptor());
}

TEST_F(OpenFileTest, MayHaveTheNumberOfStandardInput)
{
    ClosedInput const input;
    OpenFile const file = open("a");
    ASSERT_EQ(file.descriptor(), 0);
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(file.size(), 4U);
}

TEST_F(OpenFileTest, NoneHasNeither)
{
    OpenFile none = open("none");
    EXPECT_FALSE(none.isOpen());
    EXPECT_FALSE(none.copy().isOpen());
    EXPECT_EQ(none.size(), 0U);
    EXPECT_EQ(none.identity(), std::nullopt);
    EXPECT_EQ(none.intoStream("rb"), nullptr);
}

TEST_F(OpenFileTest, GivesItsDescriptorToAStream)
{
    OpenFile file = open("a");
    int const descriptor = file.descriptor();
    FILE* const stream = file.intoStream("rb");
    ASSERT_NE(stream, nullptr);
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(::fileno(stream), descriptor);
    EXPECT_EQ(std::fgetc(stream), 't');
    std::fclose(stream);
}

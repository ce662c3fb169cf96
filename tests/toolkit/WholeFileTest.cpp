#include "toolkit/WholeFile.h"

#include "support/ClosedInput.h"
#include "support/FileSizeLimit.h"
#include "support/ScratchFolder.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

std::size_t filesIn(ScratchFolder const& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder / ""),
                                                  std::filesystem::directory_iterator()));
}

} // namespace

TEST(WholeFile, takesItsPlaceWhenItIsWhole)
{
    ScratchFolder const folder;
    folder.write("x", "before");
    WholeFile file(folder / "x");
    ASSERT_NE(file.stream(), nullptr);
    std::fputs("after", file.stream());
    EXPECT_EQ(contentsOf(folder / "x"), "before");
    EXPECT_EQ(file.commit(), 0);
    EXPECT_EQ(contentsOf(folder / "x"), "after");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(WholeFile, leavesNothingOtherwise)
{
    ScratchFolder const folder;
    folder.write("x", "before");
    {
        WholeFile const file(folder / "x");
        std::fputs("after", file.stream());
    }
    EXPECT_EQ(contentsOf(folder / "x"), "before");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(WholeFile, hasANameThatTellsWhoseItIsBeforeItHasItsPlace)
{
    ScratchFolder const folder;
    WholeFile file(folder / "x");
    std::fputs("after", file.stream());
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.stream(), nullptr) << "many files can be whole at a time";
    ASSERT_EQ(filesIn(folder), 1U);
    std::string const name = std::filesystem::directory_iterator(folder / "")->path().filename().string();
    EXPECT_EQ(name.find(".velloreader-"), 0U) << name;
    EXPECT_NE(name.find("-" + std::to_string(::getpid()) + "-"), std::string::npos) << name;
    EXPECT_EQ(file.commit(), 0);
    EXPECT_EQ(contentsOf(folder / "x"), "after");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(WholeFile, needsNoDescriptorWhileItWaitsForItsPlace)
{
    struct rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    struct rlimit few = before;
    few.rlim_cur = 64;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    ScratchFolder const folder;
    std::vector<std::unique_ptr<WholeFile>> files;
    for (int i = 0; i < 100; ++i) {
        files.push_back(std::make_unique<WholeFile>(folder / std::to_string(i)));
        EXPECT_EQ(files.back()->close(), 0) << i;
    }
    for (auto const& file : files)
        EXPECT_EQ(file->commit(), 0);
    EXPECT_EQ(filesIn(folder), 100U);
    ::setrlimit(RLIMIT_NOFILE, &before);
}

TEST(WholeFile, keepsThePermissionsOfTheOneThatItReplaces)
{
    ScratchFolder const folder;
    ::chmod(folder.write("x", "before").c_str(), 0640);
    WholeFile file(folder / "x");
    EXPECT_EQ(file.commit(), 0);
    struct stat status = {};
    ASSERT_EQ(::stat((folder / "x").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST(WholeFile, isNotWrittenWhereNoPlainFileCanBe)
{
    ScratchFolder const folder;
    EXPECT_EQ(WholeFile(folder / "").problem(), EISDIR);
    EXPECT_EQ(WholeFile(folder / "none/x").problem(), ENOENT);
    EXPECT_EQ(WholeFile("/dev/null").problem(), EINVAL);
    WholeFile file(folder / "none/x");
    EXPECT_EQ(file.stream(), nullptr);
    EXPECT_EQ(file.commit(), ENOENT);
}

TEST(WholeFile, isNotCommittedIfTheDiskIsFull)
{
    ScratchFolder const folder;
    folder.write("x", "before");
    {
        WholeFile file(folder / "x");
        FileSizeLimit const limit(10);
        std::fputs("much longer than that", file.stream());
        EXPECT_NE(file.commit(), 0);
    }
    EXPECT_EQ(contentsOf(folder / "x"), "before");
    EXPECT_EQ(filesIn(folder), 1U);
}

TEST(WholeFile, knowsTwoNamesOfOneFile)
{
    ScratchFolder const folder;
    folder.write("a", "same");
    folder.write("b", "same");
    std::filesystem::create_symlink(folder / "a", folder / "link");
    EXPECT_TRUE(WholeFile::areOne(folder / "a", folder / "link"));
    EXPECT_FALSE(WholeFile::areOne(folder / "a", folder / "b"));
    EXPECT_FALSE(WholeFile::areOne(folder / "none", folder / "none"));
}

TEST(WholeFile, isWholeWhereStandardInputIsClosed)
{
    ScratchFolder const folder;
    ClosedInput const input;
    {
        WholeFile file(folder / "x");
        ASSERT_NE(file.stream(), nullptr);
        EXPECT_EQ(::fileno(file.stream()), STDIN_FILENO);
        std::fputs("after", file.stream());
        EXPECT_EQ(file.commit(), 0);
    }
    EXPECT_EQ(::fcntl(STDIN_FILENO, F_GETFD), -1);
    EXPECT_EQ(contentsOf(folder / "x"), "after");
    EXPECT_EQ(filesIn(folder), 1U);
}

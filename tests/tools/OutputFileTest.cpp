#include "support/OutputFile.h"

#include "support/FileSizeLimit.h"
#include "support/ScratchFolder.h"
#include "support/ToolError.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

class OutputFileTest : public testing::Test
{
protected:
    static void write(OutputFile& output, std::string const& text)
    {
        std::fwrite(text.data(), 1, text.size(), output.stream());
    }

    /// Names in the folder, also hidden ones.
    std::ptrdiff_t countFiles() const
    {
        return std::distance(std::filesystem::directory_iterator(folder / ""),
                             std::filesystem::directory_iterator());
    }

    /// What opening an output throws, with its exit code in front.
    static std::string refusalOf(std::string const& path, std::vector<KeptFile> const& kept = {})
    {
        try {
            OutputFile const output(path, kept);
        } catch (ToolError const& problem) {
            return std::to_string(static_cast<int>(problem.exitCode)) + " " + problem.what();
        }
        return "opened";
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(OutputFileTest, LeavesTheOldFileUntilTheNewOneIsWhole)
{
    std::string const path = folder.write("a.iv", "old");
    OutputFile output(path);
    write(output, "new");
    std::fflush(output.stream());
    EXPECT_EQ(contentsOf(path), "old");
    output.commit();
    EXPECT_EQ(contentsOf(path), "new");
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(OutputFileTest, LeavesNothingOfAFileThatIsNotWhole)
{
    std::string const path = folder.write("a.iv", "old");
    {
        OutputFile output(path);
        write(output, "new");
        OutputFile other(folder / "b.iv");
        write(other, "new");
    }
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(OutputFileTest, LeavesTheOldFileAndNothingElseIfTheProgramIsEnded)
{
    std::string const path = folder.write("a.iv", "old");
    for (int const signal : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        pid_t const child = ::fork();
        if (child == 0) {
            static_cast<void>(std::signal(signal, SIG_DFL)); // where nohup runs the tests, it is ignored
            OutputFile output(path);
            write(output, "new");
            std::fflush(output.stream());
            static_cast<void>(!::write(ready[1], "x", 1));
            for (;;)
                ::pause();
        }
        char byte;
        ASSERT_EQ(::read(ready[0], &byte, 1), 1);
        ::kill(child, signal);
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
        EXPECT_EQ(contentsOf(path), "old") << signal;
        EXPECT_EQ(countFiles(), 1) << signal;
        ::close(ready[0]);
        ::close(ready[1]);
    }
}

TEST_F(OutputFileTest, LeavesTheOldFileOnAFullDisk)
{
    std::string const path = folder.write("a.iv", "old");
    FileSizeLimit const full(4096);
    OutputFile output(path);
    write(output, std::string(100'000, 'x'));
    EXPECT_THROW(output.commit(), ToolError);
    EXPECT_EQ(contentsOf(path), "old");
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(OutputFileTest, KeepsPermissionsAndFollowsLinks)
{
    std::string const path = folder.write("a.iv", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    std::filesystem::create_symlink("a.iv", folder / "link.iv");
    std::filesystem::create_symlink("new.iv", folder / "dangling.iv");
    for (char const* const name : {"link.iv", "dangling.iv"}) {
        OutputFile output(folder / name);
        write(output, "new");
        output.commit();
        EXPECT_TRUE(std::filesystem::is_symlink(folder / name));
        EXPECT_EQ(contentsOf(folder / name), "new");
    }
    struct stat status = {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(OutputFileTest, WritesADeviceAndAPipeAsSuchAndNeverReplacesThem)
{
    OutputFile null("/dev/null");
    write(null, "gone");
    null.commit();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

    std::string const pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = contentsOf(pipe); });
    {
        OutputFile output(pipe);
        write(output, "through");
        output.commit();
    }
    reader.join();
    EXPECT_EQ(read, "through");
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(countFiles(), 1);
}

TEST_F(OutputFileTest, ReportsAFullDevice)
{
    OutputFile full("/dev/full");
    write(full, "x");
    EXPECT_THROW(full.commit(), ToolError);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(OutputFileTest, NeverReplacesWhatIsToBeKeptWhateverNameLeadsToIt)
{
    std::string const path = folder.write("a.flt", "database");
    std::filesystem::create_symlink("a.flt", folder / "soft.iv");
    std::filesystem::create_hard_link(path, folder / "hard.iv");
    for (char const* const name : {"a.flt", "soft.iv", "hard.iv", "./a.flt"})
        EXPECT_EQ(refusalOf(folder / name, {{path, "the input"}}),
                  "2 " + (folder / name) +
                      ": the output would replace the input. Choose another name for it.");
    EXPECT_EQ(refusalOf(folder / "b.iv", {{path, "the input"}, {folder / "none", "nothing"}}), "opened");
    EXPECT_EQ(contentsOf(path), "database");
}

TEST_F(OutputFileTest, KeepsAnExistingFileOnRequest)
{
    std::string const path = folder.write("a.iv", "old");
    EXPECT_THROW(OutputFile(path, {}, OutputFile::Existing::keep), ToolError);
    EXPECT_NE(OutputFile::problemOfReplacing(path).find("--no-clobber"), std::string::npos);
    EXPECT_EQ(contentsOf(path), "old");
    for (std::string const& other : {folder / "b.iv", std::string("-"), std::string("/dev/null")})
        EXPECT_EQ(OutputFile::problemOfReplacing(other), "") << other;
    OutputFile device("/dev/null", {}, OutputFile::Existing::keep);
    write(device, "new");
    device.commit();
    {
        OutputFile output(folder / "b.iv", {}, OutputFile::Existing::keep);
        write(output, "new");
        output.commit();
    }
    EXPECT_EQ(contentsOf(folder / "b.iv"), "new");
    EXPECT_EQ(countFiles(), 2);
}

TEST_F(OutputFileTest, KeepsAFileThatCameWhileItWasWritten)
{
    OutputFile output(folder / "a.iv", {}, OutputFile::Existing::keep);
    write(output, "new");
    folder.write("a.iv", "another's");
    EXPECT_THROW(output.commit(), ToolError);
    EXPECT_EQ(contentsOf(folder / "a.iv"), "another's");
    EXPECT_EQ(countFiles(), 1) << "nothing is left of the new one";
}

TEST_F(OutputFileTest, SaysWhyAnOutputCannotBeWritten)
{
    EXPECT_EQ(refusalOf(folder / "no/a.iv").substr(0, 2), "1 ");
    EXPECT_NE(refusalOf(folder / "no/a.iv").find("cannot write: No such file or directory"),
              std::string::npos);
    EXPECT_NE(refusalOf(folder / "").find("cannot write: Is a directory"), std::string::npos);
}

TEST_F(OutputFileTest, RefusesAnEndingThatTheProgramCannotWrite)
{
    auto const isTaken = [](std::string const& path) {
        try {
            OutputFile::checkEnding(path, {".iv", ".wrl"});
            return true;
        } catch (ToolError const& problem) {
            EXPECT_EQ(problem.exitCode, ExitCode::wrongUsage);
            return false;
        }
    };
    for (char const* const good : {"a.iv", "A.IV", "dir.x/b.wrl", "-", "/dev/null"})
        EXPECT_TRUE(isTaken(good)) << good;
    for (char const* const bad : {"a.png", "a", "a.iv.jpg", ".iv", "dir.iv/a"})
        EXPECT_FALSE(isTaken(bad)) << bad;
}

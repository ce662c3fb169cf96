#include "toolkit/SideFile.h"

#include "support/ClosedInput.h"
#include "support/ScratchFolder.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

using Outcome = SideFile::Outcome;
using Content = SideFile::Content;

Outcome open(std::string const& path, std::string const& database = "")
{
    return SideFile(path.c_str(), database.empty() ? nullptr : database.c_str(), Content::emptied)
        .getOutcome();
}

TEST(SideFileTest, AFileThatIsNotThereIsMade)
{
    ScratchFolder const folder;
    EXPECT_EQ(open(folder / "new.log"), Outcome::opened);
    EXPECT_TRUE(std::filesystem::is_regular_file(folder / "new.log"));
}

TEST(SideFileTest, AFileThatIsThereIsEmptiedOrAppendedTo)
{
    ScratchFolder const folder;
    std::string const path = folder.write("a.stat", "old");
    {
        SideFile file(path.c_str(), nullptr, Content::appendedTo);
        int const descriptor = file.release();
        EXPECT_EQ(::write(descriptor, "new", 3), 3);
        ::close(descriptor);
    }
    EXPECT_EQ(contentsOf(path), "oldnew");
    EXPECT_EQ(open(path), Outcome::opened);
    EXPECT_EQ(contentsOf(path), "");
}

TEST(SideFileTest, AFileOfOneByteIsEmptied)
{
    ScratchFolder const folder;
    std::string const path = folder.write("a.log", "1");
    EXPECT_EQ(open(path), Outcome::opened);
    EXPECT_EQ(contentsOf(path), "");
}

TEST(SideFileTest, WhatIsNotReleasedIsClosedWhateverItsNumber)
{
    ScratchFolder const folder;
    ClosedInput const input;
    EXPECT_EQ(open(folder / "a.log"), Outcome::opened);
    EXPECT_EQ(::fcntl(STDIN_FILENO, F_GETFD), -1);
    SideFile file((folder / "a.log").c_str(), nullptr, Content::emptied);
    EXPECT_EQ(file.release(), STDIN_FILENO);
    EXPECT_EQ(file.release(), -1) << "it is the caller's";
    ::close(STDIN_FILENO);
    EXPECT_EQ(SideFile(folder.path("").c_str(), nullptr, Content::emptied).release(), -1);
}

TEST(SideFileTest, ASymbolicLinkIsRefusedAndWhatItNamesIsKept)
{
    ScratchFolder const folder;
    std::string const other = folder.write("precious", "kept");
    std::filesystem::create_symlink(other, folder / "a.log");
    EXPECT_EQ(open(folder / "a.log"), Outcome::refused);
    EXPECT_EQ(contentsOf(other), "kept");
    std::filesystem::create_symlink(folder / "missing", folder / "b.log");
    EXPECT_EQ(open(folder / "b.log"), Outcome::refused);
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST(SideFileTest, AFileWithASecondNameIsRefusedAndKept)
{
    ScratchFolder const folder;
    std::string const other = folder.write("precious", "kept");
    std::filesystem::create_hard_link(other, folder / "a.log");
    EXPECT_EQ(open(folder / "a.log"), Outcome::refused);
    EXPECT_EQ(contentsOf(other), "kept");
}

TEST(SideFileTest, TheDatabaseItselfIsRefusedAndKept)
{
    ScratchFolder const folder;
    std::string const database = folder.write("a.flt", "kept");
    EXPECT_EQ(open(database, database), Outcome::refused);
    EXPECT_EQ(open((folder / ".") + "/a.flt", database), Outcome::refused);
    EXPECT_EQ(contentsOf(database), "kept");
    EXPECT_EQ(open(folder / "a.log", folder / "missing.flt"), Outcome::opened);
}

TEST(SideFileTest, APipeIsRefusedWithoutWaitingWhetherSomebodyReadsItOrNot)
{
    ScratchFolder const folder;
    std::string const pipe = folder / "a.log";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(open(pipe), Outcome::refused);
    int const reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(open(pipe), Outcome::refused);
    ::close(reader);
}

TEST(SideFileTest, ADeviceAndASocketAreRefused)
{
    ScratchFolder const folder;
    EXPECT_EQ(open("/dev/null"), Outcome::refused);
    EXPECT_EQ(open("/dev/full"), Outcome::refused);

    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::string const path = folder / "s";
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    int const socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(open(path), Outcome::refused);
    ::close(socket);
}

TEST(SideFileTest, AFileThatCannotBeMadeFails)
{
    ScratchFolder const folder;
    EXPECT_EQ(open(folder / "no/such/folder/a.log"), Outcome::failed);
    EXPECT_EQ(open(""), Outcome::failed);
    std::filesystem::create_directory(folder / "a.log");
    EXPECT_EQ(open(folder / "a.log"), Outcome::failed);
}

TEST(SideFileTest, WritingToItWaitsAsToAnyFile)
{
    ScratchFolder const folder;
    SideFile file((folder / "a.log").c_str(), nullptr, Content::emptied);
    int const descriptor = file.release();
    EXPECT_EQ(::fcntl(descriptor, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_NE(::fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_EQ(file.release(), -1);
    ::close(descriptor);
}

} // namespace

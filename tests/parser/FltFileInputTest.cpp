#include "parser/FltFileInput.h"

#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "toolkit/RegularFile.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <utility>

namespace
{

/// An input with what it told while it was made.
struct Opened {
    explicit Opened(char const* name)
    {
        StreamCapture const out(std::cout);
        StreamCapture const err(std::cerr);
        input = std::make_unique<FltFileInput>(name);
        told = out.str();
        complained = err.str();
    }
    explicit Opened(std::string const& name) : Opened(name.c_str()) {}

    std::unique_ptr<FltFileInput> input;
    std::string told;
    std::string complained;
};

void expectRefused(std::string const& name)
{
    Opened const opened(name);
    EXPECT_FALSE(opened.input->isInFlowCreated());
    EXPECT_EQ(opened.input->getSize(), 0);
    EXPECT_EQ(opened.input->getBuffer(), nullptr);
    EXPECT_EQ(opened.told, "");
    EXPECT_EQ(opened.complained, "Error in opening file: " + name + "\n");
}

TEST(FltFileInputTest, FileIsReadWholeWithItsZeros)
{
    ScratchFolder const directory;
    std::string const bytes("\0\1\xff\n\r\0", 6);
    std::string const name = directory.write("a.flt", bytes);
    Opened const opened(name);
    ASSERT_TRUE(opened.input->isInFlowCreated());
    EXPECT_EQ(opened.input->getSize(), 6);
    EXPECT_EQ(std::string(opened.input->getBuffer(), 6), bytes);
    EXPECT_STREQ(opened.input->getFileName(), name.c_str());
    EXPECT_EQ(opened.told, "\nSuccess in opening file: " + name + "\n");
    EXPECT_EQ(opened.complained, "");
}

TEST(FltFileInputTest, FileOfOneByteIsRead)
{
    ScratchFolder const directory;
    Opened const opened(directory.write("a.flt", "x"));
    ASSERT_EQ(opened.input->getSize(), 1);
    EXPECT_EQ(opened.input->getBuffer()[0], 'x');
    EXPECT_EQ(opened.complained, "");
}

TEST(FltFileInputTest, FileThatDoesNotExistIsToldOnCerr)
{
    ScratchFolder const directory;
    expectRefused(directory.path("missing.flt"));
}

TEST(FltFileInputTest, EmptyNameAndNullNameAreRefused)
{
    expectRefused("");
    Opened const opened(static_cast<char const*>(nullptr));
    EXPECT_FALSE(opened.input->isInFlowCreated());
    EXPECT_STREQ(opened.input->getFileName(), "");
    EXPECT_EQ(opened.complained, "Error in opening file: \n");
}

TEST(FltFileInputTest, EmptyFileIsCreatedWithNoBytes)
{
    ScratchFolder const directory;
    Opened const opened(directory.write("empty.flt", ""));
    EXPECT_TRUE(opened.input->isInFlowCreated());
    EXPECT_EQ(opened.input->getSize(), 0);
}

TEST(FltFileInputTest, DirectoryIsRefused)
{
    ScratchFolder const directory;
    std::filesystem::create_directory(directory.path("folder.flt"));
    expectRefused(directory.path("folder.flt"));
    expectRefused(directory.path("folder.flt/"));
}

TEST(FltFileInputTest, DeviceWithoutAnEndIsRefused)
{
    expectRefused("/dev/zero");
    expectRefused("/dev/null");
}

TEST(FltFileInputTest, PipeWithoutAWriterIsRefusedAtOnce)
{
    ScratchFolder const directory;
    ASSERT_EQ(::mkfifo(directory.path("pipe.flt").c_str(), 0600), 0);
    expectRefused(directory.path("pipe.flt"));
}

TEST(FltFileInputTest, LinkToAFileIsFollowed)
{
    ScratchFolder const directory;
    std::filesystem::create_symlink(directory.write("a.flt", "abc"), directory.path("link.flt"));
    Opened const opened(directory.path("link.flt"));
    EXPECT_TRUE(opened.input->isInFlowCreated());
    EXPECT_EQ(opened.input->getSize(), 3);
    std::filesystem::create_symlink(directory.path("nothing"), directory.path("broken.flt"));
    expectRefused(directory.path("broken.flt"));
}

TEST(FltFileInputTest, BackslashesOfTheNameBecomeSlashesThroughout)
{
    ScratchFolder const directory;
    std::filesystem::create_directory(directory.path("sub"));
    std::string const name = directory.write("sub/a.flt", "abc");
    std::string windows = name;
    std::replace(windows.begin(), windows.end(), '/', '\\');
    Opened const opened(windows);
    EXPECT_TRUE(opened.input->isInFlowCreated());
    EXPECT_STREQ(opened.input->getFileName(), name.c_str());
    EXPECT_EQ(std::string(opened.input->getDirName()), directory.path("sub/"));
    EXPECT_EQ(opened.told, "\nSuccess in opening file: " + name + "\n");
}

TEST(FltFileInputTest, NameWithoutADirectoryHasANullDirName)
{
    Opened const opened("no such file.flt");
    EXPECT_EQ(opened.input->getDirName(), nullptr);
    EXPECT_EQ(opened.input->getAdditionalDirName(), nullptr);
}

TEST(FltFileInputTest, NameWithItsOnlySlashInFrontHasADirNameOfThatSlash)
{
    for (char const* name : {"/no such file.flt", "\\no such file.flt"}) {
        Opened const opened(name);
        EXPECT_STREQ(opened.input->getDirName(), "/");
        EXPECT_STREQ(opened.input->getAdditionalDirName(), "/");
        EXPECT_STREQ(opened.input->getFileName(), "/no such file.flt");
    }
}

TEST(FltFileInputTest, DirNameEndsWithTheLastSlash)
{
    Opened const opened("a\\b/c\\no such file.flt");
    EXPECT_STREQ(opened.input->getDirName(), "a/b/c/");
}

TEST(FltFileInputTest, ShowBufferWritesEveryByteAsANumberWithABlankBehindIt)
{
    ScratchFolder const directory;
    Opened const opened(directory.write("a.flt", std::string("\0\1A\xff", 4)));
    StreamCapture const out(std::cout);
    opened.input->showBuffer();
    EXPECT_EQ(out.str(), "0 1 65 255 ");
}

TEST(FltFileInputTest, ShowBufferOfAFileThatCouldNotBeOpenedWritesNothing)
{
    Opened const opened("no such file.flt");
    StreamCapture const out(std::cout);
    opened.input->showBuffer();
    EXPECT_EQ(out.str(), "");
}

TEST(FltFileInputTest, ReadingAgainAfterTheFileIsClosedChangesNothing)
{
    ScratchFolder const directory;
    Opened const opened(directory.write("a.flt", "abc"));
    opened.input->calculFileSize();
    opened.input->fileToBuffer();
    EXPECT_EQ(opened.input->getSize(), 3);
    EXPECT_EQ(std::string(opened.input->getBuffer(), 3), "abc");
}

constexpr std::size_t most = 20'000'000;

TEST(FltFileInputTest, BytesStayUntilTheParserIsAllowedToDropThem)
{
    ScratchFolder const directory;
    std::string const bytes = std::string().append(most, 'x');
    Opened const opened(directory.write("a.flt", bytes));
    FltFileInput& input = *opened.input;
    char const* const begin = input.getBuffer();
    input.dropBytesBefore(begin + bytes.size());
    input.dropBytes();
    EXPECT_EQ(std::string(begin, bytes.size()), bytes);
}

TEST(FltFileInputTest, OnlyBytesBeforeTheGivenOneAreDropped)
{
    ScratchFolder const directory;
    std::string const bytes = std::string().append(most, 'x');
    Opened const opened(directory.write("a.flt", bytes));
    FltFileInput& input = *opened.input;
    char const* const begin = input.getBuffer();
    input.dropBytesWhenParsed();
    for (std::size_t const at : {0U, 1U, 5'000'000U, 12'000'001U, 12'000'002U}) {
        input.dropBytesBefore(begin + at);
        EXPECT_EQ(std::string(begin + at, bytes.size() - at), bytes.substr(at));
    }
    std::size_t const dropped = bytes.size() / 5 * 3;
    std::string_view const before(begin, dropped);
    EXPECT_NE(before, bytes.substr(0, before.size()));
    input.dropBytes();
    EXPECT_EQ(input.getBuffer(), nullptr);
    StreamCapture const out(std::cout);
    input.showBuffer();
    EXPECT_EQ(out.str(), "");
}

TEST(FltFileInputTest, BytesBeforeTheFirstThatMayBeDroppedStay)
{
    ScratchFolder const directory;
    std::string const bytes = std::string().append(most, 'x');
    Opened const opened(directory.write("a.flt", bytes));
    char const* const begin = opened.input->getBuffer();
    constexpr std::size_t first = 7'000'001, last = 18'000'000;
    opened.input->dropBytesFrom(first);
    opened.input->dropBytesBefore(begin + first - 1);
    opened.input->dropBytesBefore(begin + last);
    std::string_view const all(begin, bytes.size());
    EXPECT_EQ(all.substr(0, first), bytes.substr(0, first));
    EXPECT_EQ(all.substr(last), bytes.substr(last));
    EXPECT_NE(all, bytes);
}

TEST(FltFileInputTest, AFileOfNoBytesHasNoneToDrop)
{
    ScratchFolder const directory;
    Opened const opened(directory.write("a.flt", ""));
    opened.input->dropBytesWhenParsed();
    opened.input->dropBytesBefore(opened.input->getBuffer());
    opened.input->dropBytes();
    EXPECT_EQ(opened.input->getBuffer(), nullptr);
}

} // namespace

TEST(FltFileInputTest, ReadsAnOpenFileWhateverStandsUnderItsName)
{
    ScratchFolder const directory;
    std::string const path = directory.write("sub/a.flt", "the open one");
    OpenFile file = RegularFile::open(path.c_str());
    std::filesystem::remove(path);
    directory.write("sub/a.flt", "another");
    StreamCapture const cout(std::cout);
    FltFileInput input(path.c_str(), std::move(file));
    ASSERT_TRUE(input.isInFlowCreated());
    EXPECT_EQ(std::string(input.getBuffer(), static_cast<std::size_t>(input.getSize())), "the open one");
    EXPECT_EQ(input.getFileName(), path);
    EXPECT_EQ(input.getDirName(), directory / "sub/");
    EXPECT_NE(cout.str().find("Success in opening file: " + path), std::string::npos);
}

/// As one does that grows shorter while it is read. What the kernel tells as a file always does: its size is
/// a page, whatever it holds.
TEST(FltFileInputTest, AFileThatEndsTooEarlyIsReadAsFarAsItGoesAndReported)
{
    std::string const path = "/sys/devices/system/cpu/online";
    std::string const text = contentsOf(path);
    std::size_t const size = std::filesystem::file_size(path);
    ASSERT_LT(text.size(), size);
    StreamCapture const cout(std::cout);
    StreamCapture const cerr(std::cerr);
    errno = EIO;
    FltFileInput input(path.c_str());
    EXPECT_TRUE(input.isInFlowCreated());
    EXPECT_EQ(std::string(input.getBuffer(), text.size()), text);
    EXPECT_NE(cerr.str().find("A file can't be read to its end (another program made it shorter meanwhile): "
                              "the rest of the file, " +
                              std::to_string(size - text.size()) + " bytes from byte offset " +
                              std::to_string(text.size()) + " on, is left out (" + path + ")"),
              std::string::npos)
        << cerr.str();
}

TEST(FltFileInputTest, AFileThatIsNotOpenIsToldOnCerrWhateverStandsUnderItsName)
{
    ScratchFolder const directory;
    std::string const path = directory.write("a.flt", "text");
    StreamCapture const cerr(std::cerr);
    FltFileInput const input(path.c_str(), OpenFile());
    EXPECT_FALSE(input.isInFlowCreated());
    EXPECT_NE(cerr.str().find(path), std::string::npos);
}

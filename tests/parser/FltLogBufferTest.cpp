#include "parser/FltLogBuffer.h"

#include "parser/FltWarningMessageConsole.h"
#include "support/StreamCapture.h"
#include "support/TempDirectory.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltLogBufferTest, FlushesAreTakenLightlyAndCloseWritesTheRest)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "line" << std::endl << "another" << std::flush;
    EXPECT_EQ(directory.read("a.log"), "");
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(directory.read("a.log"), "line\nanother");
    EXPECT_TRUE(log.good());
}

TEST(FltLogBufferTest, WriteWritesWhatIsWaiting)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "one";
    log.buffer.write();
    EXPECT_EQ(directory.read("a.log"), "one");
    log.buffer.write();
    EXPECT_EQ(directory.read("a.log"), "one") << "nothing is written twice";
    log << "two";
    log.buffer.write();
    EXPECT_EQ(directory.read("a.log"), "onetwo");
}

TEST(FltLogBufferTest, PrintedMessageWritesTheOpenLogFirst)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "dumped before the message" << std::endl;
    auto& messages = FltWarningMessageConsole::setOfMessages;
    std::size_t const before = messages.size();
    {
        StreamCapture const printed(std::cerr);
        FltWarningMessageConsole::notifyMessage("kept only", 1, false);
        EXPECT_EQ(directory.read("a.log"), "");
        FltWarningMessageConsole::notifyMessage("printed", 1, true);
        EXPECT_EQ(printed.str(), "printed\n(Warning Level: 1)\n\n");
    }
    messages.erase(messages.begin() + static_cast<std::ptrdiff_t>(before), messages.end());
    EXPECT_EQ(directory.read("a.log"), "dumped before the message\n");
}

TEST(FltLogBufferTest, WriteCurrentWithoutAnOpenLogDoesNothing)
{
    TempDirectory const directory;
    {
        FltLogStream log;
        ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
        log << "text";
    }
    FltLogBuffer::writeCurrent();
    EXPECT_EQ(directory.read("a.log"), "text") << "the buffer that went wrote it";
}

TEST(FltLogBufferTest, LargeOutputGoesToTheFileInBlocksAndComesOutWhole)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        std::string const line = "line " + std::to_string(i) + "\n";
        log << line << std::flush;
        expected += line;
    }
    std::size_t const early = directory.read("a.log").size();
    EXPECT_GT(early, 0U);
    EXPECT_LT(early, expected.size());
    EXPECT_EQ(early % (256 * 1024), 0U);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(directory.read("a.log"), expected);
}

TEST(FltLogBufferTest, SingleOutputLargerThanTheBlockComesOutWhole)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    std::string const text(1000000, 'x');
    log << "begin " << text << " end";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(directory.read("a.log"), "begin " + text + " end");
}

TEST(FltLogBufferTest, OutputAfterCloseIsLostHarmlessly)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "kept";
    EXPECT_TRUE(log.buffer.close());
    log << "lost" << std::endl << std::string(500000, 'x') << 42;
    log.put('c');
    log.flush();
    log.buffer.write();
    EXPECT_EQ(directory.read("a.log"), "kept");
    EXPECT_FALSE(log.buffer.close()) << "there is nothing to close";
    EXPECT_EQ(directory.read("a.log"), "kept");
}

TEST(FltLogBufferTest, OutputBeforeOpenIsLostHarmlessly)
{
    FltLogStream log;
    log << "lost" << std::endl;
    EXPECT_TRUE(log.bad());
    EXPECT_FALSE(log.buffer.close());
}

TEST(FltLogBufferTest, OpenEmptiesAFileThatIsThere)
{
    TempDirectory const directory;
    directory.write("a.log", "from an earlier time");
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(directory.read("a.log"), "");
}

TEST(FltLogBufferTest, FileThatCannotBeMadeIsToldByOpenAndSwallowsTheOutput)
{
    TempDirectory const directory;
    FltLogStream log;
    EXPECT_FALSE(log.buffer.open(directory.path("missing/a.log").c_str()));
    log << "swallowed" << std::endl;
    log.buffer.write();
    FltLogBuffer::writeCurrent();
    EXPECT_FALSE(log.buffer.close());
}

TEST(FltLogBufferTest, FullDiskIsToldByClose)
{
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open("/dev/full"));
    log << "text";
    log.buffer.write();
    log << std::string(1000000, 'x');
    EXPECT_FALSE(log.buffer.close());
}

TEST(FltLogBufferTest, BufferOpensAgainAfterAFailure)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open("/dev/full"));
    log << "lost";
    EXPECT_FALSE(log.buffer.close());
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "kept";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(directory.read("a.log"), "kept");
}

TEST(FltLogBufferTest, OpeningASecondFileClosesTheFirst)
{
    TempDirectory const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "first";
    ASSERT_TRUE(log.buffer.open(directory.path("b.log").c_str()));
    EXPECT_EQ(directory.read("a.log"), "first");
    log << "second";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(directory.read("a.log"), "first");
    EXPECT_EQ(directory.read("b.log"), "second");
}

TEST(FltLogBufferTest, ClosingAnOlderLogLeavesTheOpenOneTheCurrent)
{
    TempDirectory const directory;
    FltLogStream older;
    FltLogStream newer;
    ASSERT_TRUE(older.buffer.open(directory.path("a.log").c_str()));
    ASSERT_TRUE(newer.buffer.open(directory.path("b.log").c_str()));
    older << "older";
    newer << "newer";
    EXPECT_TRUE(older.buffer.close());
    FltLogBuffer::writeCurrent();
    EXPECT_EQ(directory.read("a.log"), "older");
    EXPECT_EQ(directory.read("b.log"), "newer");
}

} // namespace

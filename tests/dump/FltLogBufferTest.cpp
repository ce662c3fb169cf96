#include "dump/FltLogBuffer.h"

#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltLogBufferTest, FlushesAreTakenLightlyAndCloseWritesTheRest)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "line" << std::endl << "another" << std::flush;
    EXPECT_EQ(contentsOf(directory.path("a.log")), "");
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "line\nanother");
    EXPECT_TRUE(log.good());
}

TEST(FltLogBufferTest, WriteWritesWhatIsWaiting)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "one";
    log.buffer.write();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "one");
    log.buffer.write();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "one") << "nothing is written twice";
    log << "two";
    log.buffer.write();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "onetwo");
}

TEST(FltLogBufferTest, PrintedMessageWritesTheOpenLogFirst)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "dumped before the message" << std::endl;
    auto& messages = FltWarningMessageConsole::setOfMessages;
    std::size_t const before = messages.size();
    {
        StreamCapture const printed(std::cerr);
        FltWarningMessageConsole::notifyMessage("kept only", 1, false);
        EXPECT_EQ(contentsOf(directory.path("a.log")), "");
        FltWarningMessageConsole::notifyMessage("printed", 1, true);
        EXPECT_EQ(printed.str(), "printed\n(Warning Level: 1)\n\n");
    }
    messages.erase(messages.begin() + static_cast<std::ptrdiff_t>(before), messages.end());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "dumped before the message\n");
}

TEST(FltLogBufferTest, WriteCurrentWithoutAnOpenLogDoesNothing)
{
    ScratchFolder const directory;
    {
        FltLogStream log;
        ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
        log << "text";
    }
    FltLogBuffer::writeCurrent();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "text") << "the buffer that went wrote it";
}

TEST(FltLogBufferTest, LargeOutputGoesToTheFileInBlocksAndComesOutWhole)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        std::string const line = "line " + std::to_string(i) + "\n";
        log << line << std::flush;
        expected += line;
    }
    std::size_t const early = contentsOf(directory.path("a.log")).size();
    EXPECT_GT(early, 0U);
    EXPECT_LT(early, expected.size());
    EXPECT_EQ(early % (256 * 1024), 0U);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), expected);
}

TEST(FltLogBufferTest, LinesOfADumpComeOutWholeAndInOrderWithOtherOutputBetween)
{
    ScratchFolder const directory;
    std::string expected;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    for (int i = 0; i < 40000; ++i) {
        FltDump::line(log, "value of a line: ", i);
        expected += "value of a line: " + std::to_string(i) + "\n";
        if (i % 3 == 0) {
            log << i << std::endl;
            expected += std::to_string(i) + "\n";
        }
    }
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), expected);
}

TEST(FltLogBufferTest, LineOfADumpOntoAFailedStreamIsLostThoughTheLogIsOpen)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log.setstate(std::ios_base::failbit);
    FltDump::line(log, "lost ", 1);
    log.clear();
    FltDump::line(log, "kept ", 2);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept 2\n");
}

TEST(FltLogBufferTest, LineOfADumpFlushesTheTiedStreamFirst)
{
    ScratchFolder const directory;
    CaptureBuffer buffer;
    std::ostream other(&buffer);
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log.tie(&other);
    FltDump::line(log, "line ", 1);
    log.tie(nullptr);
    EXPECT_GE(buffer.flushes(), 1);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "line 1\n");
}

TEST(FltLogBufferTest, SingleOutputLargerThanTheBlockComesOutWhole)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    std::string const text(1000000, 'x');
    log << "begin " << text << " end";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "begin " + text + " end");
}

TEST(FltLogBufferTest, OutputAfterCloseIsLostHarmlessly)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "kept";
    EXPECT_TRUE(log.buffer.close());
    log << "lost" << std::endl << std::string(500000, 'x') << 42;
    log.put('c');
    log.flush();
    log.buffer.write();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept");
    EXPECT_FALSE(log.buffer.close()) << "there is nothing to close";
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept");
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
    ScratchFolder const directory;
    directory.write("a.log", "from an earlier time");
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "");
}

TEST(FltLogBufferTest, FileThatCannotBeMadeIsToldByOpenAndSwallowsTheOutput)
{
    ScratchFolder const directory;
    FltLogStream log;
    EXPECT_FALSE(log.buffer.open((directory.path("missing") + "/a.log").c_str()));
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
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open("/dev/full"));
    log << "lost";
    EXPECT_FALSE(log.buffer.close());
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "kept";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept");
}

TEST(FltLogBufferTest, OpeningASecondFileClosesTheFirst)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(log.buffer.open(directory.path("a.log").c_str()));
    log << "first";
    ASSERT_TRUE(log.buffer.open(directory.path("b.log").c_str()));
    EXPECT_EQ(contentsOf(directory.path("a.log")), "first");
    log << "second";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "first");
    EXPECT_EQ(contentsOf(directory.path("b.log")), "second");
}

TEST(FltLogBufferTest, ClosingAnOlderLogLeavesTheOpenOneTheCurrent)
{
    ScratchFolder const directory;
    FltLogStream older;
    FltLogStream newer;
    ASSERT_TRUE(older.buffer.open(directory.path("a.log").c_str()));
    ASSERT_TRUE(newer.buffer.open(directory.path("b.log").c_str()));
    older << "older";
    newer << "newer";
    EXPECT_TRUE(older.buffer.close());
    FltLogBuffer::writeCurrent();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "older");
    EXPECT_EQ(contentsOf(directory.path("b.log")), "newer");
}

} // namespace

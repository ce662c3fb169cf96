#include "dump/FltLogBuffer.h"

#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "support/ClosedInput.h"
#include "support/FileSizeLimit.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <sys/types.h>
#include <utility>
#include <vector>

// The linker has the library call the one for write(), and this file reach the system's own by the other.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" ssize_t __wrap_write(int file, void const* bytes, std::size_t size);
extern "C" ssize_t __real_write(int file, void const* bytes, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)

namespace
{

/// One call of write(): how many bytes it takes at most, or the error that it ends with.
struct WriteAnswer {
    std::size_t most;
    int error;
};

/// While this object lives the next calls of write() go as planned, one after the other.
class PlannedWrites
{
public:
    explicit PlannedWrites(std::vector<WriteAnswer> answers)
    {
        std::reverse(answers.begin(), answers.end());
        planned = std::move(answers);
    }
    ~PlannedWrites() { planned.clear(); }

    PlannedWrites(PlannedWrites const&) = delete;
    PlannedWrites& operator=(PlannedWrites const&) = delete;

    static bool areDone() { return planned.empty(); }

    static ssize_t write(int file, void const* bytes, std::size_t size)
    {
        if (planned.empty())
            return __real_write(file, bytes, size);
        WriteAnswer const answer = planned.back();
        planned.pop_back();
        if (answer.error == 0)
            return __real_write(file, bytes, std::min(size, answer.most)); // errno stays as it was
        errno = answer.error;
        return -1;
    }

private:
    inline static std::vector<WriteAnswer> planned; ///< The next one last.
};

} // namespace

extern "C" ssize_t __wrap_write(int file, void const* bytes, std::size_t size)
{
    return PlannedWrites::write(file, bytes, size);
}

namespace
{

bool opens(FltLogStream& log, std::string const& path)
{
    return log.buffer.open(path.c_str()) == SideFile::Outcome::opened;
}

TEST(FltLogBufferTest, FlushesAreTakenLightlyAndCloseWritesTheRest)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
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
    ASSERT_TRUE(opens(log, directory.path("a.log")));
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
    ASSERT_TRUE(opens(log, directory.path("a.log")));
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
        ASSERT_TRUE(opens(log, directory.path("a.log")));
        log << "text";
    }
    FltLogBuffer::writeCurrent();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "text") << "the buffer that went wrote it";
}

TEST(FltLogBufferTest, LargeOutputGoesToTheFileInBlocksAndComesOutWhole)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
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

TEST(FltLogBufferTest, FileThatHasTheNumberOfAClosedInputComesOutWhole)
{
    ScratchFolder const directory;
    ClosedInput const closed;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        log << "line " << i << '\n';
        expected += "line " + std::to_string(i) + '\n';
    }
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), expected);
}

TEST(FltLogBufferTest, LinesOfADumpComeOutWholeAndInOrderWithOtherOutputBetween)
{
    ScratchFolder const directory;
    std::string expected;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    for (int i = 0; i < 40000; ++i) {
        FltDump(log).line("value of a line: ", i);
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
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log.setstate(std::ios_base::failbit);
    FltDump(log).line("lost ", 1);
    log.clear();
    FltDump(log).line("kept ", 2);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept 2\n");
}

TEST(FltLogBufferTest, LineOfADumpFlushesTheTiedStreamFirst)
{
    ScratchFolder const directory;
    CaptureBuffer buffer;
    std::ostream other(&buffer);
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log.tie(&other);
    FltDump(log).line("line ", 1);
    log.tie(nullptr);
    EXPECT_GE(buffer.flushes(), 1);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "line 1\n");
}

TEST(FltLogBufferTest, SingleOutputLargerThanTheBlockComesOutWhole)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    std::string const text(1000000, 'x');
    log << "begin " << text << " end";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "begin " + text + " end");
}

TEST(FltLogBufferTest, OutputAfterCloseIsLostHarmlessly)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << "kept";
    EXPECT_TRUE(log.buffer.close());
    log << "lost" << std::endl << std::string(500000, 'x') << 42;
    log.put('c');
    log.flush();
    log.buffer.write();
    log << "lost" << std::endl;
    log.put('c');
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept");
    EXPECT_FALSE(log.buffer.close()) << "there is nothing to close";
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept");
}

TEST(FltLogBufferTest, OutputBeforeOpenIsLostHarmlessly)
{
    FltLogStream log;
    log << "lost" << std::endl;
    EXPECT_TRUE(log.good());
    EXPECT_FALSE(log.buffer.close());
}

TEST(FltLogBufferTest, OpenEmptiesAFileThatIsThere)
{
    ScratchFolder const directory;
    directory.write("a.log", "from an earlier time");
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "");
}

TEST(FltLogBufferTest, FileThatCannotBeMadeIsToldByOpenAndSwallowsTheOutput)
{
    ScratchFolder const directory;
    FltLogStream log;
    EXPECT_FALSE(opens(log, directory.path("missing") + "/a.log"));
    log << "swallowed" << std::endl;
    log.buffer.write();
    FltLogBuffer::writeCurrent();
    EXPECT_FALSE(log.buffer.close());
}

TEST(FltLogBufferTest, FullDiskIsReportedByCloseAndByNothingElse)
{
    ScratchFolder const directory;
    FileSizeLimit const limit(100);
    FltLogStream log;
    log.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << std::string(200, 'x');
    log.buffer.write();
    log << std::string(1000000, 'x') << std::endl;
    FltDump(log).line("number: ", 1);
    EXPECT_FALSE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), std::string(100, 'x'));
}

TEST(FltLogBufferTest, WriteThatASignalInterruptsIsTriedAgain)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << "written all the same";
    PlannedWrites const writes({{0, EINTR}, {0, EINTR}});
    EXPECT_TRUE(log.buffer.close());
    EXPECT_TRUE(PlannedWrites::areDone());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "written all the same");
}

TEST(FltLogBufferTest, WriteOfAPartGoesOnWithTheRest)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << "one two three";
    PlannedWrites const writes({{1, 0}, {0, EINTR}, {4, 0}});
    EXPECT_TRUE(log.buffer.close());
    EXPECT_TRUE(PlannedWrites::areDone());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "one two three");
}

TEST(FltLogBufferTest, WriteThatFailsOrTakesNothingIsToldByClose)
{
    for (WriteAnswer const& answer : {WriteAnswer{0, EIO}, WriteAnswer{0, ENOSPC}, WriteAnswer{0, 0}}) {
        ScratchFolder const directory;
        FltLogStream log;
        ASSERT_TRUE(opens(log, directory.path("a.log")));
        log << "lost";
        PlannedWrites const writes({answer});
        log.buffer.write();
        log << "and this with it";
        EXPECT_FALSE(log.buffer.close()) << answer.error;
        EXPECT_EQ(contentsOf(directory.path("a.log")), "") << answer.error;
    }
}

TEST(FltLogBufferTest, WriteThatTakesNothingAfterASignalIsNotTriedAgain)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << "lost";
    PlannedWrites const writes({{0, EINTR}, {0, 0}});
    EXPECT_FALSE(log.buffer.close());
    EXPECT_TRUE(PlannedWrites::areDone());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "");
}

TEST(FltLogBufferTest, BufferOpensAgainAfterAFailure)
{
    ScratchFolder const directory;
    FltLogStream log;
    {
        FileSizeLimit const limit(0);
        ASSERT_TRUE(opens(log, directory.path("full.log")));
        log << "lost";
        EXPECT_FALSE(log.buffer.close());
    }
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << "kept";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "kept");
}

TEST(FltLogBufferTest, AFileThatIsNotItsOwnIsRefusedAndTheOutputSwallowed)
{
    ScratchFolder const directory;
    std::string const database = directory.write("a.flt", "database");
    FltLogStream log;
    log.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    EXPECT_EQ(log.buffer.open(database.c_str(), database.c_str()), SideFile::Outcome::refused);
    log << "swallowed" << std::endl;
    EXPECT_FALSE(log.buffer.close());
    EXPECT_EQ(contentsOf(database), "database");
}

TEST(FltLogBufferTest, OpeningASecondFileClosesTheFirst)
{
    ScratchFolder const directory;
    FltLogStream log;
    ASSERT_TRUE(opens(log, directory.path("a.log")));
    log << "first";
    ASSERT_TRUE(opens(log, directory.path("b.log")));
    EXPECT_EQ(contentsOf(directory.path("a.log")), "first");
    log << "second";
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(directory.path("a.log")), "first");
    EXPECT_EQ(contentsOf(directory.path("b.log")), "second");
}

TEST(FltLogBufferTest, LongFileAfterAnotherOneEndsWithItsLastByte)
{
    ScratchFolder const directory;
    FltLogStream log;
    std::string const text(3'000'000, 'x');
    for (char const* const name : {"a.log", "b.log"}) {
        ASSERT_TRUE(opens(log, directory.path(name)));
        log << text;
        EXPECT_TRUE(log.buffer.close());
        EXPECT_EQ(contentsOf(directory.path(name)).size(), text.size()) << name;
    }
}

TEST(FltLogBufferTest, ClosingAnOlderLogLeavesTheOpenOneTheCurrent)
{
    ScratchFolder const directory;
    FltLogStream older;
    FltLogStream newer;
    ASSERT_TRUE(opens(older, directory.path("a.log")));
    ASSERT_TRUE(opens(newer, directory.path("b.log")));
    older << "older";
    newer << "newer";
    EXPECT_TRUE(older.buffer.close());
    FltLogBuffer::writeCurrent();
    EXPECT_EQ(contentsOf(directory.path("a.log")), "older");
    EXPECT_EQ(contentsOf(directory.path("b.log")), "newer");
}

} // namespace

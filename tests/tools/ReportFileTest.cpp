#include "convert/ReportFile.h"

#include "ReportExamples.h"
#include "WrittenReport.h"
#include "support/ScratchFolder.h"
#include "support/ToolError.h"

#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

/// Does something in another process.
/// @return its exit code
int elsewhere(std::function<int()> const& work)
{
    pid_t const child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST(ReportFile, keepsTheLinesThatAreTakenOverAndThoseThatAreAdded)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    {
        ReportFile file(path, exampleRun());
        file.begin({});
        file.add(exampleLine("a.flt"));
        file.add(exampleLine("b.flt"));
        EXPECT_EQ(file.problem(), "");
    }
    {
        ReportFile file(path, exampleRun());
        ASSERT_TRUE(file.earlierLine("a.flt"));
        ASSERT_TRUE(file.earlierLine("b.flt"));
        EXPECT_EQ(file.earlierLine("b.flt")->text(), exampleLine("b.flt").text());
        EXPECT_FALSE(file.earlierLine("c.flt"));
        file.begin({"b.flt"});
        file.add(exampleLine("c.flt"));
    }
    WrittenReport const report = WrittenReport(contentsOf(path));
    ASSERT_EQ(report.lines.size(), 2U);
    EXPECT_EQ(report.lines[0].input, "b.flt");
    EXPECT_EQ(report.lines[1].input, "c.flt");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "."), {}), 1)
        << "nothing is left beside it";
}

TEST(ReportFile, holdsWhatWasDoneWhenItsProcessIsKilled)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    elsewhere([&] {
        ReportFile file(path, exampleRun());
        file.begin({});
        file.add(exampleLine("a.flt"));
        return ::kill(::getpid(), SIGKILL);
    });
    ReportFile const file(path, exampleRun());
    EXPECT_TRUE(file.earlierRun());
    EXPECT_TRUE(file.earlierLine("a.flt"));
}

TEST(ReportFile, takesOverThousandsOfLinesByteForByte)
{
    ScratchFolder const folder;
    std::string text = exampleRun().text();
    std::vector<std::string> databases;
    for (int i = 0; i < 3000; ++i) {
        databases.push_back(std::to_string(i) + ".flt");
        text += exampleLine(databases.back()).text();
    }
    std::string const path = folder.write("a.jsonl", text);
    ReportFile file(path, exampleRun());
    file.begin(databases);
    EXPECT_EQ(file.problem(), "");
    EXPECT_TRUE(contentsOf(path) == text);
}

TEST(ReportFile, takesOverTheLastLineOfADatabase)
{
    ScratchFolder const folder;
    ReportLine later = exampleLine("a.flt");
    later.bytesWritten = 99;
    std::string const path =
        folder.write("a.jsonl", exampleRun().text() + exampleLine("a.flt").text() + later.text());
    ReportFile file(path, exampleRun());
    EXPECT_EQ(file.earlierLine("a.flt")->bytesWritten, 99U);
    file.begin({"a.flt"});
    EXPECT_EQ(contentsOf(path), exampleRun().text() + later.text());
}

TEST(ReportFile, knowsNothingOfWhatWasCutOffMeanwhile)
{
    ScratchFolder const folder;
    std::string const text = exampleRun().text() + exampleLine("a.flt").text();
    std::string const path = folder.write("a.jsonl", text + exampleLine("b.flt").text());
    ReportFile file(path, exampleRun());
    std::filesystem::resize_file(path, text.size() + 20);
    EXPECT_TRUE(file.earlierLine("a.flt"));
    EXPECT_FALSE(file.earlierLine("b.flt"));
    file.begin({"a.flt", "b.flt"});
    EXPECT_EQ(contentsOf(path), text);
}

TEST(ReportFile, isWrittenByTwoAtATime)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    int toChild[2], toParent[2];
    ASSERT_EQ(::pipe(toChild) + ::pipe(toParent), 0);
    char token = 'x';
    ReportFile first(path, exampleRun());
    pid_t const child = ::fork();
    if (child == 0) {
        ReportFile early(path, exampleRun()); // before the first one has begun
        bool const isTurn = ::write(toParent[1], &token, 1) == 1 && ::read(toChild[0], &token, 1) == 1;
        early.begin({});
        early.add(exampleLine("b.flt"));
        ReportFile late(path, exampleRun());
        late.begin({});
        late.add(exampleLine("c.flt"));
        ::_exit(isTurn && early.problem().empty() && late.problem().empty() ? 0 : 1);
    }
    ASSERT_EQ(::read(toParent[0], &token, 1), 1);
    first.begin({});
    first.add(exampleLine("a.flt"));
    ASSERT_EQ(::write(toChild[1], &token, 1), 1);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    first.add(exampleLine("d.flt"));
    for (int const end : {toChild[0], toChild[1], toParent[0], toParent[1]})
        ::close(end);
    std::string const text = contentsOf(path);
    EXPECT_EQ(WrittenReport(text).lines.size(), 4U) << text;
    EXPECT_EQ(WrittenReport(text).torn, 0U) << text;
}

TEST(ReportFile, isNotSharedWithARunOfAnotherKind)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    ReportFile first(path, exampleRun());
    first.begin({});
    EXPECT_EQ(elsewhere([&] {
                  try {
                      ReportFile const other(path, exampleRun("-b"));
                      return 1;
                  } catch (ToolError const&) {
                      return 0;
                  }
              }),
              0);
}

TEST(ReportFile, replacesNoOtherFile)
{
    ScratchFolder const folder;
    std::string const other = folder.write("letter.txt", "Dear reader,\n");
    EXPECT_THROW(ReportFile(other, exampleRun()), ToolError);
    EXPECT_THROW(ReportFile("/dev/null", exampleRun()), ToolError);
    EXPECT_THROW(ReportFile(folder / ".", exampleRun()), ToolError);
    EXPECT_THROW(ReportFile(folder / "no/report", exampleRun()), ToolError);
    EXPECT_EQ(contentsOf(other), "Dear reader,\n");
    ReportFile const torn(folder.write("torn", "{\"run\":{\"prog"), exampleRun());
    EXPECT_FALSE(torn.earlierRun()) << "a first line that isn't whole is nobody's";
}

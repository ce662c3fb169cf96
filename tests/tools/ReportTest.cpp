#include "convert/Report.h"

#include "convert/ReportFile.h"
#include "support/ScratchFolder.h"
#include "support/ToolError.h"

#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

ReportRun run(std::string const& options = "--lod all")
{
    return {"flt2iv", "1.2.3", options, {3, 16}, 1000};
}

ReportLine line(std::string const& input = "north/a.flt")
{
    ReportLine line;
    line.input = input;
    line.output = "north/a.iv";
    line.bytesRead = 12;
    line.bytesWritten = 34;
    line.names = {"library/tree.iv"};
    line.facts.seconds = 0.25;
    line.facts.memory = 1 << 20;
    line.facts.messages = {1, 2, 3};
    line.facts.missingTextures = {"no.rgb"};
    line.facts.triangles = 56;
    line.facts.box = ConversionFacts::Box{{-1, -2, -3}, {1e6, 2, 0.1}};
    line.facts.latitude = 47.5;
    line.facts.longitude = -8.25;
    line.facts.projection = 3;
    line.facts.needs = {{"models/a.flt", {12, 1234567890123456789}}};
    return line;
}

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

TEST(ReportLine, isReadAsItWasWritten)
{
    std::string const text = line().text();
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    std::optional<ReportLine> const read = ReportLine::from(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->text(), text);
    EXPECT_EQ(read->facts.needs, line().facts.needs);
    EXPECT_EQ(read->facts.box->most[0], 1e6);
    EXPECT_EQ(read->facts.messages[2], 3U);
}

TEST(ReportLine, takesWhatNoTextHolds)
{
    ReportLine strange = line("\xff\n\u009b.flt");
    strange.facts.latitude = std::numeric_limits<double>::quiet_NaN();
    strange.facts.longitude = std::numeric_limits<double>::infinity();
    std::string const text = strange.text();
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    std::optional<ReportLine> const read = ReportLine::from(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->facts.latitude, 0);
    EXPECT_EQ(read->text(), text);
}

TEST(ReportLine, isAbsentIfItIsNotWhole)
{
    std::string const text = line().text();
    for (std::size_t size = 0; size + 2 < text.size(); ++size)
        EXPECT_FALSE(ReportLine::from(std::string_view(text).substr(0, size))) << size;
    for (char const* const other : {"{}", "[]", "null", "{\"input\":1}", "{\"run\":{}}"})
        EXPECT_FALSE(ReportLine::from(other)) << other;
}

TEST(Report, hasTheLastLineOfEachDatabase)
{
    ReportLine later = line();
    later.bytesWritten = 99;
    Report const report =
        Report::from(run().text() + line().text() + line("b.flt").text() + later.text() + "{torn");
    ASSERT_TRUE(report.run);
    EXPECT_TRUE(report.run->isLike(run()));
    EXPECT_EQ(report.run->databases, 1000U);
    ASSERT_EQ(report.lines.size(), 2U);
    EXPECT_EQ(report.lines[0].bytesWritten, 99U);
    EXPECT_EQ(report.torn, 1U);
    std::string const text = line().text();
    EXPECT_EQ(Report::from(run().text() + text.substr(0, text.size() - 1)).lines.size(), 0U)
        << "without its end a line may lack digits";
    EXPECT_FALSE(Report::from("").run);
}

TEST(Report, isOfNoUseToARunOfAnotherKind)
{
    EXPECT_TRUE(run().isLike(run()));
    EXPECT_FALSE(run().isLike(run("--lod lowest")));
    ReportRun other = run();
    other.part.count = 17;
    EXPECT_FALSE(run().isLike(other));
    other = run();
    other.version = "1.2.4";
    EXPECT_FALSE(run().isLike(other));
}

TEST(ReportFile, keepsTheLinesThatAreTakenOverAndThoseThatAreAdded)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    {
        ReportFile file(path, run());
        file.begin({});
        file.add(line("a.flt"));
        file.add(line("b.flt"));
        EXPECT_EQ(file.problem(), "");
    }
    {
        ReportFile file(path, run());
        ASSERT_EQ(file.earlier().lines.size(), 2U);
        file.begin({file.earlier().lines[1]});
        file.add(line("c.flt"));
    }
    Report const report = Report::from(contentsOf(path));
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
        ReportFile file(path, run());
        file.begin({});
        file.add(line("a.flt"));
        return ::kill(::getpid(), SIGKILL);
    });
    ReportFile const file(path, run());
    EXPECT_EQ(file.earlier().lines.size(), 1U);
}

TEST(ReportFile, isWrittenByTwoAtATime)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    int toChild[2], toParent[2];
    ASSERT_EQ(::pipe(toChild) + ::pipe(toParent), 0);
    char token = 'x';
    ReportFile first(path, run());
    pid_t const child = ::fork();
    if (child == 0) {
        ReportFile early(path, run()); // before the first one has begun
        bool const isTurn = ::write(toParent[1], &token, 1) == 1 && ::read(toChild[0], &token, 1) == 1;
        early.begin({});
        early.add(line("b.flt"));
        ReportFile late(path, run());
        late.begin({});
        late.add(line("c.flt"));
        ::_exit(isTurn && early.problem().empty() && late.problem().empty() ? 0 : 1);
    }
    ASSERT_EQ(::read(toParent[0], &token, 1), 1);
    first.begin({});
    first.add(line("a.flt"));
    ASSERT_EQ(::write(toChild[1], &token, 1), 1);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    first.add(line("d.flt"));
    for (int const end : {toChild[0], toChild[1], toParent[0], toParent[1]})
        ::close(end);
    std::string const text = contentsOf(path);
    EXPECT_EQ(Report::from(text).lines.size(), 4U) << text;
    EXPECT_EQ(Report::from(text).torn, 0U) << text;
}

TEST(ReportFile, isNotSharedWithARunOfAnotherKind)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.jsonl";
    ReportFile first(path, run());
    first.begin({});
    EXPECT_EQ(elsewhere([&] {
                  try {
                      ReportFile const other(path, run("-b"));
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
    EXPECT_THROW(ReportFile(other, run()), ToolError);
    EXPECT_THROW(ReportFile("/dev/null", run()), ToolError);
    EXPECT_THROW(ReportFile(folder / ".", run()), ToolError);
    EXPECT_THROW(ReportFile(folder / "no/report", run()), ToolError);
    EXPECT_EQ(contentsOf(other), "Dear reader,\n");
    ReportFile const torn(folder.write("torn", "{\"run\":{\"prog"), run());
    EXPECT_FALSE(torn.earlier().run) << "a first line that isn't whole is nobody's";
}

// Reports of runs, and what another run with one does, with each program that converts.

#include "Converter.h"
#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "WrittenReport.h"
#include "support/SmallPictures.h"
#include "support/Text.h"
#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

class ConversionReport : public testing::TestWithParam<Converter>
{
protected:
    std::string database(std::string const& name, SmallDatabase const& small = {}) const
    {
        return folder.write("tree/" + name, small.bytes());
    }

    void tiles(int count) const
    {
        for (int i = 0; i < count; ++i)
            database("t" + std::to_string(i) + ".flt");
    }

    std::string arguments(std::string const& options) const
    {
        return options + " --report " + path + " -o " + (folder / "out/") + " " + (folder / "tree");
    }

    ProgramRun run(std::string const& options = "") const
    {
        return ProgramRun(GetParam().program, arguments(options));
    }

    WrittenReport report() const { return WrittenReport(contentsOf(path)); }

    /// The bytes of all results by their names.
    std::map<std::string, std::string> results() const
    {
        std::map<std::string, std::string> files;
        std::error_code ignored;
        for (fs::directory_entry const& file : fs::recursive_directory_iterator(folder / "out", ignored))
            if (file.is_regular_file())
                files[file.path().filename().string()] = contentsOf(file.path());
        return files;
    }

    std::string result(std::string const& name) const { return folder / ("out/" + name + GetParam().ending); }

    /// Has a file look as if it were older, which no writing brings about.
    static void age(std::string const& file, int seconds)
    {
        fs::last_write_time(file, fs::last_write_time(file) - std::chrono::seconds(seconds));
    }

    /// What another run says of so many databases when there is nothing to do.
    static std::string nothingToDo(int count)
    {
        return "0 of " + std::to_string(count) + " databases converted, " + std::to_string(count) +
               " up to date\n";
    }

    ScratchFolder folder;
    std::string const path = folder / "report.jsonl";
};

} // namespace

TEST_P(ConversionReport, hasALineForEachDatabase)
{
    static_cast<void>(folder.write("tree/tree.rgb", SmallPictures::plainSgi(4)));
    database("a.flt", {{}, "tree.rgb", 0});
    database("north/b.flt", {{}, "lost.rgb", 0});
    static_cast<void>(folder.write("tree/broken.flt", "no database"));
    EXPECT_EQ(run("-q").exitCode, 1);
    WrittenReport const told = report();
    ASSERT_TRUE(told.run);
    EXPECT_EQ(told.run->databases, 3U);
    EXPECT_EQ(told.torn, 0U);
    std::map<std::string, ReportLine> lines;
    for (ReportLine const& line : told.lines)
        lines[line.input] = line;
    ASSERT_EQ(lines.size(), 3U);
    ReportLine const& first = lines["a.flt"];
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.output, std::string("a") + GetParam().ending);
    EXPECT_EQ(first.bytesWritten, fs::file_size(result("a")));
    EXPECT_EQ(first.bytesRead, fs::file_size(folder / "tree/a.flt"));
    EXPECT_EQ(first.facts.triangles, 1U);
    ASSERT_TRUE(first.facts.box);
    EXPECT_EQ(first.facts.box->most, (std::array<double, 3>{1, 1, 0}));
    EXPECT_GT(first.facts.memory, 0U);
    EXPECT_EQ(first.facts.needs.size(), 2U) << "the database and its texture";
    EXPECT_EQ(lines["north/b.flt"].facts.missingTextures, std::vector<std::string>{"lost.rgb"});
    EXPECT_EQ(lines["north/b.flt"].facts.messages[1], 1U);
    EXPECT_EQ(lines["broken.flt"].exitCode, 1);
    EXPECT_TRUE(holds(lines["broken.flt"].problem, "not an OpenFlight database"));
}

TEST_P(ConversionReport, saysWhatIsUpToDate)
{
    tiles(5);
    EXPECT_EQ(run().output, "5 of 5 databases converted\n");
    EXPECT_EQ(run().output, nothingToDo(5));
    EXPECT_EQ(report().lines.size(), 5U) << "they are taken over";
    age(folder / "tree/t2.flt", 3600);
    EXPECT_EQ(run().output, "1 of 5 databases converted, 4 up to date\n")
        << "another time, though an older one";
    fs::remove(result("t3"));
    EXPECT_EQ(run().output, "1 of 5 databases converted, 4 up to date\n");
    fs::resize_file(result("t4"), fs::file_size(result("t4")) - 1);
    EXPECT_EQ(run().output, "1 of 5 databases converted, 4 up to date\n");
    EXPECT_EQ(run().output, nothingToDo(5));
    fs::remove(path);
    EXPECT_EQ(run().output, "5 of 5 databases converted\n");
}

TEST_P(ConversionReport, knowsReferencesAndTextures)
{
    std::string const texture = folder.write("tree/tree.rgb", SmallPictures::plainSgi(4));
    database("a.flt", {{"library/b.flt"}, "", 0});
    std::string const inner = database("library/b.flt", {{}, "../tree.rgb", 0});
    database("c.flt");
    EXPECT_EQ(run("-q").exitCode, 0);
    EXPECT_EQ(run().output, nothingToDo(3));
    age(inner, 3600);
    EXPECT_EQ(run().output, "2 of 3 databases converted, 1 up to date\n") << "it and the one that holds it";
    age(texture, 3600);
    EXPECT_EQ(run().output, "2 of 3 databases converted, 1 up to date\n");
    EXPECT_EQ(run().output, nothingToDo(3));
}

TEST_P(ConversionReport, isOfNoUseForOtherOptionsOrParts)
{
    tiles(6);
    EXPECT_EQ(run("-q").exitCode, 0);
    ProgramRun const other = run("--units stored");
    EXPECT_EQ(other.output, "6 of 6 databases converted\n");
    EXPECT_TRUE(holds(other.errors, "other options")) << other.errors;
    EXPECT_EQ(run("--units stored -j 1").output, nothingToDo(6)) << "jobs have no effect on results";
    EXPECT_EQ(run("--units stored --shard 0/2 -q").exitCode, 0);
    ProgramRun const third = run("--units stored --shard 0/3");
    EXPECT_TRUE(
        holds(third.errors, "the report is of part 0/2, and this is part 0/3: everything is made anew"))
        << third.errors;
    EXPECT_FALSE(holds(third.output, "up to date")) << third.output;
}

TEST_P(ConversionReport, forgetsWhatIsThereNoMore)
{
    tiles(4);
    EXPECT_EQ(run("-q").exitCode, 0);
    fs::remove(folder / "tree/t1.flt");
    EXPECT_EQ(run().output, nothingToDo(3));
    EXPECT_EQ(report().lines.size(), 3U);
}

TEST_P(ConversionReport, triesWhatHasFailedAgain)
{
    tiles(2);
    std::string const broken = folder.write("tree/broken.flt", "no database");
    EXPECT_EQ(run("-q").exitCode, 1);
    EXPECT_EQ(run("-q").exitCode, 1);
    static_cast<void>(folder.write("tree/broken.flt", SmallDatabase().bytes()));
    EXPECT_EQ(run().output, "1 of 3 databases converted, 2 up to date\n");
}

TEST_P(ConversionReport, countsALineThatIsNotWholeAsAbsent)
{
    tiles(4);
    EXPECT_EQ(run("-q -j 1").exitCode, 0);
    std::string const whole = contentsOf(path);
    static_cast<void>(folder.write("report.jsonl", whole.substr(0, whole.size() - 20)));
    EXPECT_EQ(run().output, "1 of 4 databases converted, 3 up to date\n");
    EXPECT_EQ(report().lines.size(), 4U);
    EXPECT_EQ(report().torn, 0U);
}

TEST_P(ConversionReport, letsAKilledRunGoOnWhereItWas)
{
    constexpr int count = 40;
    tiles(count);
    EXPECT_EQ(run("-q").exitCode, 0);
    auto const whole = results();
    fs::remove_all(folder / "out");
    fs::remove(path);
    // Ended as soon as the report has a few lines more, again and again.
    for (int kills = 0, lines = 4; kills < 5; ++kills, lines += 5) {
        std::string const script =
            folder.write("kill.sh", std::string(VELLOREADER_PROGRAMS) + GetParam().program + " -q -j 2 " +
                                        arguments("") + " &\nrun=$!\nwhile [ \"$(wc -l <'" + path +
                                        "' 2>/dev/null || echo 0)\" -lt " + std::to_string(lines) +
                                        " ] && kill -0 $run; do :; done\nkill -KILL $run\nwait $run\n");
        static_cast<void>(std::system(("bash " + script + " 2>/dev/null").c_str()));
        for (auto const& [name, bytes] : results())
            EXPECT_TRUE(name.front() == '.' || bytes == whole.at(name)) << "half a result: " << name;
    }
    std::size_t const done = report().lines.size();
    EXPECT_GT(done, 10U);
    ProgramRun const last = run();
    EXPECT_EQ(last.exitCode, 0) << last.errors;
    EXPECT_EQ(last.output.find(std::to_string(count - done) + " of 40 databases converted"), 0U)
        << last.output;
    EXPECT_EQ(results(), whole) << "nothing is lost, and nothing is left over";
    EXPECT_EQ(report().lines.size(), static_cast<std::size_t>(count));
}

TEST_P(ConversionReport, isWrittenByTwoRunsAtOnce)
{
    tiles(30);
    EXPECT_EQ(run("-q").exitCode, 0);
    auto const whole = results();
    fs::remove_all(folder / "out");
    fs::remove(path);
    std::string const command =
        std::string(VELLOREADER_PROGRAMS) + GetParam().program + " -q -j 2 " + arguments("");
    EXPECT_EQ(std::system((command + " & first=$!; " + command + " && wait $first").c_str()), 0);
    EXPECT_EQ(results(), whole);
    EXPECT_EQ(report().lines.size(), 30U);
    EXPECT_EQ(run().output, nothingToDo(30));
}

TEST_P(ConversionReport, readsAgainWhatChangedWhileItWasRead)
{
    database("metres.flt");
    database("feet.flt", {{}, "", 4});
    database("changing.flt");
    std::string const command =
        std::string(VELLOREADER_PROGRAMS) + GetParam().program + " -q " + arguments("");
    std::string const script =
        folder.write("change.sh", "cd '" + (folder / "tree") +
                                      "'\nwhile [ ! -e ../stop ]; do\n"
                                      "cat metres.flt >changing.flt\ncat feet.flt >changing.flt\ndone &\n"
                                      "for i in 1 2 3 4 5; do\n" +
                                      command + "\ndone\n>../stop\nwait\n");
    // A half of it may be read, which is told.
    static_cast<void>(std::system(("bash " + script + " 2>/dev/null").c_str()));
    ProgramRun const last = run();
    EXPECT_EQ(last.exitCode, 0) << last.errors;
    auto const whole = results();
    ASSERT_EQ(whole.size(), 3U);
    fs::remove_all(folder / "out");
    fs::remove(path);
    EXPECT_EQ(run("-q").exitCode, 0);
    EXPECT_EQ(results(), whole) << "as if it had never been otherwise";
}

TEST_P(ConversionReport, isNotFooledByAClockThatWasSetBack)
{
    if (std::system("faketime -f '-1y' true 2>/dev/null") != 0)
        GTEST_SKIP() << "faketime isn't installed";
    tiles(4);
    for (int i = 0; i < 4; ++i)
        age(folder / ("tree/t" + std::to_string(i) + ".flt"), 1'000'000'000);
    // Its library comes before that of the address sanitizer, which minds unless it is told.
    std::string const command =
        "ASAN_OPTIONS=\"$ASAN_OPTIONS:verify_asan_link_order=0\" NO_FAKE_STAT=1 faketime -f '-1y' " +
        std::string(VELLOREADER_PROGRAMS) + GetParam().program + " " + arguments("") + " >" +
        (folder / "said");
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(contentsOf(folder / "said"), "4 of 4 databases converted\n");
    EXPECT_EQ(run().output, nothingToDo(4));
    age(folder / "tree/t1.flt", 10);
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(contentsOf(folder / "said"), "1 of 4 databases converted, 3 up to date\n");
}

TEST_P(ConversionReport, removesWhatAKilledRunHasLeft)
{
    tiles(1);
    EXPECT_EQ(run("-q").exitCode, 0);
    // As it is left where the disk knows no files without names.
    pid_t const dead = ::fork();
    if (dead == 0)
        ::_exit(0);
    ::waitpid(dead, nullptr, 0);
    std::string left = TemporaryName::beside(result("t0"));
    std::string const mine = "-" + std::to_string(::getpid()) + "-";
    left.replace(left.find(mine), mine.size(), "-" + std::to_string(dead) + "-");
    static_cast<void>(folder.write(left.substr((folder / "").size()), "half"));
    std::string const stranger = folder.write("out/.velloreader-somewhere-1-0-1-1.part", "half");
    EXPECT_EQ(run("-q").exitCode, 0);
    EXPECT_FALSE(fs::exists(left));
    EXPECT_TRUE(fs::exists(stranger)) << "nobody knows whose it is";
}

TEST_P(ConversionReport, contradictsOtherWaysToKnowWhatIsDone)
{
    tiles(1);
    EXPECT_EQ(run("--if-newer").exitCode, 2);
    EXPECT_EQ(run("--no-clobber").exitCode, 2);
    EXPECT_EQ(ProgramRun(GetParam().program, "--report " + path + " " + (folder / "tree/t0.flt")).exitCode,
              2);
    EXPECT_FALSE(fs::exists(path));
}

TEST_P(ConversionReport, isNeverAnInput)
{
    tiles(1);
    std::string const tile = folder / "tree/t0.flt";
    EXPECT_NE(
        ProgramRun(GetParam().program, "--report " + tile + " -o " + (folder / "out/") + " " + tile).exitCode,
        0);
    EXPECT_EQ(contentsOf(tile), SmallDatabase().bytes());
}

INSTANTIATE_TEST_SUITE_P(Each, ConversionReport, Converter::each(), Converter::nameOf);

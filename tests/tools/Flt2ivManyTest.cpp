// flt2iv with many databases.

#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "messages/FltText.h"
#include "support/PseudoTerminal.h"
#include "support/SmallPictures.h"
#include "support/Text.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utility>

namespace
{

namespace fs = std::filesystem;

class Flt2ivMany : public testing::Test
{
protected:
    std::string database(std::string const& name, SmallDatabase const& small = {}) const
    {
        return folder.write("models/" + name, small.bytes());
    }

    /// Databases with names from a number on: "m000.flt".
    void databases(int count) const
    {
        std::string const bytes = SmallDatabase().bytes();
        for (int i = 0; i < count; ++i)
            static_cast<void>(folder.write("models/" + numbered(i) + ".flt", bytes));
    }

    static std::string numbered(int number)
    {
        std::string const digits = std::to_string(number);
        return "m" + std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
    }

    /// Converts all in "models" into "out".
    ProgramRun run(std::string const& options = "") const
    {
        return ProgramRun("flt2iv", options + " -o " + out + " " + (folder / "models"));
    }

    std::string output(std::string const& name) const { return folder / ("out/" + name); }

    /// What a terminal gets while commands run in it.
    std::string onTerminal(std::string const& commands) const
    {
        std::string const screen = folder / "screen";
        static_cast<void>(std::system(
            ("TERM=xterm script -qec '" + commands + "' /dev/null >" + screen + " </dev/null").c_str()));
        return contentsOf(screen);
    }

    std::size_t outputs() const
    {
        std::error_code ignored;
        auto const files = fs::recursive_directory_iterator(out, ignored);
        return static_cast<std::size_t>(std::count_if(
            begin(files), end(files), [](fs::directory_entry const& file) { return !file.is_directory(); }));
    }

    /// Gives a file a time, in seconds after another one's.
    static void age(std::string const& file, std::string const& other, int seconds)
    {
        fs::last_write_time(file, fs::last_write_time(other) + std::chrono::seconds(seconds));
    }

    /// Makes an output at which a worker waits for a reader.
    std::string waitingOutput(std::string const& name) const
    {
        std::string pipe = folder.path("out/" + name);
        EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        return pipe;
    }

    /// Runs it on "models" with two workers, and beside it a script of the shell that has its number in $run.
    /// @return the exit code of the script, and what the run wrote to standard error
    std::pair<int, std::string> runBeside(std::string const& script) const
    {
        std::string const errors = folder / "errors";
        std::string const file = folder.write(
            "beside.sh", "'" VELLOREADER_PROGRAMS "flt2iv' -j 2 -o '" + out + "' '" + (folder / "models") +
                             "' >/dev/null 2>'" + errors + "' &\nrun=$!\n" + script);
        int const status = std::system(("bash " + file + " 2>/dev/null").c_str());
        return {WEXITSTATUS(status), contentsOf(errors)};
    }

    /// Has the worker die that writes a database, and the run go on.
    std::pair<int, std::string> runAndKillWorker(std::string const& waitingName) const
    {
        std::string const pipe = waitingOutput(waitingName);
        auto result = runBeside("exec 3<'" + pipe +
                                "' # until a worker writes into it\n"
                                "for worker in $(cat /proc/$run/task/$run/children); do\n"
                                "  case $(readlink /proc/$worker/fd/*) in\n"
                                "  *" +
                                waitingName +
                                "*) kill -KILL $worker ;;\n"
                                "  esac\n"
                                "done\n"
                                "wait $run\n");
        fs::remove(pipe);
        return result;
    }

    /// Has one worker wait for ever, and ends the run by a signal after a few conversions. Returns when its
    /// workers are gone, too.
    void runAndKill(std::string const& signal, std::string const& waitingName) const
    {
        std::string const pipe = waitingOutput(waitingName);
        int const workers = runBeside("until [ \"$(ls '" + out +
                                      "' | wc -l)\" -gt 6 ]; do sleep 0.01; done\n"
                                      "workers=$(cat /proc/$run/task/$run/children)\n"
                                      "kill -" +
                                      signal +
                                      " $run\n"
                                      "for worker in $workers; do\n"
                                      "  while grep -qs '^State:.[^Z]' /proc/$worker/status; do\n"
                                      "    sleep 0.01\n"
                                      "  done\n"
                                      "done\n"
                                      "set -- $workers\n"
                                      "exit $#\n")
                                .first;
        EXPECT_EQ(workers, 2);
        fs::remove(pipe);
    }

    ScratchFolder folder;
    std::string const out = folder / "out";
};

} // namespace

TEST_F(Flt2ivMany, showsNamesOfStrangersWithoutControls)
{
    for (std::string const control : {"\u009b", "\x9b", "\u202e"}) {
        FltWriter flt;
        flt.push().add("ExternalReference", {{"asciiPath", "t" + control + "31m.flt"}}).pop();
        static_cast<void>(folder.write("models/t" + control + ".flt", flt.bytes()));
        static_cast<void>(folder.write("models/u" + control + ".flt", "no database"));
    }
    std::string const errors = run("-v").errors;
    EXPECT_TRUE(holds(errors, "t\\x9b31m")) << errors;
    EXPECT_EQ(FltText::printable(errors, true), errors);
}

TEST_F(Flt2ivMany, keepsTheTreeAndTheNamesOfTextures)
{
    static_cast<void>(folder.write("models/sub/tree.rgb", SmallPictures::plainSgi(4)));
    database("sub/a.flt", {{}, "tree.rgb", 0});
    database("b.FLT");
    ProgramRun const all = run();
    EXPECT_EQ(all.exitCode, 0);
    EXPECT_EQ(all.output, "2 of 2 databases converted\n");
    EXPECT_EQ(all.errors, "");
    EXPECT_EQ(outputs(), 2U);
    EXPECT_EQ(trianglesIn(output("b.iv")), 1);
    EXPECT_TRUE(holds(contentsOf(output("sub/a.iv")), "\"../../models/sub/tree.rgb\""));
}

TEST_F(Flt2ivMany, writesEachFileAsItDoesAlone)
{
    database("a.flt", {{"b.flt"}, "", 4});
    database("b.flt");
    for (std::string const options : {"", "-b", "-z", "--lod lowest", "--exact"}) {
        EXPECT_EQ(run(options).exitCode, 0);
        EXPECT_EQ(contentsOf(output("a.iv")),
                  ProgramRun("flt2iv", options + " " + (folder / "models/a.flt")).output)
            << options;
    }
}

TEST_F(Flt2ivMany, takesFilesAndDirectoriesTogether)
{
    database("a.flt");
    std::string const other = folder.write("other/c.flt", SmallDatabase().bytes());
    ProgramRun const both("flt2iv", "--to wrl -j 1 -o " + out + "/ " + other + " " + (folder / "models"));
    EXPECT_EQ(both.output, "2 of 2 databases converted\n");
    EXPECT_EQ(trianglesIn(output("a.wrl")), 1);
    EXPECT_EQ(trianglesIn(output("c.wrl")), 1);
}

TEST_F(Flt2ivMany, isSilentAboutASingleFileForADirectory)
{
    ProgramRun const one("flt2iv", "-o " + out + "/ " + database("a.flt"));
    EXPECT_EQ(one.exitCode, 0);
    EXPECT_EQ(one.output + one.errors, "");
    EXPECT_EQ(trianglesIn(output("a.iv")), 1);
}

TEST_F(Flt2ivMany, convertsAThousandButThoseThatCanNotBe)
{
    databases(997);
    fs::create_symlink("nowhere", folder / "models/unreadable.flt");
    static_cast<void>(folder.write("models/broken.flt", SmallDatabase().bytes().substr(0, 3)));
    FltWriter moreThanAPipeHolds;
    moreThanAPipeHolds.push();
    for (int i = 0; i < 3000; ++i)
        moreThanAPipeHolds.add("Object", {{"idASCII", "o" + std::to_string(i)}});
    moreThanAPipeHolds.pop();
    static_cast<void>(folder.write("models/deadly.flt", moreThanAPipeHolds.bytes()));
    std::string const bytes = SmallDatabase().bytes();
    static_cast<void>(folder.write("models/m500.flt", bytes.substr(0, bytes.size() - 2))); // loses its end
    auto const [exitCode, errors] = runAndKillWorker("deadly.iv");
    EXPECT_EQ(exitCode, 1);
    EXPECT_EQ(outputs(), 997U);
    EXPECT_TRUE(holds(errors, "flt2iv: 997 of 1000 databases converted\n"));
    EXPECT_TRUE(holds(errors, "not converted: " + (folder / "models/unreadable.flt") +
                                  ": cannot open: No such file or directory"));
    EXPECT_TRUE(holds(errors, "not converted: " + (folder / "models/broken.flt") + ": "));
    EXPECT_TRUE(holds(errors, "not converted: " + (folder / "models/deadly.flt") +
                                  ": its conversion ended by signal 9 (Killed)"));
    EXPECT_TRUE(holds(errors, "warning: " + (folder / "models/m500.flt") + ": "))
        << "the damaged file is converted as far as it goes";
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 5) << errors;
    for (int i = 0; i < 997; i += 100)
        EXPECT_EQ(trianglesIn(output(numbered(i) + ".iv")), 1) << i;
}

TEST_F(Flt2ivMany, refusesToBeginIfTwoWouldBecomeOne)
{
    database("a.flt");
    std::string const other = folder.write("other/a.flt", SmallDatabase().bytes());
    ProgramRun const both("flt2iv", "-o " + out + " " + other + " " + (folder / "models"));
    EXPECT_EQ(both.exitCode, 2);
    EXPECT_TRUE(holds(both.errors, "would both become"));
    EXPECT_EQ(outputs(), 0U);
}

TEST_F(Flt2ivMany, refusesToReplaceAnInputByTheResultOfAnother)
{
    database("a.flt");
    std::string const second = database("b.flt");
    static_cast<void>(folder.path("out/a.iv"));
    fs::create_symlink(second, output("a.iv"));
    EXPECT_EQ(run().exitCode, 2);
    EXPECT_EQ(contentsOf(second), SmallDatabase().bytes());
}

TEST_F(Flt2ivMany, needsADirectoryThatIsOne)
{
    std::string const file = database("a.flt");
    EXPECT_EQ(ProgramRun("flt2iv", "-o " + folder.write("a.iv", "mine") + " " + (folder / "models")).exitCode,
              2);
    EXPECT_EQ(contentsOf(folder / "a.iv"), "mine");
    EXPECT_EQ(ProgramRun("flt2iv", file + " " + database("b.flt")).exitCode, 2);
    ProgramRun const nowhere("flt2iv", "-o " + out + " " + (folder / "empty"));
    EXPECT_EQ(nowhere.exitCode, 2) << "one name that isn't there, and no directory";
    fs::create_directory(folder / "empty");
    ProgramRun const empty("flt2iv", "-o " + out + " " + (folder / "empty"));
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_TRUE(holds(empty.errors, "empty: holds no database"));
}

TEST_F(Flt2ivMany, aDirectoryThatIsntThereIsReportedAsSuch)
{
    ProgramRun const run("flt2iv", "-o " + (folder / "out/") + " " + (folder / "nowhere/"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.errors, (folder / "nowhere/") + ": cannot open: No such file or directory"))
        << run.errors;
}

TEST_F(Flt2ivMany, reportsAnOutputThatCanNotBeWrittenAndGoesOn)
{
    database("a.flt");
    database("b.flt");
    fs::create_directories(output("a.iv"));
    ProgramRun const all = run();
    EXPECT_EQ(all.exitCode, 1);
    EXPECT_TRUE(holds(all.errors, "models/a.flt: " + output("a.iv") + ": cannot write: Is a directory"))
        << all.errors;
    EXPECT_TRUE(holds(all.errors, "flt2iv: 1 of 2 databases converted\n"));
    EXPECT_EQ(trianglesIn(output("b.iv")), 1);
}

TEST_F(Flt2ivMany, makesNoDirectoryForNothing)
{
    static_cast<void>(folder.write("models/sub/bad.flt", "no database"));
    database("a.flt");
    EXPECT_EQ(run().exitCode, 1);
    EXPECT_TRUE(fs::exists(output("a.iv")));
    EXPECT_FALSE(fs::exists(output("sub")));
}

TEST_F(Flt2ivMany, takesANumberOfJobs)
{
    database("a.flt");
    for (char const* const wrong : {"0", "x", "-1", "1000", "99999999999999999999"})
        EXPECT_EQ(run("--jobs=" + std::string(wrong)).exitCode, 2) << wrong;
    EXPECT_EQ(outputs(), 0U);
    EXPECT_EQ(run("--jobs 100").exitCode, 0);
}

TEST_F(Flt2ivMany, writesALogBesideEachDatabase)
{
    std::string const file = database("a.flt");
    EXPECT_EQ(run("--log=" + (folder / "all.log")).exitCode, 2) << "they would share it";
    EXPECT_EQ(run("--log").exitCode, 0);
    EXPECT_TRUE(holds(contentsOf(file + ".log"), "end of parsing"));
}

TEST_F(Flt2ivMany, printsATableWithASum)
{
    databases(3);
    ProgramRun const all = run("--stat");
    EXPECT_EQ(all.errors, "");
    EXPECT_EQ(std::count(all.output.begin(), all.output.end(), '\n'), 6) << all.output;
    EXPECT_TRUE(holds(all.output, "  in all\n3 of 3 databases converted\n"));
}

TEST_F(Flt2ivMany, saysNothingWhenQuiet)
{
    databases(2);
    EXPECT_EQ(run("-q").output, "");
}

TEST_F(Flt2ivMany, passesOverWhatIsUpToDate)
{
    std::string const first = database("a.flt");
    database("b.flt");
    EXPECT_EQ(run("--if-newer").output, "2 of 2 databases converted\n");
    EXPECT_EQ(run("--if-newer").output, "0 of 2 databases converted, 2 up to date\n");
    age(first, output("a.iv"), 10);
    EXPECT_EQ(run("--if-newer").output, "1 of 2 databases converted, 1 up to date\n");
    EXPECT_EQ(run().output, "2 of 2 databases converted\n");
}

TEST_F(Flt2ivMany, convertsAgainWhatRefersToAChangedDatabase)
{
    database("a.flt", {{"library/b.flt"}, "", 0});
    database("library/b.flt", {{"c.flt"}, "", 0});
    std::string const last = database("library/c.flt", {{"b.flt"}, "", 0});
    database("d.flt");
    EXPECT_EQ(run("-q").exitCode, 0);
    EXPECT_EQ(run("--if-newer").output, "0 of 4 databases converted, 4 up to date\n");
    age(last, output("a.iv"), 10);
    age(output("library/c.iv"), last, 10);
    EXPECT_EQ(run("--if-newer").output, "2 of 4 databases converted, 2 up to date\n") << "a and b";
    age(last, output("a.iv"), 10);
    age(output("library/c.iv"), last, 10);
    EXPECT_EQ(run("--if-newer --xref skip").output, "0 of 4 databases converted, 4 up to date\n");
}

TEST_F(Flt2ivMany, convertsAgainForATextureOnlyIfItIsEmbedded)
{
    std::string const image = folder.write("models/tree.rgb", SmallPictures::plainSgi(4));
    database("a.flt", {{}, "tree.rgb", 0});
    EXPECT_EQ(run("-q").exitCode, 0);
    age(image, output("a.iv"), 10);
    EXPECT_EQ(run("--if-newer").output, "0 of 1 databases converted, 1 up to date\n");
    EXPECT_EQ(run("--if-newer --embed-textures").output, "1 of 1 databases converted\n");
}

TEST_F(Flt2ivMany, passesOverASingleFileThatIsUpToDate)
{
    std::string const file = database("a.flt");
    std::string const command = "-v --if-newer -o " + folder.path("out/a.iv") + " " + file;
    EXPECT_EQ(ProgramRun("flt2iv", command).errors, "flt2iv: reading " + file + "\n");
    EXPECT_EQ(ProgramRun("flt2iv", command).errors, "");
    EXPECT_EQ(ProgramRun("flt2iv", "--if-newer " + file).exitCode, 2) << "there is nothing to compare with";
}

TEST_F(Flt2ivMany, goesOnWhereAKilledRunWas)
{
    constexpr int count = 30;
    databases(count);
    std::string const whole = ProgramRun("flt2iv", folder / "models/m000.flt").output;
    for (char const* const signal : {"KILL", "TERM"}) {
        fs::remove_all(out);
        runAndKill(signal, "m003.iv");
        std::size_t const before = outputs();
        EXPECT_GT(before, 5U);
        EXPECT_LT(before, static_cast<std::size_t>(count));
        for (fs::directory_entry const& file : fs::directory_iterator(out))
            EXPECT_EQ(contentsOf(file.path()), whole) << file.path();
        EXPECT_EQ(run("--if-newer").output, std::to_string(count - before) + " of 30 databases converted, " +
                                                std::to_string(before) + " up to date\n")
            << signal;
        EXPECT_EQ(outputs(), static_cast<std::size_t>(count));
    }
}

TEST_F(Flt2ivMany, showsTheEndOfALineThatIsWiderThanTheTerminal)
{
    if (std::string const reason = PseudoTerminal::whyNot(); !reason.empty())
        GTEST_SKIP() << reason;
    std::string const name = std::string(120, 'x') + "\u00e4.flt";
    std::string const shown =
        onTerminal("stty cols 30; " VELLOREADER_PROGRAMS "flt2iv --progress -o " + (folder / "a.iv") + " " +
                   folder.write(name, SmallDatabase().bytes()));
    std::size_t const begin = shown.find("\r...xx"), end = shown.find("\u00e4.flt: ");
    ASSERT_LT(begin, end) << shown;
    ASSERT_NE(end, std::string::npos) << shown;
    std::string const line = shown.substr(begin + 1, shown.find("\x1b[K", end) - begin - 1);
    EXPECT_EQ(line.size(), 29U + 1U) << "as wide as it may be, with a letter of two bytes: " << line;
    EXPECT_EQ(line.substr(line.size() - 2), " %");
}

TEST_F(Flt2ivMany, showsItsProgressOnATerminalAlone)
{
    if (std::string const reason = PseudoTerminal::whyNot(); !reason.empty())
        GTEST_SKIP() << reason;
    databases(20);
    static_cast<void>(folder.write("models/bad.flt", "no database"));
    std::string const command =
        VELLOREADER_PROGRAMS "flt2iv --progress -j 1 -o " + out + " " + (folder / "models");
    std::string const shown = onTerminal(command);
    EXPECT_TRUE(holds(shown, " of 21 databases, ")) << shown;
    EXPECT_TRUE(holds(shown, " left\x1b[K")) << shown;
    EXPECT_TRUE(holds(shown, "\r\x1b[Kflt2iv: not converted: ")) << "the line is gone: " << shown;
    EXPECT_TRUE(holds(shown, "flt2iv: 20 of 21 databases converted\r\n"));
    EXPECT_FALSE(holds(onTerminal(command + " -q"), "\x1b"));
    EXPECT_FALSE(holds(onTerminal("TERM=dumb " + command), "\x1b"));
    std::string const plain = run("--progress").errors;
    EXPECT_EQ(plain.find_first_of("\r\x1b"), std::string::npos) << plain;

    std::string const one = onTerminal(VELLOREADER_PROGRAMS "flt2iv --progress -o " + (folder / "a.iv") +
                                       " " + (folder / "models/m000.flt"));
    EXPECT_TRUE(holds(one, " %\x1b[K")) << one;
    ASSERT_GE(one.size(), 4U);
    EXPECT_EQ(one.substr(one.size() - 4), "\r\x1b[K") << "nothing stays";
    std::string const damaged = folder.write("damaged.flt", SmallDatabase().bytes() + "more");
    std::string const warned =
        onTerminal(VELLOREADER_PROGRAMS "flt2iv --progress -o " + (folder / "a.iv") + " " + damaged);
    EXPECT_TRUE(holds(warned, " %\x1b[K\r\x1b[Kflt2iv: warning: ")) << warned;
}

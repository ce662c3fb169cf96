// What all programs have in common on the command line.

#include "ProgramRun.h"
#include "messages/FltText.h"
#include "support/FaultyDatabases.h"
#include "support/Text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace
{

class ProgramFace : public testing::TestWithParam<char const*>
{
protected:
    ProgramRun run(std::string const& arguments) const { return ProgramRun(GetParam(), arguments); }

    ScratchFolder folder;
};

/// One that prints on standard output by itself.
using PrintingProgram = ProgramFace;

std::string nameOf(testing::TestParamInfo<char const*> const& instance)
{
    return instance.param;
}

/// The names of the options that the help lists: "--json".
std::vector<std::string> optionsIn(std::string const& help)
{
    std::vector<std::string> names;
    for (std::size_t place = help.find("\n  -"); place != std::string::npos;
         place = help.find("\n  -", place + 1)) {
        std::size_t const begin = help.find("--", place);
        names.push_back(help.substr(begin, help.find_first_of(" [\n", begin) - begin));
    }
    return names;
}

/// What bash makes of the beginning of a word, in a folder with a database and another file.
std::string completed(std::string const& program, std::string const& word, std::string const& before)
{
    ScratchFolder const folder;
    static_cast<void>(folder.write("town.flt", ""));
    static_cast<void>(folder.write("notes.txt", ""));
    static_cast<void>(folder.write("complete.sh", ProgramRun(program, "--completion bash").output + "cd " +
                                                      (folder / "") + "\nCOMP_WORDS=(" + program + " " +
                                                      before + " '" + word +
                                                      "')\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_" +
                                                      program + "\nprintf '%s ' \"${COMPREPLY[@]}\"\n"));
    static_cast<void>(std::system(("bash " + (folder / "complete.sh") + " >" + (folder / "words")).c_str()));
    return contentsOf(folder / "words");
}

/// The programs of this build.
std::vector<char const*> allPrograms()
{
    return {"flt2iv", "flt2gltf", "fltreport", "flttileset", "fltshot", "fltinfo", "fltcheck",
#ifdef VELLOREADER_HAS_VIEWER
            "fltview"
#endif
    };
}

} // namespace

TEST_P(ProgramFace, saysNothingThatATerminalWouldObey)
{
    for (std::string const control : {"\u009b", "\x9b", "\u202e"}) {
        ProgramRun const wrong = run("--t" + control + "31m a.flt");
        EXPECT_EQ(wrong.exitCode, 2);
        EXPECT_TRUE(holds(wrong.errors, "--t\\x")) << wrong.errors;
        EXPECT_EQ(FltText::printable(wrong.errors, true), wrong.errors);
    }
}

TEST_P(ProgramFace, beginsItsHelpWithExamplesAndEndsItWithExitCodes)
{
    ProgramRun const help = run("--help");
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_LT(help.output.find("\nExamples:\n"), help.output.find("\nUsage:\n"));
    EXPECT_LT(help.output.find("\nOptions:\n"), help.output.find("\nExit codes:\n"));
    for (std::size_t line = 0; line < help.output.size(); line = help.output.find('\n', line) + 1)
        EXPECT_LE(help.output.find('\n', line) - line, 80U) << help.output.substr(line, 80);
    EXPECT_EQ(run("-h").output, help.output);
}

TEST_P(ProgramFace, saysItsVersion)
{
    EXPECT_EQ(run("--version").output, std::string(GetParam()) + " (VelloReader) " VELLOREADER_VERSION "\n");
}

TEST_P(ProgramFace, exitsWith2AndPointsToTheHelpForWrongUsage)
{
    for (char const* const arguments : {"--nonsense x.flt", "--texture-path"}) {
        ProgramRun const wrong = run(arguments);
        EXPECT_EQ(wrong.exitCode, 2) << arguments;
        EXPECT_EQ(wrong.output, "");
        EXPECT_EQ(wrong.errors.find(std::string(GetParam()) + ": "), 0U);
        EXPECT_TRUE(holds(wrong.errors, std::string(". Try: ") + GetParam() + " --help\n")) << wrong.errors;
    }
}

TEST_P(ProgramFace, saysWhatWasMeantByASlip)
{
    std::vector<std::pair<char const*, char const*>> slips = {
        {"--verbos x.flt", "there is no option --verbos; did you mean --verbose? Try: "},
        {"--quiet=yes x.flt", "--quiet takes no value. Try: "},
        {"--quiet=true x.flt", "--quiet takes no value. Try: "},
        {"-", "a database isn't read from standard input (-)"},
    };
    if (holds(run("--help").output, "--texture-path")) {
        slips.emplace_back("--texturepath=d x.flt",
                           "there is no option --texturepath; did you mean --texture-path? Try: ");
        slips.emplace_back("x.flt --texture-path", "--texture-path takes a value: --texture-path DIR. Try: ");
    }
    for (auto const& [arguments, answer] : slips) {
        ProgramRun const wrong = run(arguments);
        EXPECT_EQ(wrong.exitCode, 2) << arguments;
        EXPECT_EQ(wrong.output, "") << arguments;
        EXPECT_EQ(wrong.errors.find(std::string(GetParam()) + ": " + answer), 0U) << wrong.errors;
    }
}

TEST_P(ProgramFace, hasEachOptionInItsManualPageAndItsCompletions)
{
    std::vector<std::string> const options = optionsIn(run("--help").output);
    EXPECT_GT(options.size(), 4U);
    std::string const page = run("--man").output;
    EXPECT_LT(page.find(".SH EXAMPLES"), page.find(".SH OPTIONS"));
    for (std::string const& option : options) {
        std::string escaped;
        for (char const character : option)
            escaped += character == '-' ? "\\-" : std::string(1, character);
        EXPECT_TRUE(holds(page, escaped)) << option;
        EXPECT_TRUE(holds(run("--completion bash").output, option)) << option;
        EXPECT_TRUE(holds(run("--completion zsh").output, option)) << option;
        EXPECT_TRUE(holds(run("--completion fish").output, " -l " + option.substr(2))) << option;
    }
    EXPECT_EQ(run("--completion sh").exitCode, 2);
}

TEST_P(ProgramFace, completesOptionsInBash)
{
    EXPECT_EQ(completed(GetParam(), "--ver", ""), "--version --verbose ");
    EXPECT_EQ(completed(GetParam(), "", ""), "town.flt ");
}

TEST(ProgramChoice, saysTheWordsThatItKnows)
{
    EXPECT_TRUE(holds(ProgramRun("fltinfo", "--color allways x.flt").errors,
                      "--color: give auto, always or never, not allways; did you mean always?"));
    EXPECT_TRUE(holds(ProgramRun("flt2iv", "-o a.iv -o b.iv x.flt").errors, "-o can be given once only"));
}

TEST(ProgramCompletion, knowsTheWordsOfAnOption)
{
    EXPECT_EQ(completed("fltinfo", "al", "--color"), "always ");
}

TEST_P(PrintingProgram, exitsWith1WhenStandardOutputIsFull)
{
    faultlessDatabase().save(folder / "database.flt");
    std::string const command = std::string(VELLOREADER_PROGRAMS) + GetParam() + " " +
                                (folder / "database.flt") + " >/dev/full 2>" + (folder / "errors");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_TRUE(
        holds(contentsOf(folder / "errors"), "standard output: cannot write: No space left on device"));
}

TEST_P(PrintingProgram, saysMoreWhenVerbose)
{
    faultlessDatabase().save(folder / "database.flt");
    std::string const file = folder / "database.flt";
    EXPECT_EQ(run("-v " + file).errors, std::string(GetParam()) + ": reading " + file + "\n");
    EXPECT_EQ(run("-v " + file).output, run(file).output);
}

TEST_P(PrintingProgram, saysThatADirectoryOfTexturesIsNotThere)
{
    faultlessDatabase().save(folder / "database.flt");
    ProgramRun const told = run("--texture-path " + (folder / "no") + " " + (folder / "database.flt"));
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(told.errors, std::string(GetParam()) + ": warning: --texture-path " + (folder / "no") +
                               ": there is no such directory\n");
    EXPECT_EQ(run("--texture-path " + (folder / "") + " " + (folder / "database.flt")).errors, "");
}

TEST_P(PrintingProgram, takesNamesThatBeginWithAMinusAfterTwo)
{
    EXPECT_EQ(run("-- --quiet").exitCode, 1) << "a file that isn't there";
}

TEST_P(PrintingProgram, needsAFile)
{
    EXPECT_EQ(run("").exitCode, 2);
    EXPECT_EQ(run("").errors.find(std::string(GetParam()) + ": FILE is required. Try: "), 0U);
}

INSTANTIATE_TEST_SUITE_P(Each, ProgramFace, testing::ValuesIn(allPrograms()), nameOf);

INSTANTIATE_TEST_SUITE_P(Each, PrintingProgram, testing::Values("flt2iv", "fltinfo", "fltcheck"), nameOf);

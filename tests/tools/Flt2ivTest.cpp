#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "support/FileSizeLimit.h"
#include "writer/FltWriter.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace
{

class Flt2iv : public testing::Test
{
protected:
    std::string triangle(std::string const& name = "triangle.flt")
    {
        return save(SmallDatabase().written(), name);
    }

    std::string save(FltWriter const& flt, std::string const& name)
    {
        flt.save(directory / name);
        return directory / name;
    }

    std::string save(std::string const& bytes, std::string const& name)
    {
        std::ofstream(directory / name, std::ios::binary) << bytes;
        return directory / name;
    }

    ScratchFolder directory;
};

int countFaceSets(std::string text)
{
    SoInput input;
    input.setBuffer(text.data(), text.size());
    SoSeparator* root = SoDB::readAll(&input);
    if (root == nullptr)
        return -1;
    root->ref();
    SoSearchAction search;
    search.setType(SoIndexedFaceSet::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.apply(root);
    int const count = search.getPaths().getLength();
    search.reset();
    root->unref();
    return count;
}

} // namespace

TEST_F(Flt2iv, writesTextToStandardOutputThatTheToolkitReads)
{
    ProgramRun const run("flt2iv", triangle());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output.substr(0, 20), "#Inventor V2.1 ascii");
    EXPECT_NE(run.output.find("DEF g1 Separator"), std::string::npos);
    EXPECT_EQ(countFaceSets(run.output), 1);
}

TEST_F(Flt2iv, writesNothingThatNobodyAskedFor)
{
    ProgramRun const run("flt2iv", triangle());
    EXPECT_EQ(run.output.find("Success in opening file"), std::string::npos);
    EXPECT_EQ(run.output.find("beginning of parsing"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(directory / "triangle.flt.log"));
}

TEST_F(Flt2iv, writesIntoTheFileOfOptionO)
{
    ProgramRun const toFile("flt2iv", "-o " + (directory / "out.iv") + " " + triangle());
    EXPECT_EQ(toFile.exitCode, 0);
    EXPECT_EQ(toFile.output, "");
    EXPECT_EQ(contentsOf(directory / "out.iv"), ProgramRun("flt2iv", triangle()).output);
}

TEST_F(Flt2iv, takesAMinusForStandardOutput)
{
    EXPECT_EQ(ProgramRun("flt2iv", "-o - " + triangle()).output, ProgramRun("flt2iv", triangle()).output);
}

TEST_F(Flt2iv, writesTheBinaryFormThatTheToolkitReads)
{
    ProgramRun const run("flt2iv", "-b " + triangle());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output.substr(0, 21), "#Inventor V2.1 binary");
    EXPECT_EQ(countFaceSets(run.output), 1);
}

TEST_F(Flt2iv, readsAFileOfTheCurrentDirectoryAndItsExternalReference)
{
    triangle("other.flt");
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).pop();
    save(flt, "main.flt");
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::path(directory / "main.flt").parent_path());
    ProgramRun const run("flt2iv", "main.flt");
    std::filesystem::current_path(before);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(countFaceSets(run.output), 1);
}

TEST_F(Flt2iv, showsAMessageInOneLineAndGoesOn)
{
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "nowhere.flt"}}).pop();
    ProgramRun const run("flt2iv", "--exact " + save(flt, "lost.flt"));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors,
              "flt2iv: " + (directory / "lost.flt") + ": CAN'T RESOLVE EXTERNAL REFERENCE: nowhere.flt\n");
}

TEST_F(Flt2iv, leavesWarningsOutWhenQuiet)
{
    FltWriter flt;
    flt.pop();
    std::string const file = save(flt, "pop.flt");
    EXPECT_EQ(ProgramRun("flt2iv", "--exact " + file).errors,
              "flt2iv: warning: " + file + ": trying a pop() but stack is empty! (File corrupted ?)\n");
    EXPECT_EQ(ProgramRun("flt2iv", "-q " + file).errors, "");
}

TEST_F(Flt2iv, showsTwentyMessagesAndCountsTheRest)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 50; ++i)
        flt.add("ExternalReference", {{"asciiPath", "none" + std::to_string(i) + ".flt"}});
    std::string const errors = ProgramRun("flt2iv", "--exact " + save(flt.pop(), "lost.flt")).errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 21);
    EXPECT_NE(errors.find("flt2iv: warning: 5 more messages left out\n"), std::string::npos);
}

TEST_F(Flt2iv, countsEqualMessages)
{
    FltWriter flt;
    for (int i = 0; i < 1000; ++i)
        flt.pop();
    std::string const file = save(flt, "pops.flt");
    EXPECT_EQ(ProgramRun("flt2iv", "--exact " + file).errors,
              "flt2iv: warning: " + file +
                  ": trying a pop() but stack is empty! (File corrupted ?) (1000 times)\n");
}

TEST_F(Flt2iv, exitsWith1AndSaysWhyForAFileThatIsNotThere)
{
    ProgramRun const run("flt2iv", directory / "missing.flt");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "flt2iv: " + (directory / "missing.flt") +
                  ": cannot open: No such file or directory. Check the name and its permissions.\n");
}

TEST_F(Flt2iv, exitsWith1ForADirectory)
{
    ProgramRun const run("flt2iv", directory / "");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("this is a directory"), std::string::npos);
}

TEST_F(Flt2iv, exitsWith1ForAFileThatIsNotOpenFlight)
{
    ProgramRun const run("flt2iv", save(std::string("#Inventor V2.1 ascii\n"), "scene.flt"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.errors.find("scene.flt: not an OpenFlight database"), std::string::npos);
}

TEST_F(Flt2iv, exitsWith1ForAnEmptyFile)
{
    ProgramRun const run("flt2iv", save(std::string(), "empty.flt"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("empty.flt: the file is empty"), std::string::npos);
}

TEST_F(Flt2iv, exitsWith1ForARevisionBelow11)
{
    ProgramRun const run("flt2iv", save(FltWriter(10), "old.flt"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("OpenFlight revision 10 isn't supported"), std::string::npos);
}

TEST_F(Flt2iv, exitsWith1ForAFullDiskAndAnUnknownDirectory)
{
    ProgramRun const full("flt2iv", "-o /dev/full " + triangle());
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_NE(full.errors.find("cannot write: No space left on device"), std::string::npos);
    ProgramRun const nowhere("flt2iv", "-o " + (directory / "no/out.iv") + " " + triangle());
    EXPECT_EQ(nowhere.exitCode, 1);
    EXPECT_NE(nowhere.errors.find("cannot write: No such file or directory"), std::string::npos);
}

TEST_F(Flt2iv, leavesNoHalfOfAFileOnAFullDisk)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 1000; ++i)
        flt.add("Group", {{"idASCII", "g" + std::to_string(i)}}).push().pop();
    std::string const file = save(flt.pop(), "groups.flt");
    for (char const* const form : {"", "-b "}) {
        FileSizeLimit const full(4096);
        ProgramRun const run("flt2iv", form + ("-o " + (directory / "out.iv") + " ") + file);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_NE(run.errors.find("out.iv: cannot write: File too large"), std::string::npos) << run.errors;
        EXPECT_FALSE(std::filesystem::exists(directory / "out.iv"));
    }
    EXPECT_EQ(ProgramRun("flt2iv", "-o " + (directory / "out.iv") + " " + file).exitCode, 0);
    EXPECT_GT(contentsOf(directory / "out.iv").size(), 4096U) << "there is room, and more than the disk had";
}

TEST_F(Flt2iv, exitsWith2ForWrongUsage)
{
    EXPECT_EQ(ProgramRun("flt2iv", "").exitCode, 2);
    EXPECT_EQ(ProgramRun("flt2iv", "--nonsense " + triangle()).exitCode, 2);
    EXPECT_EQ(ProgramRun("flt2iv", triangle() + " second.flt").exitCode, 2);
}

TEST_F(Flt2iv, refusesToReplaceItsInputAndWhatThatRefersTo)
{
    std::string const other = triangle("other.flt");
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).pop();
    std::string const file = save(flt, "main.flt");
    std::filesystem::create_hard_link(file, directory / "main.iv");
    std::filesystem::create_symlink("other.flt", directory / "other.iv");
    for (char const* const output : {"main.flt", "main.iv", "other.iv"}) {
        std::string const before = contentsOf(directory / output);
        ProgramRun const run("flt2iv", "-o " + (directory / output) + " " + file);
        EXPECT_EQ(run.exitCode, 2) << output;
        EXPECT_EQ(contentsOf(directory / output), before) << output;
    }
}

TEST_F(Flt2iv, refusesAnEndingThatItCannotWrite)
{
    ProgramRun const run("flt2iv", "-o " + (directory / "out.png") + " " + triangle());
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("Choose a name that ends in .iv or .wrl."), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(directory / "out.png"));
}

TEST_F(Flt2iv, writesALogWhereItIsAskedTo)
{
    std::string const file = triangle();
    EXPECT_EQ(ProgramRun("flt2iv", "--log -o " + (directory / "a.iv") + " " + file).exitCode, 0);
    std::string const log = contentsOf(file + ".log");
    EXPECT_EQ(log.find("beginning of parsing"), 0U);
    EXPECT_EQ(ProgramRun("flt2iv", "--log=" + (directory / "other.log") + " " + file).exitCode, 0);
    EXPECT_EQ(contentsOf(directory / "other.log"), log);
    EXPECT_EQ(ProgramRun("flt2iv", "--log=" + (directory / "a.iv") + " " + file).exitCode, 2);
    EXPECT_EQ(contentsOf(directory / "a.iv").find("#Inventor"), 0U) << "what isn't a log stays";
}

TEST_F(Flt2iv, explainsItselfOnHelp)
{
    ProgramRun const run("flt2iv", "--help");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("Examples:"), std::string::npos);
    EXPECT_EQ(run.errors, "");
}

TEST_F(Flt2iv, saysThatItCanNotWriteWhereTheSizeOfFilesIsLimited)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 1000; ++i)
        flt.add("Group", {{"idASCII", "g"}}).push().pop();
    std::string const output = directory / "o.iv";
    std::string const errors = directory / "errors.txt";
    std::string const command = "bash -c \"ulimit -f 2; exec '" VELLOREADER_PROGRAMS "flt2iv' --exact -o '" +
                                output + "' '" + save(flt.pop(), "a.flt") + "' 2>'" + errors + "'\"";
    int const status = std::system(command.c_str());
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_NE(contentsOf(errors).find("cannot write"), std::string::npos) << contentsOf(errors);
    EXPECT_FALSE(std::filesystem::exists(output));
}

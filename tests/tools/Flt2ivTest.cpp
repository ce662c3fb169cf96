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
    EXPECT_NE(errors.find("flt2iv: warning: 5 more messages left out; -v shows all\n"), std::string::npos);
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

TEST_F(Flt2iv, groupsMessagesOfOneCauseUnlessItIsVerbose)
{
    FltWriter flt;
    flt.push();
    for (int number = 1; number <= 30; ++number)
        flt.add("InstanceReference", {{"instanceDefinitionNumber", number}});
    std::string const file = save(flt.pop(), "lost.flt");
    std::string const errors = ProgramRun("flt2iv", file).errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_NE(errors.find("number 1 (record with opcode 61 at byte offset "), std::string::npos) << errors;
    EXPECT_NE(errors.find(") (30 times)\n"), std::string::npos) << errors;
    std::string const all = ProgramRun("flt2iv", "-v " + file).errors;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 31) << all;
}

TEST_F(Flt2iv, groupsNoTexturesWhoseNamesDifferInANumber)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", "1.rgb"}, {"patternIndex", 0}});
    flt.add("TexturePattern", {{"fileName", "2.rgb"}, {"patternIndex", 1}});
    flt.vertexPalette();
    double const a = flt.vertex("VertexColorUv", 0, 0, 0), b = flt.vertex("VertexColorUv", 1, 0, 0),
                 c = flt.vertex("VertexColorUv", 0, 1, 0);
    flt.push().add("Object").push();
    for (int const texture : {0, 1})
        flt.face({a, b, c}, {{"texturePatternIndex", texture}, {"materialIndex", -1}});
    std::string const file = save(flt.pop().pop(), "a.flt");
    std::string const errors = ProgramRun("flt2iv", file).errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 2) << errors;
    EXPECT_NE(ProgramRun("flt2iv", "-v " + file)
                  .errors.find("texture 1.rgb was looked for as " + (directory / "1.rgb")),
              std::string::npos);
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

TEST_F(Flt2iv, saysWhereAnOutputBelongs)
{
    std::string const file = triangle();
    ProgramRun const input("flt2iv", file + " out.iv");
    EXPECT_EQ(input.exitCode, 2);
    EXPECT_NE(input.errors.find("out.iv is no database. To write it, give -o out.iv"), std::string::npos);
    std::string const one = directory / "one.iv";
    for (std::string const& inputs : {file + " " + triangle("b.flt"), directory / ""}) {
        ProgramRun const several("flt2iv", "-o " + one + " " + inputs);
        EXPECT_EQ(several.exitCode, 2);
        EXPECT_NE(several.errors.find("one.iv names a file, and several databases need a directory"),
                  std::string::npos)
            << several.errors;
        EXPECT_FALSE(std::filesystem::exists(one));
    }
    EXPECT_EQ(ProgramRun("flt2iv", "-o " + one + "/ " + file).exitCode, 0) << "a directory by its slash";
    EXPECT_TRUE(std::filesystem::exists(one + "/triangle.iv"));
    EXPECT_EQ(ProgramRun("flt2iv", "-o " + one + " " + file + " " + triangle("b.flt")).exitCode, 0)
        << "a directory that is there";
}

TEST_F(Flt2iv, keepsResultsThatAreThereWithNoClobber)
{
    std::string const file = triangle();
    std::string const out = save(std::string("mine"), "out.iv");
    for (char const* const options : {"", "--if-newer ", "--xref file "}) {
        ProgramRun const run("flt2iv", options + ("--no-clobber -o " + out) + " " + file);
        EXPECT_NE(run.exitCode, 0) << options;
        EXPECT_EQ(contentsOf(out), "mine") << options;
    }
    ProgramRun const one("flt2iv", "--no-clobber -o " + out + " " + file);
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_EQ(one.errors,
              "flt2iv: " + out +
                  ": this file is there already, and --no-clobber keeps it. Choose another name.\n");
    std::filesystem::create_directories(directory / "many");
    static_cast<void>(save(std::string("mine"), "many/b.iv"));
    ProgramRun const many("flt2iv",
                          "--no-clobber -o " + (directory / "many") + " " + file + " " + triangle("b.flt"));
    EXPECT_EQ(many.exitCode, 1);
    EXPECT_NE(many.errors.find("1 of 2 databases converted"), std::string::npos) << many.errors;
    EXPECT_EQ(contentsOf(directory / "many/b.iv"), "mine");
    EXPECT_EQ(ProgramRun("flt2iv", "--no-clobber -o " + (directory / "new.iv") + " " + file).exitCode, 0);
    EXPECT_EQ(ProgramRun("flt2iv", "--no-clobber " + file).exitCode, 0)
        << "nothing stands on standard output";
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

#include "plugin/SoInputFltReader.h"

#include "support/NamedInput.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// An input that holds a file of the caller's.
class OpenInput final : public SoInput
{
public:
    explicit OpenInput(FILE* file) : file(file) {}
    FILE* getCurFile() const override { return file; }
    char const* getCurFileName() const override { return ""; }

private:
    FILE* file;
};

class SoInputFltReaderTest : public testing::Test
{
protected:
    SoInputFltReaderTest() { SoInputFltReader::initClass(); }
    ~SoInputFltReaderTest() override { SoInputFltReader::exitClass(); }

    std::string save(std::string const& bytes, std::string const& name = "a.flt")
    {
        std::ofstream(folder.path(name), std::ios::binary) << bytes;
        return folder.path(name);
    }

    /// By name alone, and with the file open: both must answer the same.
    bool isAccepted(std::string const& bytes)
    {
        std::string const path = save(bytes);
        NamedInput named(path.c_str());
        SoInput open;
        EXPECT_TRUE(open.openFile(path.c_str()));
        bool const answer = reader.canConvert(&named);
        EXPECT_EQ(reader.canConvert(&open), answer);
        return answer;
    }

    bool isAccepted(int revision) { return isAccepted(FltWriter(revision).bytes()); }

    /// A good database with one byte changed.
    bool isAcceptedWith(std::size_t offset, int value)
    {
        std::string bytes = FltWriter().bytes();
        bytes.at(offset) = static_cast<char>(value);
        return isAccepted(bytes);
    }

    ScratchFolder folder;
    SoInputFltReader reader;
};

} // namespace

TEST_F(SoInputFltReaderTest, isRegisteredBelowInputReader)
{
    SoType const type = SoInputFltReader::getClassTypeId();
    EXPECT_STREQ(type.getName().getString(), "InputFltReader");
    EXPECT_TRUE(type.getParent() == SoInputReader::getClassTypeId());
    EXPECT_TRUE(reader.getTypeId() == type);
    EXPECT_TRUE(SoType::fromName("InputFltReader") == type);
}

TEST_F(SoInputFltReaderTest, isMadeByItsType)
{
    auto* const made = static_cast<SoInputReader*>(SoInputFltReader::getClassTypeId().createInstance());
    EXPECT_NE(dynamic_cast<SoInputFltReader*>(made), nullptr);
    delete made;
}

TEST_F(SoInputFltReaderTest, aSecondInitDoesNothing)
{
    SoType const type = SoInputFltReader::getClassTypeId();
    SoInputFltReader::initClass();
    EXPECT_TRUE(SoInputFltReader::getClassTypeId() == type);
}

TEST_F(SoInputFltReaderTest, exitTakesTheTypeOutAndInitPutsItBack)
{
    SoInputFltReader::exitClass();
    EXPECT_TRUE(SoInputFltReader::getClassTypeId() == SoType::badType());
    EXPECT_TRUE(SoType::fromName("InputFltReader") == SoType::badType());
    SoInputFltReader::exitClass();
    SoInputFltReader::initClass();
    EXPECT_TRUE(SoType::fromName("InputFltReader") == SoInputFltReader::getClassTypeId());
    EXPECT_TRUE(SoInputFltReader::getClassTypeId().canCreateInstance());
}

TEST_F(SoInputFltReaderTest, acceptsRevision11AndRefusesRevision10)
{
    EXPECT_FALSE(isAccepted(10));
    EXPECT_TRUE(isAccepted(11));
    EXPECT_TRUE(isAccepted(14));
    EXPECT_FALSE(isAccepted(15));
}

TEST_F(SoInputFltReaderTest, acceptsRevision1570AndRefusesRevision2304)
{
    EXPECT_FALSE(isAccepted(1279));
    EXPECT_TRUE(isAccepted(1280));
    EXPECT_TRUE(isAccepted(1570));
    EXPECT_TRUE(isAccepted(2303));
    EXPECT_FALSE(isAccepted(2304));
}

TEST_F(SoInputFltReaderTest, refusesARevisionByteBelowZero)
{
    EXPECT_FALSE(isAccepted(0x8B));
    EXPECT_FALSE(isAccepted(0xFF));
    EXPECT_FALSE(isAccepted(0x8500));
}

TEST_F(SoInputFltReaderTest, refusesARevisionWithAHighHalf)
{
    EXPECT_FALSE(isAcceptedWith(12, 1));
    EXPECT_FALSE(isAcceptedWith(13, 1));
}

TEST_F(SoInputFltReaderTest, refusesAnyOpcodeButTheHeaders)
{
    EXPECT_FALSE(isAcceptedWith(0, 1));
    EXPECT_FALSE(isAcceptedWith(1, 0));
    EXPECT_FALSE(isAcceptedWith(1, 2));
}

TEST_F(SoInputFltReaderTest, refusesAMultiplierDiviserUnitOf2)
{
    EXPECT_TRUE(isAccepted(FltWriter(1570, {{"multiplierDiviserUnit", 1}}).bytes()));
    EXPECT_FALSE(isAccepted(FltWriter(1570, {{"multiplierDiviserUnit", 2}}).bytes()));
    EXPECT_FALSE(isAccepted(FltWriter(1570, {{"multiplierDiviserUnit", 257}}).bytes()));
    EXPECT_FALSE(isAccepted(FltWriter(1570, {{"multiplierDiviserUnit", 0}}).bytes()));
    EXPECT_FALSE(isAccepted(FltWriter(1570, {{"multiplierDiviserUnit", -1}}).bytes()));
}

TEST_F(SoInputFltReaderTest, judgesAFileByNoByteThatItDoesntHave)
{
    std::string const bytes = FltWriter().bytes();
    for (std::size_t length = 0; length < 62; ++length)
        ASSERT_FALSE(isAccepted(bytes.substr(0, length))) << length;
    EXPECT_TRUE(isAccepted(bytes.substr(0, 62)));
}

TEST_F(SoInputFltReaderTest, lowersTheExtensionOfANameAlone)
{
    for (char const* name : {"a.flt", "a.FLT", "a.Flt", "a.old.fLt"}) {
        std::string const path = save(FltWriter().bytes(), name);
        NamedInput input(path.c_str());
        EXPECT_TRUE(reader.canConvert(&input)) << name;
    }
}

TEST_F(SoInputFltReaderTest, refusesANameWithAnotherExtension)
{
    for (char const* name : {"a.iv", "a", "flt", "a.flt.bak", "a.fl"}) {
        std::string const path = save(FltWriter().bytes(), name);
        NamedInput input(path.c_str());
        EXPECT_FALSE(reader.canConvert(&input)) << name;
    }
}

TEST_F(SoInputFltReaderTest, acceptsAnOpenFileOfAnyName)
{
    SoInput input;
    ASSERT_TRUE(input.openFile(save(FltWriter().bytes(), "a.bin").c_str()));
    EXPECT_TRUE(reader.canConvert(&input));
}

TEST_F(SoInputFltReaderTest, refusesANameThatCantBeOpened)
{
    std::string const path = folder.path("none.flt");
    NamedInput missing(path.c_str());
    EXPECT_FALSE(reader.canConvert(&missing));
    std::filesystem::create_directory(folder.path("folder.flt"));
    std::string const directory = folder.path("folder.flt");
    NamedInput aDirectory(directory.c_str());
    EXPECT_FALSE(reader.canConvert(&aDirectory));
    NamedInput unnamed(nullptr);
    EXPECT_FALSE(reader.canConvert(&unnamed));
}

TEST_F(SoInputFltReaderTest, doesntWaitForAPipe)
{
    std::string const path = folder.path("pipe.flt");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    NamedInput named(path.c_str());
    EXPECT_FALSE(reader.canConvert(&named));

    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    FILE* const readEnd = ::fdopen(ends[0], "r");
    OpenInput open(readEnd);
    EXPECT_FALSE(reader.canConvert(&open));
    std::fclose(readEnd);
    ::close(ends[1]);
}

TEST_F(SoInputFltReaderTest, leavesAnOpenFileOpenAtByte62)
{
    FILE* const file = std::fopen(save(FltWriter().bytes()).c_str(), "rb");
    ASSERT_NE(file, nullptr);
    std::fseek(file, 5, SEEK_SET);
    OpenInput input(file);
    EXPECT_TRUE(reader.canConvert(&input));
    EXPECT_EQ(std::ftell(file), 62);
    EXPECT_NE(std::fgetc(file), EOF);
    std::fclose(file);
}

TEST_F(SoInputFltReaderTest, leavesAnOpenFileOpenWhenItSaysNo)
{
    FILE* const file = std::fopen(save(FltWriter(10).bytes()).c_str(), "rb");
    ASSERT_NE(file, nullptr);
    OpenInput input(file);
    EXPECT_FALSE(reader.canConvert(&input));
    EXPECT_EQ(std::ftell(file), 62);
    std::fclose(file);
}

TEST_F(SoInputFltReaderTest, leavesNoFileOpenOfItsOwn)
{
    std::string const path = save(FltWriter().bytes());
    NamedInput input(path.c_str());
    int const before = ::dup(0);
    ::close(before);
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(reader.canConvert(&input));
    int const after = ::dup(0);
    ::close(after);
    EXPECT_EQ(after, before);
}

TEST_F(SoInputFltReaderTest, refusesABufferInMemory)
{
    std::string const bytes = FltWriter().bytes();
    SoInput input;
    input.setBuffer(bytes.data(), bytes.size());
    EXPECT_FALSE(reader.canConvert(&input));
}

TEST_F(SoInputFltReaderTest, refusesABufferInMemoryThatWasReadFromAlready)
{
    std::string const bytes = FltWriter().bytes();
    SoInput input;
    input.setBuffer(bytes.data(), bytes.size());
    char skipped;
    input.get(skipped);
    EXPECT_FALSE(reader.canConvert(&input));
}

TEST_F(SoInputFltReaderTest, judgesAnInputThatWasReadFromAlready)
{
    SoInput input;
    ASSERT_TRUE(input.openFile(save(FltWriter().bytes()).c_str()));
    EXPECT_FALSE(input.isValidFile());
    char skipped;
    input.get(skipped);
    EXPECT_TRUE(reader.canConvert(&input));
}

TEST_F(SoInputFltReaderTest, saysNothingWhenItSaysNo)
{
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    EXPECT_FALSE(isAccepted(10));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "");
}

TEST_F(SoInputFltReaderTest, convertsTheFileOfTheInputsName)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "hangar"}}).pop();
    std::string const path = save(flt.bytes());
    SoInput input;
    ASSERT_TRUE(input.openFile(path.c_str()));
    StreamCapture const out(std::cout);
    SoSeparator* const root = reader.convert(&input);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->getRefCount(), 1);
    EXPECT_STREQ(root->getChild(root->getNumChildren() - 1)->getName().getString(), "hangar");
    EXPECT_NE(contentsOf(path + ".log").find("end of parsing"), std::string::npos);
    root->unref();
}

TEST_F(SoInputFltReaderTest, convertsAFileThatIsNoneToAnEmptySeparator)
{
    std::string const path = save("nothing of the kind");
    NamedInput input(path.c_str());
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    SoSeparator* const root = reader.convert(&input);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->getNumChildren(), 0);
    EXPECT_EQ(root->getRefCount(), 0);
    EXPECT_NE(err.str().find("ERROR! Not an Openflight Input !"), std::string::npos);
    root->ref();
    root->unref();
}

TEST_F(SoInputFltReaderTest, convertsAnInputWithoutANameToNull)
{
    NamedInput empty("");
    EXPECT_EQ(reader.convert(&empty), nullptr);
    NamedInput unnamed(nullptr);
    EXPECT_EQ(reader.convert(&unnamed), nullptr);
}

TEST_F(SoInputFltReaderTest, refusesSomeThatConvertTakes)
{
    std::string const path = save(FltWriter(100, {{"multiplierDiviserUnit", 1}}).bytes());
    NamedInput input(path.c_str());
    EXPECT_FALSE(reader.canConvert(&input));
    StreamCapture const out(std::cout);
    SoSeparator* const root = reader.convert(&input);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->getRefCount(), 1);
    EXPECT_GT(root->getNumChildren(), 0);
    root->unref();
}

#include "support/LoadedLibrary.h"
#include "support/SceneText.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/annex/ForeignFiles/SoForeignFileKit.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/lists/SbStringList.h>
#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoSeparator.h>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

/// Keeps what the toolkit reports.
class ToolkitErrors
{
public:
    ToolkitErrors()
    {
        SoDebugError::setHandlerCallback(take, this);
        SoReadError::setHandlerCallback(take, this);
    }
    ~ToolkitErrors()
    {
        SoDebugError::setHandlerCallback(nullptr, nullptr);
        SoReadError::setHandlerCallback(nullptr, nullptr);
    }

    ToolkitErrors(ToolkitErrors const&) = delete;
    ToolkitErrors& operator=(ToolkitErrors const&) = delete;

    std::string text;

private:
    static void take(SoError const* error, void* self)
    {
        static_cast<ToolkitErrors*>(self)->text += std::string(error->getDebugString().getString()) + '\n';
    }
};

/// The module is loaded here, so that the toolkit finds it under its name without a search path.
class SoFLTFileKitTest : public testing::Test
{
protected:
    std::string save(FltWriter const& flt, std::string const& name = "a.flt")
    {
        flt.save(folder.path(name));
        return folder.path(name);
    }
    std::string saveGroup(std::string const& group, std::string const& name = "a.flt")
    {
        FltWriter flt;
        flt.push().add("Group", {{"idASCII", group}}).pop();
        return save(flt, name);
    }

    /// A kit of the type that the toolkit finds by its name.
    static SoForeignFileKit* makeKit()
    {
        auto* const kit = static_cast<SoForeignFileKit*>(SoType::fromName("SoFLTFileKit").createInstance());
        kit->ref();
        return kit;
    }

    ScratchFolder folder;
    LoadedLibrary library{"libzov.inventor.io.flt"};
    LoadedLibrary module{"libSoFLTFileKit.so"};
};

} // namespace

TEST_F(SoFLTFileKitTest, isFoundByTheToolkitAndInitsOnce)
{
    SoType const type = SoType::fromName("SoFLTFileKit");
    ASSERT_TRUE(type != SoType::badType());
    EXPECT_TRUE(type.isDerivedFrom(SoForeignFileKit::getClassTypeId()));
    module.function<void()>("_ZN12SoFLTFileKit9initClassEv")();
    EXPECT_TRUE(SoType::fromName("SoFLTFileKit") == type);
}

TEST_F(SoFLTFileKitTest, letsTheToolkitReadADatabaseAsItsOwn)
{
    std::string const path = saveGroup("hangar", "Hangar.FLT");
    SoInput input;
    ASSERT_TRUE(input.openFile(path.c_str()));
    SoSeparator* const root = SoDB::readAll(&input);
    ASSERT_NE(root, nullptr);
    root->ref();
    ASSERT_EQ(root->getNumChildren(), 1);
    auto* const kit = static_cast<SoForeignFileKit*>(root->getChild(0));
    EXPECT_TRUE(kit->isOfType(SoType::fromName("SoFLTFileKit")));
    EXPECT_EQ(sceneText(kit->convert()), "DEF root Separator {\n  DEF hangar Separator {\n  }\n}\n");
    EXPECT_NE(sceneText(kit).find("SoFLTFileKit {"), std::string::npos) << sceneText(kit);
    root->unref();
}

TEST_F(SoFLTFileKitTest, letsAFileNodeNameADatabase)
{
    auto* const file = new SoFile;
    file->ref();
    file->name = saveGroup("hangar").c_str();
    ASSERT_EQ(file->copyChildren()->getNumChildren(), 1);
    file->unref();
}

TEST_F(SoFLTFileKitTest, keepsStandardOutputForTheProgram)
{
    std::string const path = saveGroup("hangar");
    SoForeignFileKit* const kit = makeKit();
    StreamCapture const out(std::cout);
    std::cout << "before ";
    EXPECT_TRUE(kit->readFile(path.c_str()));
    std::cout << "between ";
    EXPECT_TRUE(kit->readFile(path.c_str()));
    std::cout << "behind";
    EXPECT_EQ(out.str(), "before between behind");
    EXPECT_TRUE(std::cout.good());
    EXPECT_FALSE(std::filesystem::exists(path + ".log"));
    kit->unref();
}

TEST_F(SoFLTFileKitTest, keepsTheStateOfStandardOutput)
{
    SoForeignFileKit* const kit = makeKit();
    StreamCapture const out(std::cout);
    std::cout.setstate(std::ios::failbit);
    EXPECT_TRUE(kit->readFile(saveGroup("hangar").c_str()));
    EXPECT_EQ(std::cout.rdstate(), std::ios::failbit);
    std::cout.clear();
    kit->unref();
}

TEST_F(SoFLTFileKitTest, judgesFilesByTheirFirstBytes)
{
    SoForeignFileKit* const kit = makeKit();
    EXPECT_TRUE(kit->canReadFile());
    EXPECT_TRUE(kit->canReadFile(save(FltWriter(1570, {{"multiplierDiviserUnit", 1}})).c_str()));
    EXPECT_TRUE(kit->canReadFile(save(FltWriter(1570, {{"multiplierDiviserUnit", 2}})).c_str()));
    EXPECT_TRUE(kit->canReadFile(save(FltWriter(2400)).c_str()));
    EXPECT_FALSE(kit->canReadFile(save(FltWriter(10)).c_str()));
    EXPECT_FALSE(kit->canReadFile(folder.path("none.flt").c_str()));
    EXPECT_FALSE(kit->canReadFile(""));
    kit->unref();
}

TEST_F(SoFLTFileKitTest, readsWhateverUnitsADatabaseHas)
{
    FltWriter flt(1570, {{"multiplierDiviserUnit", 3}, {"vertexCoordinateUnits", 4}});
    flt.push().add("Group", {{"idASCII", "hangar"}}).pop();
    auto* const file = new SoFile;
    file->ref();
    file->name = save(flt).c_str();
    EXPECT_EQ(file->copyChildren()->getNumChildren(), 1);
    file->unref();
}

TEST_F(SoFLTFileKitTest, reportsMessagesToTheToolkit)
{
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "none.flt"}}).pop();
    SoForeignFileKit* const kit = makeKit();
    ToolkitErrors const errors;
    StreamCapture const err(std::cerr);
    EXPECT_TRUE(kit->readFile(save(flt).c_str()));
    EXPECT_NE(errors.text.find("none.flt"), std::string::npos);
    EXPECT_EQ(err.str(), "");
    kit->unref();
}

/// Of each of so many references that lead nowhere there is a message.
TEST_F(SoFLTFileKitTest, reportsTwentyMessagesOneByOneAndCountsTheOthers)
{
    SoForeignFileKit* const kit = makeKit();
    auto const reportedOf = [&](int references) {
        FltWriter flt;
        flt.push();
        for (int i = 0; i < references; ++i)
            flt.add("ExternalReference", {{"asciiPath", "none" + std::to_string(i) + ".flt"}});
        flt.pop();
        ToolkitErrors const errors;
        EXPECT_TRUE(kit->readFile(save(flt).c_str()));
        return errors.text;
    };
    auto const names = [](std::string const& text, int reference) {
        return text.find("none" + std::to_string(reference) + ".flt") != std::string::npos;
    };
    std::string const all = reportedOf(20);
    EXPECT_TRUE(names(all, 0) && names(all, 19)) << all;
    EXPECT_EQ(all.find("left out"), std::string::npos) << all;
    std::string const allButOne = reportedOf(21);
    EXPECT_TRUE(names(allButOne, 0) && names(allButOne, 19)) << allButOne;
    EXPECT_FALSE(names(allButOne, 20)) << allButOne;
    EXPECT_NE(allButOne.find("1 more messages left out"), std::string::npos) << allButOne;
    EXPECT_NE(reportedOf(35).find("15 more messages left out"), std::string::npos);
    kit->unref();
}

TEST_F(SoFLTFileKitTest, saysAtWhichByteARecordIsThatAMessageIsAbout)
{
    SoForeignFileKit* const kit = makeKit();
    FltWriter flt;
    flt.push();
    std::size_t const offset = flt.bytes().size();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 7}}).pop();
    ToolkitErrors errors;
    EXPECT_TRUE(kit->readFile(save(flt).c_str()));
    EXPECT_NE(errors.text.find(" (at byte offset " + std::to_string(offset) + ")\n"), std::string::npos)
        << errors.text;
    errors.text.clear();
    EXPECT_TRUE(kit->readFile(
        save(FltWriter().push().add("ExternalReference", {{"asciiPath", "no.flt"}}).pop()).c_str()));
    EXPECT_NE(errors.text.find("no.flt"), std::string::npos);
    EXPECT_EQ(errors.text.find("at byte offset"), std::string::npos) << "it is about no record";
    kit->unref();
}

TEST_F(SoFLTFileKitTest, saysWhyAFileCantBeReadAndKeepsTheSceneBefore)
{
    SoForeignFileKit* const kit = makeKit();
    EXPECT_EQ(kit->convert(), nullptr);
    ASSERT_TRUE(kit->readFile(saveGroup("hangar").c_str()));
    SoSeparator* const scene = kit->convert();
    std::string const missing = folder.path("none.flt");
    ToolkitErrors const errors;
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    EXPECT_FALSE(kit->readFile(missing.c_str()));
    EXPECT_NE(errors.text.find(missing + ": cannot open: No such file or directory"), std::string::npos);
    EXPECT_FALSE(kit->readFile(save(FltWriter(10)).c_str()));
    EXPECT_FALSE(kit->readFile(""));
    EXPECT_FALSE(kit->readFile(nullptr));
    EXPECT_NE(errors.text.find("no file name was given"), std::string::npos);
    EXPECT_EQ(kit->convert(), scene);
    std::cout << "ours";
    EXPECT_EQ(out.str(), "ours");
    kit->unref();
}

TEST_F(SoFLTFileKitTest, replacesItsSceneByAnotherFiles)
{
    SoForeignFileKit* const kit = makeKit();
    ASSERT_TRUE(kit->readFile(saveGroup("hangar", "a.flt").c_str()));
    ASSERT_TRUE(kit->readFile(saveGroup("tower", "b.flt").c_str()));
    std::string const text = sceneText(kit->convert());
    EXPECT_EQ(text.find("hangar"), std::string::npos);
    EXPECT_NE(text.find("DEF tower "), std::string::npos);
    kit->unref();
}

TEST_F(SoFLTFileKitTest, letsItsSceneGoWithItselfAndWithTheNextFile)
{
    SoForeignFileKit* const kit = makeKit();
    auto const sceneOf = [&](std::string const& path) {
        EXPECT_TRUE(kit->readFile(path.c_str()));
        SoSeparator* const scene = kit->convert();
        scene->ref();
        return scene;
    };
    SoSeparator* const first = sceneOf(saveGroup("hangar", "a.flt"));
    SoSeparator* const second = sceneOf(saveGroup("tower", "b.flt"));
    EXPECT_EQ(first->getRefCount(), 1);
    EXPECT_GT(second->getRefCount(), 1);
    kit->unref();
    EXPECT_EQ(second->getRefCount(), 1);
    first->unref();
    second->unref();
}

TEST_F(SoFLTFileKitTest, leavesTheToolkitsDirectoriesAsTheyWere)
{
    SoForeignFileKit* const kit = makeKit();
    std::string const path = saveGroup("hangar");
    int const before = SoInput::getDirectories().getLength();
    EXPECT_TRUE(kit->readFile(path.c_str()));
    EXPECT_EQ(SoInput::getDirectories().getLength(), before);

    std::string const directory = path.substr(0, path.rfind('/') + 1);
    SoInput::addDirectoryLast(directory.c_str());
    EXPECT_TRUE(kit->readFile(path.c_str()));
    EXPECT_EQ(SoInput::getDirectories().getLength(), before + 1);
    SoInput::removeDirectory(directory.c_str());
    kit->unref();
}

TEST_F(SoFLTFileKitTest, findsExternalReferencesFromANameWithoutADirectory)
{
    saveGroup("hangar", "other.flt");
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).pop();
    std::string const path = save(flt);
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::path(path).parent_path());
    SoForeignFileKit* const kit = makeKit();
    EXPECT_TRUE(kit->readFile("a.flt"));
    EXPECT_NE(sceneText(kit->convert()).find("DEF hangar "), std::string::npos);
    kit->unref();
    std::filesystem::current_path(before);
}

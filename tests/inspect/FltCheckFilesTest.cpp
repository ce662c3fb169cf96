#include "inspect/FltCheckFiles.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "messages/FltLimits.h"
#include "support/MadeAttributes.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"
#include "writer/FltWriter.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

class FltCheckFilesTest : public testing::Test
{
protected:
    /// Code and text of each finding, with names of files as they are in the folder.
    std::vector<std::string> told(FltWriter const& flt)
    {
        flt.save(folder / "database.flt");
        FltInventory const inventory(folder / "database.flt");
        FltFindingList list(inventory);
        FltCheckFiles(inventory, list)
            .check(FltDependencies(inventory, [this](std::string const& name, std::string const&) {
                return std::filesystem::exists(folder / name) ? folder / name : std::string();
            }));
        std::vector<std::string> texts;
        for (FltFinding const& finding : list.sorted())
            texts.push_back(withoutFolder(finding.kind->code() + " " + finding.text, folder));
        return texts;
    }

    static FltWriter withTexture(bool isUsed = true)
    {
        FltWriter flt;
        flt.add("TexturePattern", {{"fileName", "tree.rgb"}, {"patternIndex", 3}}).push();
        flt.add("Face", {{"texturePatternIndex", isUsed ? 3 : -1}});
        return flt.pop();
    }

    static FltWriter referringTo(std::vector<std::string> const& names)
    {
        FltWriter flt;
        flt.push();
        for (std::string const& name : names)
            flt.add("ExternalReference", {{"asciiPath", name}});
        return flt.pop();
    }

    using Texts = std::vector<std::string>;
    ScratchFolder folder;
};

} // namespace

TEST_F(FltCheckFilesTest, tellsOfTexturesThatAreUsedAlone)
{
    EXPECT_EQ(told(withTexture()), Texts{"FLT-401 \"tree.rgb\""});
    EXPECT_EQ(told(withTexture(false)), Texts{});
    static_cast<void>(folder.write("tree.rgb", SmallPictures::plainSgi(4)));
    EXPECT_EQ(told(withTexture()), Texts{});
}

/// What its files lack a referenced database tells where it is checked itself.
TEST_F(FltCheckFilesTest, tellsOfTexturesAndReferencesOfTheDatabaseAlone)
{
    withTexture().save(folder / "textured.flt");
    referringTo({"nowhere.flt", "notes.flt"}).save(folder / "referring.flt");
    static_cast<void>(folder.write("notes.flt", "no database"));
    EXPECT_EQ(told(referringTo({"textured.flt", "referring.flt"})), Texts{});
}

TEST_F(FltCheckFilesTest, tellsAllThatIsWrongWithTheAttributesOfATexture)
{
    static_cast<void>(folder.write("tree.rgb", SmallPictures::plainSgi(4)));
    static_cast<void>(folder.write("tree.rgb.attr", madeAttributes({{24, 5}})));
    EXPECT_EQ(told(withTexture()), Texts{"FLT-420 tree.rgb.attr: it speaks of a picture of 4 channels, which "
                                         "has 3"});
    static_cast<void>(folder.write("tree.rgb.attr", madeAttributes({{24, 5}, {28, 99}})));
    std::vector<std::string> const both = told(withTexture());
    ASSERT_EQ(both.size(), 1U);
    EXPECT_NE(both[0].find("; it speaks of a picture of 4 channels"), std::string::npos) << both[0];
    EXPECT_EQ(both[0].find("FLT-420 tree.rgb.attr: ; "), std::string::npos) << both[0];
}

TEST_F(FltCheckFilesTest, tellsWhichNodeAReferencedFileDoesNotHave)
{
    FltWriter tower;
    tower.push().add("Group", {{"idASCII", "top"}}).pop().save(folder / "tower.flt");
    EXPECT_EQ(told(referringTo({"tower.flt", "tower.flt<top>", "tower.flt<cellar>", "tower.flt<attic>"})),
              (Texts{"FLT-422 \"cellar\" in tower.flt", "FLT-422 \"attic\" in tower.flt"}));
}

TEST_F(FltCheckFilesTest, tellsInWhichFileLevelsAreTooDeepWithThoseThatLeadThere)
{
    FltWriter deep;
    for (int i = 0; i < FltLimits::hierarchyDepth - 1; ++i)
        deep.push().add("Group");
    for (int i = 0; i < FltLimits::hierarchyDepth - 1; ++i)
        deep.pop();
    deep.save(folder / "deep.flt");
    referringTo({"deep.flt"}).save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltFindingList list(inventory);
    FltCheckFiles(inventory, list).check(FltDependencies(inventory, [](auto const&, auto const&) {
        return std::string();
    }));
    std::vector<FltFinding> const findings = list.sorted();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, FltFindingNumber::tooDeepLevels);
    EXPECT_EQ(findings[0].file, folder / "deep.flt");
    EXPECT_EQ(findings[0].text, "1200 levels with those of the files that lead here");
}

TEST_F(FltCheckFilesTest, looksForNodesInFilesThatAreThereAlone)
{
    EXPECT_EQ(told(referringTo({"nowhere.flt<top>"})), Texts{"FLT-402 \"nowhere.flt<top>\""});
    FltWriter tower;
    tower.push().add("Group", {{"idASCII", "top"}}).pop().save(folder / "tower.flt");
    referringTo({"tower.flt<cellar>"}).save(folder / "other.flt");
    EXPECT_EQ(told(referringTo({"other.flt"})), Texts{}) << "which a check of the other one tells";
}

TEST_F(FltCheckFilesTest, tellsOfCirclesInReferencedFilesAsWell)
{
    referringTo({"database.flt"}).save(folder / "back.flt");
    EXPECT_EQ(told(referringTo({"back.flt"})), Texts{"FLT-403 \"database.flt\""});
}

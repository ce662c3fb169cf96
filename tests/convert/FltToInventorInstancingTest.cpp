#include "convert/FltToInventor.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcode.h"
#include "support/ConvertedFile.h"
#include "support/ConvertedScene.h"
#include "support/OpenWatch.h"
#include "support/ScratchFolder.h"
#include "support/SmallStack.h"
#include "support/Text.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoTexture2.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace
{

FltWriter::Fields moved(double x)
{
    return {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 0, 0, 1}}};
}

std::string moveText(std::string const& indent, int x)
{
    return indent + "MatrixTransform {\n" + indent + "  matrix 1 0 0 0\n" + indent + "    0 1 0 0\n" +
           indent + "    0 0 1 0\n" + indent + "    " + std::to_string(x) + " 0 0 1\n" + indent + "}\n";
}

SoGroup* group(SoNode* node)
{
    return static_cast<SoGroup*>(node);
}

// Instances

TEST(FltToInventorInstancingTest, AnInstanceDefinitionIsDrawnInPlaceAndSharedByItsReferences)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 5}}).push();
    flt.add("Group", {{"idASCII", "inside"}}).push().pop().pop();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 5}}).pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF InstanceDefinition_5 Separator {\n"
                                                   "    DEF inside Separator {\n    }\n"
                                                   "  }\n"
                                                   "  USE InstanceDefinition_5\n"));
}

TEST(FltToInventorInstancingTest, AReferenceBeforeItsDefinitionIsLostAndALaterDefinitionDoesNotMendIt)
{
    FltWriter flt;
    flt.push().add("InstanceReference", {{"instanceDefinitionNumber", 5}});
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 5}}).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith("  DEF InstanceDefinition_5 Separator {\n  }\n"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorInstancingTest, ADefinitionUnderANumberInUseReplacesItAndTheFirstKeepsItsPlace)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", -5}}).push();
    flt.add("Group", {{"idASCII", "first"}}).push().pop().pop();
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", -5}}).push().pop();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", -5}}).pop();
    ConvertedScene const scene(flt);
    SoGroup* const root = group(scene.root);
    ASSERT_EQ(root->getNumChildren(), 6);
    EXPECT_EQ(root->getChild(3)->getName(), SbName("InstanceDefinition_-5"));
    EXPECT_EQ(group(root->getChild(3))->getNumChildren(), 1);
    EXPECT_EQ(group(root->getChild(4))->getNumChildren(), 0);
    EXPECT_EQ(root->getChild(5), root->getChild(4));
}

TEST(FltToInventorInstancingTest, AReferenceUnderASwitchIsAddedAsItIsAndAlwaysDrawn)
{
    // Instance records count at the top level alone, so the definition itself stands for the level of a
    // switch here.
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push().pop();
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 2}}).push();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF InstanceDefinition_1 Separator {\n  }\n"
                                                   "  DEF InstanceDefinition_2 Separator {\n"
                                                   "    USE InstanceDefinition_1\n"
                                                   "  }\n"));
}

TEST(FltToInventorInstancingTest, AnInstanceRecordBelowAGroupDoesNothing)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "g"}}).push();
    flt.add("InstanceDefinition").add("InstanceReference").pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n  }\n"));
}

TEST(FltToInventorInstancingTest, AReferenceWithNoLevelOpenIsPassedOver)
{
    FltWriter flt;
    flt.add("InstanceDefinition").add("InstanceReference").push().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(""));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorInstancingTest, DefinitionsWithNoLevelOpenAreSubtreesOfTheirOwn)
{
    FltWriter flt;
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 2}}).push();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop();
    flt.addRaw(FltOpcode::header, FltWriter().lastRecord().substr(4)).push(); // the root's level
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 2}}).pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.messages, "");
    auto* const definition = static_cast<SoGroup*>(scene.find("InstanceDefinition_2"));
    ASSERT_NE(definition, nullptr);
    ASSERT_EQ(definition->getNumChildren(), 1);
    EXPECT_EQ(definition->getChild(0)->getName(), SbName("InstanceDefinition_1"));
}

TEST(FltToInventorInstancingTest, ADefinitionThatRefersToItselfIsRefusedAndReported)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 3}}).push();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 3}}).pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith("  DEF InstanceDefinition_3 Separator {\n  }\n"));
    EXPECT_EQ(scene.messages,
              "WARNING ! An instance holds a reference to itself, which is left out\n(Warning Level: 2)\n\n");
}

TEST(FltToInventorInstancingTest, ADefinitionThatRefersToItselfThroughAnotherIsRefused)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 2}}).push();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith("  DEF InstanceDefinition_1 Separator {\n"
                                     "    DEF InstanceDefinition_2 Separator {\n    }\n"
                                     "  }\n"));
    EXPECT_NE(scene.messages.find("holds a reference to itself"), std::string::npos);
}

TEST(FltToInventorInstancingTest, InstancesThatDoubleAtEachLevelAreBoundedAndReported)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 0}}).push().pop();
    for (int level = 1; level < 100; ++level) {
        flt.add("InstanceDefinition", {{"instanceDefinitionNumber", level}}).push();
        for (int copy = 0; copy < 2; ++copy)
            flt.add("InstanceReference", {{"instanceDefinitionNumber", level - 1}});
        flt.pop();
    }
    ConvertedScene const scene(flt.pop());
    EXPECT_EQ(group(scene.root)->getNumChildren(), 3 + 100);
    EXPECT_NE(scene.messages.find("further ones are left out"), std::string::npos);
}

TEST(FltToInventorInstancingTest, ALongChainOfInstancesIsNoDeeperThanAScene)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 0}}).push().pop();
    for (int level = 1; level < 30000; ++level)
        flt.add("InstanceDefinition", {{"instanceDefinitionNumber", level}})
            .push()
            .add("InstanceReference", {{"instanceDefinitionNumber", level - 1}})
            .pop();
    ConvertedScene const scene(flt.pop());
    EXPECT_EQ(group(scene.root)->getNumChildren(), 3 + 30000);
    EXPECT_NE(scene.messages.find("nodes deep: what lies deeper is left out"), std::string::npos);
}

TEST(FltToInventorInstancingTest, DefinitionsNestedAHundredThousandDeepEndAtTheScenesDepth)
{
    FltWriter flt;
    flt.push();
    for (int level = 0; level < 100000; ++level)
        flt.add("InstanceDefinition", {{"instanceDefinitionNumber", level % 30000}}).push();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.result, 0);
    EXPECT_NE(scene.messages.find("nodes deep"), std::string::npos);
}

// Replication

/// A group "g" with these ancillary records in the first level, and a group "next" behind it.
FltWriter replicated(int count, std::vector<int> const& moves)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "g"}}).add("Replicate", {{"numberOfReplications", count}});
    for (int const x : moves)
        flt.add("Matrix", moved(x));
    return flt;
}

TEST(FltToInventorInstancingTest, AReplicateOf0LeavesAnEmptyReplicationsSeparator)
{
    FltWriter flt = replicated(0, {});
    flt.push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n  }\n"
                                                   "  DEF Replications Separator {\n  }\n"));
}

TEST(FltToInventorInstancingTest, AReplicateAsTheLastAncillaryRecordEndsOnTheVectorsEnd)
{
    FltWriter flt = replicated(3, {});
    flt.push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n  }\n"
                                                   "  DEF Replications Separator {\n  }\n"));
}

TEST(FltToInventorInstancingTest, MatricesAreTakenInPairsAndOneRecordBehindIsPassedOverForEachCopy)
{
    FltWriter flt = replicated(1, {1, 2});
    flt.add("Text", {{"idASCII", "unseen"}})
        .push()
        .add("Text", {{"idASCII", "seen"}})
        .add("Comment")
        .pop()
        .pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n"
                                                   "    DEF seen Separator {\n    }\n"
                                                   "  }\n"
                                                   "  DEF Replications Separator {\n" +
                                                   moveText("    ", 2) +
                                                   "    USE g\n"
                                                   "  }\n"));
}

TEST(FltToInventorInstancingTest, TwoPairsGiveTwoCopies)
{
    FltWriter flt = replicated(2, {1, 2, 3, 4});
    flt.add("Text").add("Text").push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n  }\n"
                                                   "  DEF Replications Separator {\n" +
                                                   moveText("    ", 2) + "    USE g\n" + moveText("    ", 4) +
                                                   "    USE g\n"
                                                   "  }\n"));
}

TEST(FltToInventorInstancingTest, ATestedMatrixWithoutAnotherBehindItEndsTheReplication)
{
    FltWriter flt = replicated(2, {1});
    flt.add("Text", {{"idASCII", "unseen"}}).push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n  }\n"
                                                   "  DEF Replications Separator {\n  }\n"));
}

TEST(FltToInventorInstancingTest, MatricesBehindTheLastCopyGoToTheNode)
{
    FltWriter flt = replicated(1, {1, 2, 3});
    flt.add("Text").push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n" + moveText("    ", 3) +
                                                   "  }\n"
                                                   "  DEF Replications Separator {\n" +
                                                   moveText("    ", 2) +
                                                   "    USE g\n"
                                                   "  }\n"));
}

TEST(FltToInventorInstancingTest, ARecordOfAnotherKindBehindTheReplicateIsLostAndTheNextIsKept)
{
    FltWriter flt = replicated(1, {});
    flt.add("Comment", {{"textDescription", "lost"}})
        .add("Comment", {{"textDescription", "kept"}})
        .push()
        .pop()
        .pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith("  DEF g Separator {\n"
                                                   "    Info {\n      string \"kept\"\n    }\n"
                                                   "  }\n"
                                                   "  DEF Replications Separator {\n  }\n"));
}

TEST(FltToInventorInstancingTest, AReplicateWithNoLevelOpenIsPassedOver)
{
    FltWriter flt;
    flt.add("Group").add("Replicate", {{"numberOfReplications", 1}}).add("Matrix").add("Matrix").push().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(""));
}

TEST(FltToInventorInstancingTest, ReplicasThatDoubleAtEachLevelAreBoundedAndReported)
{
    FltWriter flt;
    flt.push();
    for (int level = 0; level < 100; ++level)
        flt.add("Group")
            .add("Replicate", {{"numberOfReplications", 1}})
            .add("Matrix")
            .add("Matrix")
            .add("Text") // passed over for the copy
            .push();
    ConvertedScene const scene(flt);
    EXPECT_NE(scene.messages.find("further ones are left out"), std::string::npos);
}

// External references

class ExternalReferenceTest : public testing::Test
{
protected:
    /// Writes a file with these references, each followed by a group that tells whether it was visited.
    void write(std::string const& name, std::vector<std::string> const& references)
    {
        FltWriter flt;
        flt.push();
        for (std::string const& reference : references)
            flt.add("ExternalReference", {{"asciiPath", reference}});
        flt.add("Group", {{"idASCII", "behind"}}).push().pop().pop().save(folder.path(name));
    }

    /// Writes a file with a texture on a face, whose name tells the relative path.
    void writeTextured(std::string const& name, std::string const& reference = "")
    {
        FltWriter flt;
        flt.add("TexturePattern", {{"fileName", "t.rgb"}}).vertexPalette();
        double const a = flt.vertex("VertexColor", 0, 0, 0);
        flt.push().face({a, a, a}, {{"texturePatternIndex", 0}});
        if (!reference.empty())
            flt.add("ExternalReference", {{"asciiPath", reference}});
        flt.pop().save(folder.path(name));
    }

    ScratchFolder folder;
};

std::vector<std::string> textureNames(SoNode* node)
{
    std::vector<std::string> names;
    if (node->getTypeId() == SoTexture2::getClassTypeId())
        names.emplace_back(static_cast<SoTexture2*>(node)->filename.getValue().getString());
    else if (node->isOfType(SoGroup::getClassTypeId()))
        for (int i = 0; i < group(node)->getNumChildren(); ++i)
            for (std::string const& name : textureNames(group(node)->getChild(i)))
                names.push_back(name);
    return names;
}

TEST_F(ExternalReferenceTest, AFileStandsBelowItsLabelAndTheRecordBehindIsVisited)
{
    write("main.flt", {"part.flt"});
    FltWriter().save(folder.path("part.flt"));
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(file.text(),
              rootWith("  Separator {\n"
                       "    Label {\n      label \"From OpenFlight File:  part.flt\"\n    }\n"
                       "    DEF root Separator {\n"
                       "      ShapeHints {\n        vertexOrdering COUNTERCLOCKWISE\n"
                       "        shapeType SOLID\n      }\n"
                       "      TextureCoordinateBinding {\n        value PER_VERTEX_INDEXED\n      }\n"
                       "      NormalBinding {\n        value PER_VERTEX_INDEXED\n      }\n"
                       "    }\n"
                       "  }\n"
                       "  DEF behind Separator {\n  }\n"));
    EXPECT_EQ(file.messages, "");
}

TEST_F(ExternalReferenceTest, TheRootOfANestedFileIsHeldByTheGraphAlone)
{
    write("main.flt", {"part.flt"});
    FltWriter().save(folder.path("part.flt"));
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(group(group(file.root)->getChild(3))->getChild(1)->getRefCount(), 1);
}

TEST_F(ExternalReferenceTest, NestedDumpsGoToTheTopFilesLog)
{
    write("main.flt", {"part.flt"});
    FltWriter(1540).save(folder.path("part.flt"));
    ConvertedFile const file(folder.path("main.flt"));
    std::string const log = contentsOf(folder.path("main.flt.log"));
    EXPECT_NE(log.find("end of parsing\n\nSuccess in opening file: " + folder.path("part.flt") +
                       "\nbeginning of parsing\n"),
              std::string::npos);
    EXPECT_NE(log.find("OpenFlight file version: 1540\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.path("part.flt.log")));
}

TEST_F(ExternalReferenceTest, PathsOfNestedFilesGrowFromTheTopFile)
{
    writeTextured("main.flt", "a/b.flt");
    writeTextured("a/b.flt", "c.flt");
    writeTextured("a/c.flt", "d/e.flt");
    writeTextured("a/d/e.flt");
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(textureNames(file.root),
              (std::vector<std::string>{"t.rgb", "a/t.rgb", "a/t.rgb", "a/d/t.rgb"}));
}

TEST_F(ExternalReferenceTest, APathOfAPeriodAndASlashLeavesThePeriodInTheRelativePath)
{
    for (std::string const path : {"./part.flt", ".\\part.flt"}) {
        writeTextured("main.flt", path);
        writeTextured("part.flt");
        ConvertedFile const file(folder.path("main.flt"));
        EXPECT_EQ(textureNames(file.root), (std::vector<std::string>{"t.rgb", "./t.rgb"}));
    }
}

TEST_F(ExternalReferenceTest, AnEmptyPathLeavesTheLabelAndTheAncillaryNodes)
{
    FltWriter flt;
    flt.push().add("ExternalReference").add("Comment", {{"textDescription", "c"}});
    flt.add("Group", {{"idASCII", "behind"}}).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith("  Separator {\n"
                                     "    Label {\n      label \"From OpenFlight File:  \"\n    }\n"
                                     "    Info {\n      string \"c\"\n    }\n"
                                     "  }\n"
                                     "  DEF behind Separator {\n  }\n"));
    EXPECT_EQ(scene.messages, "");
}

TEST_F(ExternalReferenceTest, AFileReferredToTwiceIsConvertedOnceAndShared)
{
    write("main.flt", {"part.flt", "./part.flt", "part.flt"});
    FltWriter().save(folder.path("part.flt"));
    ConvertedFile const file(folder.path("main.flt"));
    SoGroup* const root = group(file.root);
    ASSERT_EQ(root->getNumChildren(), 7);
    EXPECT_EQ(group(root->getChild(4))->getChild(1), group(root->getChild(3))->getChild(1));
    EXPECT_EQ(group(root->getChild(5))->getChild(1), group(root->getChild(3))->getChild(1));
    std::string const log = contentsOf(folder.path("main.flt.log"));
    std::string const opened = "\nSuccess in opening file: " + folder.path("part.flt") + "\n";
    EXPECT_EQ(log.substr(log.size() - 2 * opened.size()), opened + opened); // told each time, read once
}

/// The name, then with ever more detours by way of the folder itself.
std::vector<std::string> spellingsOf(std::string const& name, int count)
{
    std::vector<std::string> spellings{name};
    for (std::string way = "././"; int(spellings.size()) < count; way += "./")
        spellings.push_back(way + name);
    return spellings;
}

/// The scenes of the external files in a converted one.
std::vector<SoNode*> externalScenes(SoSeparator* root)
{
    std::vector<SoNode*> scenes;
    for (int i = 3; i < group(root)->getNumChildren() - 1; ++i)
        scenes.push_back(group(group(root)->getChild(i))->getChild(1));
    return scenes;
}

TEST_F(ExternalReferenceTest, OneFileByAHandfulOfSpellingsIsReadForEach)
{
    write("main.flt", spellingsOf("part.flt", FltLimits::namesOfAFile));
    FltWriter().save(folder.path("part.flt"));
    ConvertedFile const file(folder.path("main.flt"));
    std::vector<SoNode*> const scenes = externalScenes(file.root);
    EXPECT_EQ(std::set<SoNode*>(scenes.begin(), scenes.end()).size(), scenes.size());
    EXPECT_EQ(file.messages, "");
}

TEST_F(ExternalReferenceTest, OneFileByVeryManySpellingsIsSharedBeyondAHandfulAndReported)
{
    int const spellings = FltLimits::namesOfAFile + 3;
    write("main.flt", spellingsOf("part.flt", spellings));
    FltWriter().save(folder.path("part.flt"));
    ConvertedFile const file(folder.path("main.flt"));
    std::vector<SoNode*> const scenes = externalScenes(file.root);
    ASSERT_EQ(scenes.size(), std::size_t(spellings));
    EXPECT_EQ(std::set<SoNode*>(scenes.begin(), scenes.end()).size(), std::size_t(FltLimits::namesOfAFile));
    for (std::size_t i = FltLimits::namesOfAFile; i < scenes.size(); ++i)
        EXPECT_EQ(scenes[i], scenes.front());
    EXPECT_EQ(countOf(file.messages,
                      "WARNING ! A file is referred to by too many names, or too often: the scene "
                      "that was made of it is used again: "),
              3);
    std::string const log = contentsOf(folder.path("main.flt.log"));
    EXPECT_EQ(countOf(log, "\nSuccess in opening file: "), spellings);
}

TEST_F(ExternalReferenceTest, FilesThatReferToEachOtherByManySpellingsStaySmall)
{
    // Each file names the next one eighty times; read for each way, the last would be read 4 * 10^7 times.
    for (int i = 0; i < 4; ++i)
        write("f" + std::to_string(i) + ".flt", spellingsOf("f" + std::to_string(i + 1) + ".flt", 80));
    FltWriter().save(folder.path("f4.flt"));
    ConvertedFile const file(folder.path("f0.flt"));
    EXPECT_LT(std::filesystem::file_size(folder.path("f0.flt.log")), 64U << 20);
    EXPECT_EQ(group(file.root)->getNumChildren(), 3 + 80 + 1);
}

TEST_F(ExternalReferenceTest, AFileThatIsNotThereIsReportedAndTheRecordBehindIsPassedOver)
{
    write("main.flt", {"missing.flt"});
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(file.text(), rootWith("  Separator {\n"
                                    "    Label {\n      label \"From OpenFlight File:  missing.flt\"\n    }\n"
                                    "  }\n"));
    EXPECT_EQ(file.messages, "ERROR! CAN'T RESOLVE EXTERNAL REFERENCE: missing.flt\n(Warning Level: 3)\n\n");
}

TEST_F(ExternalReferenceTest, TheTextOfAnUnresolvedReferenceStaysValidInTheConsole)
{
    write("main.flt", {"missing.flt"});
    {
        ConvertedFile const file(folder.path("main.flt"));
    }
    StreamCapture const err(std::cerr);
    FltWarningMessageConsole::showMessagesConsole(3);
    EXPECT_NE(err.str().find("ERROR! CAN'T RESOLVE EXTERNAL REFERENCE: missing.flt\n(Warning Level: 3)\n"),
              std::string::npos);
}

TEST_F(ExternalReferenceTest, AnInputWithoutADirectoryResolvesNothing)
{
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "part.flt"}}).pop();
    ConvertedScene const scene(flt, "scene.flt");
    EXPECT_EQ(scene.messages, "ERROR! CAN'T RESOLVE EXTERNAL REFERENCE: part.flt\n(Warning Level: 3)\n\n");
}

TEST_F(ExternalReferenceTest, AFileThatIsNotOpenFlightLeavesAnEmptyRoot)
{
    write("main.flt", {"part.flt"});
    std::ofstream(folder.path("part.flt")) << "no database";
    ConvertedFile const file(folder.path("main.flt"));
    SoGroup* const reference = group(group(file.root)->getChild(3));
    ASSERT_EQ(reference->getNumChildren(), 2);
    EXPECT_EQ(group(reference->getChild(1))->getNumChildren(), 0);
    EXPECT_EQ(file.messages, "ERROR! Not an Openflight Input !\n(Warning Level: 3)\n\n");
}

TEST_F(ExternalReferenceTest, APipeAsAReferenceIsNotOpened)
{
    write("main.flt", {"part"});
    ASSERT_EQ(::mkfifo(folder.path("part").c_str(), 0600), 0);
    OpenWatch watch(folder.path("part"));
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(file.messages, "Error in opening file: " + folder.path("part") +
                                 "\nERROR ! FltParser has no INPUT !\n(Warning Level: 3)\n\n");
    EXPECT_FALSE(watch.wasOpened());
}

TEST_F(ExternalReferenceTest, ADirectoryAsAReferenceLeavesAnEmptyRoot)
{
    write("main.flt", {"part"});
    std::filesystem::create_directory(folder.path("part"));
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(file.messages, "Error in opening file: " + folder.path("part") +
                                 "\nERROR ! FltParser has no INPUT !\n(Warning Level: 3)\n\n");
    EXPECT_EQ(group(file.root)->getNumChildren(), 5);
}

TEST_F(ExternalReferenceTest, AFileThatRefersToItselfIsReportedAndLeftEmpty)
{
    write("main.flt", {"main.flt"});
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_EQ(file.text(), rootWith("  Separator {\n"
                                    "    Label {\n      label \"From OpenFlight File:  main.flt\"\n    }\n"
                                    "  }\n"
                                    "  DEF behind Separator {\n  }\n"));
    EXPECT_EQ(file.messages,
              "WARNING ! An external reference leads back to a file that it comes from and is left "
              "empty: main.flt\n(Warning Level: 2)\n\n");
}

TEST_F(ExternalReferenceTest, AFileThatLeadsBackToItselfThroughOthersIsReported)
{
    write("main.flt", {"a.flt"});
    write("a.flt", {"sub/../b.flt"});
    write("b.flt", {"./main.flt"});
    std::filesystem::create_directory(folder.path("sub"));
    ConvertedFile const file(folder.path("main.flt"));
    EXPECT_NE(file.messages.find("leads back to a file that it comes from and is left empty: ./main.flt"),
              std::string::npos);
}

TEST_F(ExternalReferenceTest, ALongChainIsFollowedToItsEnd)
{
    int const length = 100;
    for (int i = 0; i < length; ++i)
        write("f" + std::to_string(i) + ".flt", {"f" + std::to_string(i + 1) + ".flt"});
    FltWriter().push().add("Group", {{"idASCII", "last"}}).pop().save(folder.path("f100.flt"));
    ConvertedFile const file(folder.path("f0.flt"));
    EXPECT_EQ(file.messages, "");
    EXPECT_EQ(countOf(file.text(), "DEF last "), 1);
}

TEST_F(ExternalReferenceTest, AChainThatTheStackCanNotHoldIsCutAndReported)
{
    int const length = 600; // the nodes would be too deep for a scene a little later
    for (int i = 0; i < length; ++i)
        write("f" + std::to_string(i) + ".flt", {"f" + std::to_string(i + 1) + ".flt"});
    std::string messages;
    runOnStackOf(FltLimits::stackForAFile + (256U << 10),
                 [&] { messages = ConvertedFile(folder.path("f0.flt")).messages; });
    EXPECT_EQ(countOf(messages, "External references lead from file to file too often: one is left empty"), 1)
        << messages;
}

TEST_F(ExternalReferenceTest, OverrideFlagsAreNotLookedAt)
{
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "part.flt"}, {"Flags", 0xffffffff}}).pop();
    flt.save(folder.path("main.flt"));
    writeTextured("part.flt");
    EXPECT_EQ(textureNames(ConvertedFile(folder.path("main.flt")).root), std::vector<std::string>{"t.rgb"});
}

} // namespace

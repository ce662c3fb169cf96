#include "loader/FltLoadLog.h"

#include "loader/FltLoader.h"
#include "messages/FltLimits.h"
#include "support/ConvertedFile.h"
#include "support/RecordText.h"
#include "support/SameText.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"
#include "writer/EveryRecord.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

/// Databases whose log, made beside the complete conversion without a scene, has to be that of the exact one.
class FltLoadLogTest : public testing::Test
{
protected:
    void save(FltWriter const& flt, std::string const& name) const { flt.save(folder.path(name)); }

    /// A file that refers to others.
    void save(std::string const& name, std::vector<std::string> const& references, int revision = 1570) const
    {
        FltWriter flt(revision);
        flt.push();
        for (std::string const& reference : references)
            flt.add("ExternalReference", {{"asciiPath", reference}});
        save(flt.pop(), name);
    }

    /// The log of a database, the same by both conversions.
    std::string logOf(FltWriter const& flt) const
    {
        std::string const path = folder.path("top.flt");
        flt.save(path);
        ConvertedFile const exact(path);
        FltLoader loader;
        loader.log = folder / "complete.log";
        static_cast<void>(loader.load(path));
        std::string log = withoutAddress(contentsOf(folder / "complete.log"));
        expectSameText(log, withoutAddress(contentsOf(path + ".log")));
        return log;
    }

    /// How often a file is opened, or found open already.
    int openingsOf(std::string const& name, std::string const& log) const
    {
        return countOf(log, "Success in opening file: " + folder / name);
    }

    static int filesIn(std::string const& log) { return countOf(log, "beginning of parsing\n"); }
    static int badColorsIn(std::string const& log) { return countOf(log, "bad color index\n"); }

    ScratchFolder folder;
};

FltWriter::Fields referenceTo(std::string const& name)
{
    return {{"asciiPath", name}};
}

/// Opens a level of a group which is a switch by its name: the toolkit doesn't know blanks in names.
void openGroupNamedAsSwitch(FltWriter& flt)
{
    flt.add("Group").add("LongID", {{"idASCII", "a flt switch"}}).push();
}

void openLevelOfDetail(FltWriter& flt)
{
    flt.add("LOD").push();
}

void openSwitchAndReference(FltWriter& flt)
{
    flt.add("Switch").push().add("ExternalReference", {{"asciiPath", ""}}).push();
}

/// Adds two copies to a node. Each takes one record behind the node's decorations, the second if there is
/// room for the first.
void replicate(FltWriter& flt)
{
    flt.add("Replicate", {{"numberOfReplications", 2}});
    for (int matrix = 0; matrix < 4; ++matrix)
        flt.add("Matrix");
}

FltWriter& refer(FltWriter& flt, std::vector<std::string> const& names)
{
    for (std::string const& name : names)
        flt.add("ExternalReference", referenceTo(name));
    return flt;
}

TEST_F(FltLoadLogTest, ALogHoldsEveryRecordOfEveryRevision)
{
    for (int const revision : {11, 13, 14, 1420, 1421, 1500, 1510, 1540, 1550, 1570, 1580, 1600})
        EXPECT_EQ(filesIn(logOf(everyRecord(revision))), 1) << revision;
}

TEST_F(FltLoadLogTest, FilesAreListedWhereTheyAreConvertedAndEachOnceForEachThatRefersToThem)
{
    save("sub/far.flt", {"../near.flt", "near.flt", "../sub/far.flt"});
    save("sub/near.flt", {});
    save("near.flt", {"sub/far.flt", "none.flt", "near.flt", "old.flt", "text.flt"});
    save("old.flt", {"near.flt"}, 10);
    folder.write("text.flt", "no database");
    FltWriter flt;
    flt.push();
    for (char const* const name : {"near.flt", "sub/far.flt", "near.flt", "./near.flt", "sub\\far.flt",
                                   ".//near.flt", "none.flt", "near.flt", ""})
        flt.add("ExternalReference", referenceTo(name));
    EXPECT_GT(filesIn(logOf(flt.pop())), 8);
}

TEST_F(FltLoadLogTest, OneFileByVeryManyNamesIsListedAHandfulOfTimes)
{
    save("a.flt", {});
    FltWriter flt;
    flt.push();
    for (std::string name = "a.flt"; name.size() < 100; name.insert(0, "./"))
        flt.add("ExternalReference", referenceTo(name));
    int const files = filesIn(logOf(flt.pop()));
    EXPECT_GT(files, 2);
    EXPECT_LT(files, 20);
}

TEST_F(FltLoadLogTest, ReferencesAreFollowedInNodesOfEveryKind)
{
    save("a.flt", {});
    FltWriter flt;
    flt.push();
    for (char const* const record : {"Group", "DOF", "Switch", "LOD", "OLDLOD", "Object", "Text",
                                     "ClipRegion", "LightSource", "Sound", "ExternalReference"}) {
        flt.add(record).push().add("ExternalReference", referenceTo("a.flt"));
        flt.add("ExternalReference", referenceTo("a.flt")).pop();
        flt.add(record).add("ExternalReference", referenceTo("a.flt"));
    }
    flt.add("InstanceDefinition").push().add("ExternalReference", referenceTo("a.flt")).pop();
    flt.add("InstanceReference").add("ExternalReference", referenceTo("a.flt")).pop();
    flt.pop().pop().add("Group").add("ExternalReference", referenceTo("a.flt"));
    EXPECT_GT(countOf(logOf(flt), "Success in opening file"), 16);
}

TEST_F(FltLoadLogTest, ReplicasTakeTheReferencesBehindThem)
{
    save("a.flt", {});
    save("b.flt", {});
    FltWriter flt;
    flt.push();
    for (char const* const record : {"Group", "LOD", "ExternalReference"}) {
        replicate(flt.add(record));
        refer(flt, {"a.flt", "a.flt", "b.flt"});
    }
    flt.add("Group").add("Replicate", {{"numberOfReplications", 3}}).add("Matrix").add("Comment");
    std::string const log = logOf(refer(flt, {"b.flt"}).pop());
    EXPECT_EQ(openingsOf("a.flt", log), 0);
    EXPECT_EQ(openingsOf("b.flt", log), 3);
}

TEST_F(FltLoadLogTest, ReplicasWithNoLevelOpenTakeNothing)
{
    save("a.flt", {});
    FltWriter flt;
    replicate(flt.add("Group"));
    EXPECT_EQ(openingsOf("a.flt", logOf(refer(flt, {"a.flt", "a.flt"}).push().pop())), 2);
}

TEST_F(FltLoadLogTest, ReplicasBeyondWhatASceneMayHoldLeaveTheSecondReference)
{
    save("a.flt", {});
    FltWriter flt;
    flt.push();
    for (int level = 0; level < 60; ++level) {
        replicate(flt.add("Group"));
        refer(flt, {"a.flt", "a.flt"}).push();
    }
    EXPECT_GT(openingsOf("a.flt", logOf(flt)), 0);
}

TEST_F(FltLoadLogTest, ReplicasThatWouldStandTooDeepLeaveTheSecondReference)
{
    struct Nest {
        void (*open)(FltWriter&);
        int nodes;  ///< On the way down.
        int around; ///< Groups around all, so that one level ends right above the deepest node.
    };
    save("a.flt", {});
    save("b.flt", {});
    for (Nest const& nest : {Nest{openGroupNamedAsSwitch, 2, 0}, Nest{openLevelOfDetail, 2, 0},
                             Nest{openSwitchAndReference, 3, 1}}) {
        FltWriter flt;
        flt.push();
        for (int group = 0; group < nest.around; ++group)
            flt.add("Group").push();
        int const levels = FltLimits::sceneDepth / nest.nodes + 10;
        for (int level = 0; level < levels; ++level) {
            replicate(flt.add("Group"));
            nest.open(refer(flt, {"a.flt", "b.flt", "a.flt"}));
        }
        int const openings = openingsOf("b.flt", logOf(flt));
        EXPECT_GT(openings, 0);
        EXPECT_LT(openings, 30) << "only the deepest ones";
    }
}

TEST_F(FltLoadLogTest, HierarchyBelowTheDeepestLevelIsNotLookedAt)
{
    save("a.flt", {});
    FltWriter flt;
    flt.push();
    for (int level = 0; level < 1300; ++level)
        flt.add("Group").push();
    EXPECT_EQ(filesIn(logOf(flt.add("ExternalReference", referenceTo("a.flt")))), 1);
}

TEST_F(FltLoadLogTest, BadColorIndicesStandWhereTheScenesFacesAre)
{
    save("a.flt", {});
    FltWriter flt;
    flt.add("Material", {{"index", 3}}).vertexPalette();
    auto const vertex = [&](char const* form) { return static_cast<double>(flt.vertex(form, 1, 2, 3)); };
    double const color = vertex("VertexColor");
    double const normal = vertex("VertexColorNormal");
    double const uv = vertex("VertexColorUv");
    double const normalUv = vertex("VertexColorNormalUv");
    auto const addFaces = [&] {
        for (double const index : {-1.0, 2147483647.0, 131073.0 * 128, 131072.0 * 128})
            for (double const material : {-1.0, 3.0})
                for (double const flags : {0.0, double(0x40000000), double(0x10000000)})
                    for (std::vector<double> const& corners :
                         std::vector<std::vector<double>>{{color, color, color},
                                                          {uv, normalUv, normalUv},
                                                          {color, normal, uv},
                                                          {9, 9},
                                                          {}})
                        flt.face(corners, {{"primaryColorIndex", index},
                                           {"materialIndex", material},
                                           {"flags", flags},
                                           {"texturePatternIndex", -1}});
        flt.add("Face", {{"primaryColorIndex", -1}, {"materialIndex", -1}, {"flags", 0}}).push();
        flt.add("MorphVertexList", {{"offsets", {color, normal}}}).pop();
        flt.add("Face", {{"primaryColorIndex", -1}, {"materialIndex", -1}, {"flags", 0}}).push();
        flt.add("OldVertex").add("OldVertexColor").add("OldVertexColorNormal").pop();
    };
    addFaces(); // with no level open
    flt.push().add("Object").push();
    addFaces();
    flt.add("PushSubface");
    addFaces();
    flt.add("PopSubface").pop();
    addFaces(); // outside of objects
    flt.add("ExternalReference", referenceTo("a.flt")).add("Object");
    addFaces();
    std::string const log = logOf(flt.pop());
    EXPECT_GT(badColorsIn(log), 20);
    EXPECT_GT(log.rfind("bad color index"), log.rfind("beginning of parsing"));
    EXPECT_LT(log.find("bad color index"), log.rfind("beginning of parsing"));
}

} // namespace

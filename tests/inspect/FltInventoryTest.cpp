#include "inspect/FltInventory.h"

#include "records/FltOpcode.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/EveryRecord.h"
#include "writer/FltWriter.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>

namespace
{

class FltInventoryTest : public testing::Test
{
protected:
    FltInventory of(FltWriter const& flt)
    {
        flt.save(folder / "database.flt");
        return FltInventory(folder / "database.flt");
    }

    ScratchFolder folder;
};

std::vector<std::string> namesOf(FltInventory const& inventory)
{
    std::vector<std::string> names;
    for (FltInventory::Node const& node : inventory.nodes)
        names.push_back(std::string(node.depth, ' ') + node.name);
    return names;
}

/// A group with two objects, the second with two faces.
FltWriter twoObjects()
{
    FltWriter flt(1570, {{"id", "db"}, {"vertexCoordinateUnits", 4}, {"originLatitude", 48.5}});
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 2, 3), b = flt.vertex("VertexColorUv", 4, 5, 6),
                 c = flt.vertex("VertexColorNormal", 7, 8, 9);
    flt.push().add("Group", {{"idASCII", "g1"}}).add("LongID", {{"idASCII", "a long name"}}).push();
    flt.add("Object", {{"idASCII", "o1"}}).push().face({a, b, c}, {{"texturePatternIndex", 2}}).pop();
    flt.add("Object", {{"idASCII", "o2"}}).push().face({c, b, a, b}).face({a, 999}).pop();
    return flt.pop().pop();
}

} // namespace

TEST_F(FltInventoryTest, takesOverWhatTheHeaderSays)
{
    FltInventory const inventory = of(twoObjects());
    EXPECT_EQ(inventory.header.name, "db");
    EXPECT_EQ(inventory.header.revision, 1570);
    EXPECT_EQ(inventory.header.units, 4);
    EXPECT_EQ(inventory.header.originLatitude, 48.5);
    EXPECT_EQ(inventory.bytes(), std::filesystem::file_size(folder / "database.flt"));
}

TEST_F(FltInventoryTest, listsNodesInPreorderWithTheirLongNames)
{
    FltInventory const inventory = of(twoObjects());
    EXPECT_EQ(namesOf(inventory), (std::vector<std::string>{"db", " a long name", "  o1", "  o2"}));
    EXPECT_EQ(inventory.nodes[1].children, 2U);
    EXPECT_EQ(inventory.nodes[2].faces, 1U);
    EXPECT_EQ(inventory.nodes[3].faces, 2U);
    EXPECT_EQ(inventory.pathOf(3), "a long name/o2");
}

/// Of such a plane only the complete conversion knew that it is a node; what stood below it was listed below
/// the node before it.
TEST_F(FltInventoryTest, listsWhatStandsBelowASeparatingPlaneThere)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push()
        .add("Group", {{"idASCII", "before"}})
        .addRaw(FltOpcode::separatingPlane, "plane" + std::string(39, '\0'));
    flt.push().add("Object", {{"idASCII", "below"}}).pop().pop();
    EXPECT_EQ(namesOf(of(flt)), (std::vector<std::string>{"db", " before", " plane", "  below"}));
}

TEST_F(FltInventoryTest, givesEachNodeTheBytesOfItsWholeSubtree)
{
    FltInventory const inventory = of(twoObjects());
    FltInventory::Node const& group = inventory.nodes[1];
    EXPECT_EQ(inventory.nodes[2].end, inventory.nodes[3].offset);
    EXPECT_EQ(group.end, inventory.nodes[3].end + 4) << "the Pop of the group's own level";
    EXPECT_EQ(inventory.nodes[0].end, inventory.bytes());
}

TEST_F(FltInventoryTest, findsTheVerticesOfFacesAndTheirPlaces)
{
    FltInventory const inventory = of(twoObjects());
    ASSERT_EQ(inventory.faces.size(), 3U);
    EXPECT_EQ(inventory.faces[1].vertexCount, 4U);
    std::uint32_t const first = inventory.faceVertices[inventory.faces[1].firstVertex];
    EXPECT_EQ(inventory.position(first), (std::array<double, 3>{7, 8, 9}));
    EXPECT_EQ(inventory.vertices[first].opcode, 69);
    EXPECT_EQ(inventory.triangles(), 3U);
}

TEST_F(FltInventoryTest, keepsOffsetsThatHitNoVertex)
{
    FltInventory const inventory = of(twoObjects());
    ASSERT_EQ(inventory.lostOffsets.size(), 1U);
    EXPECT_EQ(inventory.lostOffsets[0].face, 2U);
    EXPECT_EQ(inventory.lostOffsets[0].value, 999);
    EXPECT_EQ(inventory.faceVertices.back(), FltInventory::none);
}

/// Only the lengths of the vertices were counted; a conversion counted all bytes, and drew other faces.
TEST_F(FltInventoryTest, countsAllBytesOfThePaletteInOffsets)
{
    FltWriter flt;
    flt.vertexPalette();
    std::size_t const head = flt.lastOffset();
    double const first = flt.vertex("VertexColor", 1, 2, 3);
    flt.add("Comment", {{"textDescription", "between two vertices"}});
    flt.vertex("VertexColor", 4, 5, 6);
    auto const second = static_cast<double>(flt.lastOffset() - head);
    FltInventory const inventory = of(flt.push().face({first, second}).pop());
    EXPECT_TRUE(inventory.lostOffsets.empty());
    EXPECT_EQ(inventory.position(inventory.faceVertices.at(1)), (std::array<double, 3>{4, 5, 6}));
}

TEST_F(FltInventoryTest, knowsWhichVerticesTheFileEndsWithin)
{
    for (unsigned const length : {31U, 32U}) {
        FltWriter flt;
        flt.vertexPalette().vertex("VertexColor", 4, 5, 6);
        flt.resizeLast(length);
        FltInventory const inventory = of(flt);
        ASSERT_EQ(inventory.vertices.size(), 1U);
        EXPECT_EQ(inventory.vertices[0].isWhole, length == 32);
        EXPECT_EQ(inventory.position(0)[1], 5);
    }
    for (unsigned const length : {15U, 16U}) {
        FltWriter flt(11);
        flt.push().add("Face").push().add("OldVertex", {{"Ycoordinate", 5}}).resizeLast(length);
        FltInventory const inventory = of(flt);
        ASSERT_EQ(inventory.vertices.size(), 1U);
        EXPECT_EQ(inventory.vertices[0].isWhole, length == 16);
        EXPECT_EQ(inventory.position(0)[1], 5);
    }
}

TEST_F(FltInventoryTest, takesOldVerticesInWholeUnits)
{
    FltWriter flt(11);
    flt.push().add("Face").push();
    for (int i = 0; i < 3; ++i)
        flt.add("OldVertex", {{"Xcoordinate", i}, {"Ycoordinate", -2}, {"Zcoordinate", 5}});
    FltInventory const inventory = of(flt.pop().pop());
    ASSERT_EQ(inventory.faces[0].vertexCount, 3U);
    EXPECT_EQ(inventory.position(inventory.faceVertices[2]), (std::array<double, 3>{2, -2, 5}));
}

TEST_F(FltInventoryTest, countsWhatUsesATexture)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", "a.rgb"}, {"patternIndex", 2}});
    flt.add("TexturePattern", {{"fileName", "b.rgb"}, {"patternIndex", 3}});
    flt.push()
        .add("Face", {{"texturePatternIndex", 2}})
        .add("Face", {{"detailTexturePatternIndex", 2}})
        .pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.textures.at(2).name, "a.rgb");
    EXPECT_EQ(inventory.textures.at(2).uses, 2U);
    EXPECT_EQ(inventory.textures.at(3).uses, 0U);
}

TEST_F(FltInventoryTest, tellsWhichChildrenTheMasksOfASwitchShow)
{
    FltWriter flt;
    flt.push().add("Switch", {{"idASCII", "sw"},
                              {"indexOfCurrentMask", 1},
                              {"numberOfMasks", 2},
                              {"numberOf32BitWordsPerMask", 2},
                              {"masks", {1, 2, 4, 0}}});
    FltInventory const inventory = of(flt.pop());
    FltInventory::Switch const& one = inventory.switches.at(0);
    EXPECT_TRUE(one.shows(0, 0));
    EXPECT_TRUE(one.shows(0, 33));
    EXPECT_TRUE(one.shows(1, 2));
    EXPECT_FALSE(one.shows(1, 33));
    EXPECT_FALSE(one.shows(2, 0));
    EXPECT_FALSE(one.shows(0, 64));
    EXPECT_FALSE(one.shows(-1, 0));
}

TEST_F(FltInventoryTest, knowsWhereFacesAreSubfaces)
{
    FltWriter flt;
    flt.push().add("Face").add("PushSubface").add("Face").add("PopSubface").add("Face").pop();
    FltInventory const inventory = of(flt);
    EXPECT_FALSE(inventory.faces[0].isSubface);
    EXPECT_TRUE(inventory.faces[1].isSubface);
    EXPECT_FALSE(inventory.faces[2].isSubface);
}

TEST_F(FltInventoryTest, goesOnWithTheSameNodeInALevelRightAfterItsFirst)
{
    FltWriter flt;
    flt.push()
        .add("Group", {{"idASCII", "g1"}})
        .push()
        .pop()
        .push()
        .add("Object", {{"idASCII", "o1"}})
        .pop()
        .pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.pathOf(2), "g1/o1");
    EXPECT_TRUE(inventory.imbalances.empty());
}

TEST_F(FltInventoryTest, readsEveryRecordOfEveryRevisionAndPrintsNothing)
{
    StreamCapture const output(std::cout);
    StreamCapture const errors(std::cerr);
    for (int const revision : {11, 14, 1421, 1500, 1540, 1570, 1580}) {
        FltInventory const inventory = of(everyRecord(revision));
        EXPECT_EQ(inventory.fault(), FltFraming::Fault::none);
        EXPECT_EQ(inventory.header.revision, revision);
        EXPECT_EQ(inventory.nodes[0].end, inventory.bytes());
    }
    EXPECT_EQ(output.str() + errors.str(), "");
}

TEST_F(FltInventoryTest, survivesEveryTruncationAndEachByteChanged)
{
    std::string const bytes = everyRecordInBrief(1570).bytes();
    constexpr std::size_t step = 7;
    std::uint64_t records = 0;
    for (std::size_t size = 16; size < bytes.size(); size += step) {
        std::string broken = bytes;
        broken[size] = static_cast<char>(~broken[size]);
        for (std::string const& variant : {bytes.substr(0, size), broken})
            try {
                records += FltInventory(folder.write("broken.flt", variant)).records();
            } catch (std::runtime_error const&) {
                EXPECT_LT(size, 400U) << "only a damaged header makes a file unreadable";
            }
    }
    EXPECT_GT(records, bytes.size() / step);
}

TEST_F(FltInventoryTest, makesFewNodesOfRecordsThatAreHardlyThere)
{
    // Each would hold two hundred characters of a path, read from what follows it.
    FltWriter flt;
    for (int i = 0; i < 100'000; ++i)
        flt.addRaw(63);
    FltInventory const inventory = of(flt.push().pop());
    EXPECT_LT(inventory.references.size(), 10'000U);
    EXPECT_EQ(inventory.references.size() + 1, inventory.nodes.size());
    EXPECT_EQ(inventory.complaints.size(), 1U);
}

TEST_F(FltInventoryTest, refusesWhatIsNoDatabase)
{
    EXPECT_THROW(FltInventory(folder / "missing.flt"), std::runtime_error);
    EXPECT_THROW(FltInventory(folder.write("text.flt", "no database")), std::runtime_error);
    EXPECT_THROW(FltInventory(folder.write("empty.flt", "")), std::runtime_error);
    EXPECT_THROW(of(FltWriter(10)), std::runtime_error);
}

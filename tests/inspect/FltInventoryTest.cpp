#include "inspect/FltInventory.h"

#include "messages/FltLimits.h"
#include "records/FltOpcode.h"
#include "support/InventoryText.h"
#include "support/SameText.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/EveryRecord.h"
#include "writer/FltMeshRecords.h"
#include "writer/FltWriter.h"

#include <array>
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

TEST_F(FltInventoryTest, givesANodeTheBytesOfWhatIsSaidOfIt)
{
    FltWriter flt;
    flt.push().add("Group").add("Comment", {{"textDescription", "a group"}}).add("Group").pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.nodes[1].end, inventory.nodes[2].offset);
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

/// Lists that grow step by step take twice the memory while they do.
TEST_F(FltInventoryTest, makesRoomForItsListsAtOnceAndNoMoreThanTheyFill)
{
    for (int const revision : {13, 1570}) {
        FltWriter flt(revision);
        flt.vertexPalette();
        std::vector<double> corners;
        for (int i = 0; i < 40; ++i)
            corners.push_back(flt.vertex("VertexColor", i, i * i, 0));
        flt.push();
        for (int i = 0; i < 5; ++i)
            flt.add("Group").push().add("Object").push().face(corners).face(corners).pop().pop();
        FltInventory const inventory = of(flt.pop());
        ASSERT_EQ(inventory.faceVertices.size(), 400U);
        EXPECT_EQ(inventory.faceVertices.capacity(), inventory.faceVertices.size());
        EXPECT_EQ(inventory.vertices.capacity(), 40U);
        EXPECT_EQ(inventory.faces.capacity(), 10U);
        EXPECT_EQ(inventory.nodes.capacity(), inventory.nodes.size());
    }
}

TEST_F(FltInventoryTest, makesRoomForOldVerticesAtOnce)
{
    FltWriter flt(11);
    flt.push().add("Face").push();
    for (int i = 0; i < 7; ++i)
        for (char const* const form : {"OldVertex", "OldVertexColor", "OldVertexColorNormal"})
            flt.add(form);
    FltInventory const inventory = of(flt.pop().pop());
    ASSERT_EQ(inventory.vertices.size(), 21U);
    EXPECT_EQ(inventory.vertices.capacity(), 21U);
    EXPECT_EQ(inventory.faceVertices.capacity(), 21U);
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

TEST_F(FltInventoryTest, countsFurtherLayersThatUseATexture)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", "a.rgb"}, {"patternIndex", 2}});
    std::string layers = FltWriter::big32(static_cast<int>(0xc0000000)); // the first and the second
    for (int const texture : {2, 9})
        layers += FltWriter::big16(texture) + FltWriter::big16(0) + FltWriter::big16(0) + FltWriter::big16(0);
    flt.push().add("Face").addRaw(52, layers).add("Face").addRaw(52, layers.substr(0, 10)).pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.textures.size(), 1U);
    EXPECT_EQ(inventory.textures.at(2).uses, 1U) << "the second record ends within its first layer";
}

TEST_F(FltInventoryTest, countsTheLastLayerThatUsesATexture)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", "a.rgb"}, {"patternIndex", 2}});
    flt.push().add("Face").addRaw(52, FltWriter::big32(1 << 25) + FltWriter::big16(2) + FltWriter::big16(0) +
                                          FltWriter::big16(0) + FltWriter::big16(0));
    EXPECT_EQ(of(flt.pop()).textures.at(2).uses, 1U);
}

TEST_F(FltInventoryTest, tellsWhichChildrenTheMasksOfASwitchShow)
{
    FltWriter flt;
    flt.push().add("Switch", {{"idASCII", "sw"},
                              {"indexOfCurrentMask", 1},
                              {"numberOfMasks", 2},
                              {"numberOf32BitWordsPerMask", 2},
                              {"masks", {1, 2, 7, 0}}});
    FltInventory const inventory = of(flt.pop());
    FltInventory::Switch const& one = inventory.switches.at(0);
    EXPECT_TRUE(one.shows(0, 0));
    EXPECT_TRUE(one.shows(0, 33));
    EXPECT_TRUE(one.shows(1, 2));
    EXPECT_FALSE(one.shows(1, 33));
    EXPECT_FALSE(one.shows(2, 0));
    EXPECT_FALSE(one.shows(0, 64));
    EXPECT_FALSE(one.shows(0, 66)) << "the next mask would";
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

/// They were listed, and no conversion shows them.
TEST_F(FltInventoryTest, listsNoNodeOfAnExtension)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("PushExtension").add("Group").push().add("Face").pop().add("PopExtension").pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(namesOf(inventory), std::vector<std::string>{"db"});
    EXPECT_TRUE(inventory.faces.empty());
    EXPECT_TRUE(inventory.imbalances.empty());
}

/// The level went to the node above, and the name was lost.
TEST_F(FltInventoryTest, goesOnWithANodeAfterItsExtension)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Group").add("PushExtension").add("PopExtension").add("LongID", {{"idASCII", "long"}});
    flt.push().add("Object", {{"idASCII", "o1"}}).pop().pop();
    EXPECT_EQ(namesOf(of(flt)), (std::vector<std::string>{"db", " long", "  o1"}));
}

/// The last one was, and one after a Push was none.
TEST_F(FltInventoryTest, namesANodeByItsFirstLongId)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Group").add("LongID", {{"idASCII", "first"}}).add("LongID", {{"idASCII", "second"}});
    flt.add("Object").push().add("LongID", {{"idASCII", "inside"}}).pop().pop();
    EXPECT_EQ(namesOf(of(flt)), (std::vector<std::string>{"db", " first", " inside"}));
}

/// It stayed open, and what followed stood too deep.
TEST_F(FltInventoryTest, endsALevelByThePopOfAnotherKind)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Object").push().add("Face").add("PushSubface").add("Face").pop().add("Face").pop();
    flt.add("Group").pop();
    FltInventory const inventory = of(flt);
    EXPECT_TRUE(inventory.faces[1].isSubface);
    EXPECT_FALSE(inventory.faces[2].isSubface);
    EXPECT_EQ(inventory.nodes[2].depth, 1U);
    ASSERT_EQ(inventory.imbalances.size(), 1U);
    EXPECT_EQ(inventory.imbalances[0].kind, FltInventory::Imbalance::Kind::popWithoutPush);
}

/// The level went to the node above.
TEST_F(FltInventoryTest, goesOnWithTheSameNodeAfterARecordThatBelongsToNone)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Group", {{"idASCII", "g1"}}).push().pop().add("Comment");
    flt.push().add("Object", {{"idASCII", "o1"}}).pop().pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.pathOf(2), "g1/o1");
    EXPECT_EQ(inventory.strays.size(), 1U);
    EXPECT_TRUE(inventory.imbalances.empty());
}

TEST_F(FltInventoryTest, tellsOfLevelsThatOpenAfterNoNode)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().push().add("Group").pop().pop();
    FltInventory const inventory = of(flt);
    ASSERT_EQ(inventory.imbalances.size(), 1U);
    EXPECT_EQ(inventory.imbalances[0].kind, FltInventory::Imbalance::Kind::pushWithoutNode);
    EXPECT_EQ(inventory.nodes[1].depth, 1U);
}

TEST_F(FltInventoryTest, saysNothingOfALevelOfSubfacesOnNoFace)
{
    FltWriter flt;
    flt.push().add("Object").push().add("PushSubface").add("Face").add("PopSubface").pop().pop();
    FltInventory const inventory = of(flt);
    EXPECT_TRUE(inventory.imbalances.empty());
    EXPECT_EQ(inventory.faces.at(0).node, 1U);
}

TEST_F(FltInventoryTest, tellsWhatIsNeverClosedAndClosesNothing)
{
    using Kind = FltInventory::Imbalance::Kind;
    FltWriter flt(1570, {{"id", "db"}});
    flt.add("PopExtension").pop().push().add("Group").push().add("Object").add("PushExtension");
    FltInventory const inventory = of(flt);
    std::vector<Kind> kinds;
    for (FltInventory::Imbalance const& one : inventory.imbalances)
        kinds.push_back(one.kind);
    EXPECT_EQ(kinds, (std::vector<Kind>{Kind::popWithoutPush, Kind::popWithoutPush, Kind::neverClosed,
                                        Kind::neverClosed, Kind::neverClosed}));
    EXPECT_EQ(inventory.imbalances[2].offset, inventory.bytes() - 24) << "the extension";
    EXPECT_EQ(inventory.nodes[1].end, inventory.bytes());
}

/// What stood below it was listed below the node before it.
TEST_F(FltInventoryTest, listsWhatStandsBelowARecordOfAnUnknownKindBelowTheNodeAbove)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Group", {{"idASCII", "g1"}}).addRaw(999, "something");
    flt.push().add("Object", {{"idASCII", "o1"}}).pop().pop();
    EXPECT_EQ(namesOf(of(flt)), (std::vector<std::string>{"db", " g1", " o1"}));
}

/// It was a second node of the header's, and all that followed stood below that.
TEST_F(FltInventoryTest, takesASecondHeaderForNoNode)
{
    FltWriter const second(1570, {{"id", "two"}});
    FltWriter flt(1570, {{"id", "db"}});
    flt.addBytes(second.bytes()).push().add("Group", {{"idASCII", "g1"}}).pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(namesOf(inventory), (std::vector<std::string>{"db", " g1"}));
    EXPECT_EQ(inventory.header.name, "db");
}

/// The first part of the list alone was read.
TEST_F(FltInventoryTest, joinsARecordWithItsContinuation)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 2, 3), b = flt.vertex("VertexColor", 4, 5, 6);
    flt.push().add("Face").push().add("VertexList", {{"offsets", {a, b}}});
    flt.addRaw(FltOpcode::continuation, FltWriter::big32(static_cast<long>(a))).pop().pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.faces[0].vertexCount, 3U);
    EXPECT_EQ(inventory.opcodes.at(FltOpcode::continuation).count, 1U);
}

/// It was taken for the face's own, and no conversion draws it.
TEST_F(FltInventoryTest, givesAFaceNoListThatStandsBesideIt)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 2, 3);
    flt.push().add("Face").add("VertexList", {{"offsets", {a, a, a}}}).pop();
    EXPECT_EQ(of(flt).faces.at(0).vertexCount, 0U);
}

/// The faces stood below the group's own parent.
TEST_F(FltInventoryTest, listsASubfaceLevelOfAGroupBelowIt)
{
    FltWriter flt;
    flt.push().add("Group").add("PushSubface").add("Face").add("PopSubface").pop();
    EXPECT_EQ(of(flt).faces.at(0).node, 1U);
}

/// What follows the record was read in their place, as the exact conversion does.
TEST_F(FltInventoryTest, readsWhatARecordDoesntHoldAsZero)
{
    FltWriter flt;
    flt.push().add("Face").resizeLast(24).add("Group", {{"idASCII", "\x7f\x7f\x7f\x7f\x7f\x7f\x7f\x7f"}});
    flt.add("Switch", {{"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
    flt.resizeLast(32);
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.faces.at(0).texture, 0);
    EXPECT_EQ(inventory.faces.at(0).flags, 0U);
    EXPECT_EQ(inventory.switches.at(0).words, std::vector<std::uint32_t>{1});
}

/// Its part of a name was taken for none.
TEST_F(FltInventoryTest, namesANodeByAsMuchOfItsIdAsIsThere)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Group", {{"idASCII", "abcdefgh"}}).resizeLast(8).pop();
    EXPECT_EQ(namesOf(of(flt)), (std::vector<std::string>{"db", " abcd"}));
}

/// A node without anything of a switch was listed.
TEST_F(FltInventoryTest, listsASwitchWithANegativeCountOfWords)
{
    FltWriter flt;
    flt.push().add("Switch", {{"indexOfCurrentMask", 3}, {"numberOfMasks", 1}, {"masks", {1}}});
    flt.pop();
    std::string bytes = flt.bytes();
    std::size_t const words = bytes.size() - 4 - 4 - 4; // a Pop, a mask, and the count itself
    bytes.replace(words, 4, "\xff\xff\xff\xff");
    FltInventory const inventory(folder.write("negative.flt", bytes));
    ASSERT_EQ(inventory.switches.size(), 1U);
    EXPECT_EQ(inventory.switches[0].currentMask, 3);
    EXPECT_EQ(inventory.switches[0].wordsPerMask, -1);
    EXPECT_TRUE(inventory.switches[0].words.empty());
}

/// Such a Push opened a level.
TEST_F(FltInventoryTest, passesOverRecordsThatAreShorterThanTheirHead)
{
    FltWriter flt(1570, {{"id", "db"}});
    flt.push().add("Group").addBytes(std::string("\0\x0a\0\x02", 4).substr(0, 4));
    std::string bytes = flt.bytes();
    bytes.resize(bytes.size() - 2);
    bytes += std::string("\0\x02\0\x04", 4);
    FltInventory const inventory(folder.write("short.flt", bytes));
    EXPECT_EQ(inventory.opcodes.at(FltOpcode::pushLevel).count, 2U);
    EXPECT_TRUE(inventory.imbalances.size() == 1) << "the first Push alone";
}

namespace
{

using Mesh = FltMeshRecords;

/// A mesh with a pool of as many vertices as the mask makes of 48 bytes.
FltWriter meshOf(unsigned mask, unsigned vertices)
{
    FltWriter flt;
    flt.push().addRaw(FltOpcode::mesh, std::string(80, '\0'));
    return flt.addRaw(FltOpcode::localVertexPool, Mesh::poolHead(vertices, mask) + std::string(48, '\0'));
}

std::string primitive()
{
    return Mesh::primitive(Mesh::triangleStrip, 1, {0, 1, 2});
}

} // namespace

/// It belonged to the mesh before, wherever it stood.
TEST_F(FltInventoryTest, givesAMeshWhatStandsBelowIt)
{
    FltWriter flt = meshOf(Mesh::hasPlace, 2);
    flt.addRaw(FltOpcode::meshPrimitive, primitive()).push().addRaw(FltOpcode::meshPrimitive, primitive());
    flt.addRaw(FltOpcode::meshPrimitive, primitive()).pop().pop();
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.meshes.at(0).primitives.size(), 0U) << "they stand beside it, and below a sibling";
    flt = meshOf(Mesh::hasPlace, 2);
    flt.push().addRaw(FltOpcode::meshPrimitive, primitive()).pop().pop();
    FltInventory const right = of(flt);
    ASSERT_EQ(right.meshes.at(0).primitives.size(), 1U);
    EXPECT_EQ(right.meshes[0].primitives[0].badIndices, 1U);
}

TEST_F(FltInventoryTest, takesAPrimitiveBelowAFaceForNoVertex)
{
    FltWriter flt;
    flt.push().add("Face").push().addRaw(FltOpcode::meshPrimitive, primitive()).pop().pop();
    EXPECT_EQ(of(flt).faces.at(0).vertexCount, 0U);
}

/// They counted as vertices, and the mesh isn't drawn.
TEST_F(FltInventoryTest, takesVerticesOfAMeshWithoutPlacesForNone)
{
    EXPECT_EQ(of(meshOf(Mesh::hasNormal, 4)).meshes.at(0).wholeVertices, 0U);
    EXPECT_EQ(of(meshOf(Mesh::hasPlace, 2)).meshes.at(0).wholeVertices, 2U);
}

/// The second pool took the place of the first.
TEST_F(FltInventoryTest, addsUpThePoolsOfAMesh)
{
    FltWriter flt = meshOf(Mesh::hasPlace, 2);
    flt.addRaw(FltOpcode::localVertexPool, Mesh::pool({{0, 0, 0}}));
    FltInventory const inventory = of(flt);
    EXPECT_EQ(inventory.meshes.at(0).poolVertices, 3U);
    EXPECT_EQ(inventory.meshes.at(0).wholeVertices, 3U);
}

/// Two primitives are whole, with indices of one byte and of two. One names what the pool doesn't have, one
/// holds less than it says, and one makes no triangle.
TEST_F(FltInventoryTest, countsTheTrianglesOfAMeshAndWhatItsPrimitivesLack)
{
    FltWriter flt = meshOf(Mesh::hasPlace, 2);
    flt.addRaw(FltOpcode::localVertexPool, Mesh::pool({{0, 0, 0}, {0, 0, 0}})).push();
    for (std::string const& body : {primitive(), Mesh::primitive(Mesh::triangleFan, 2, {0, 1, 2, 3}),
                                    Mesh::primitive(Mesh::quadStrip, 4, {5, 4, 3, 0}),
                                    Mesh::primitiveHead(Mesh::polygon, 1, 6) + std::string("\0\1\2", 3),
                                    Mesh::primitive(Mesh::triangleStrip, 1, {0, 1})})
        flt.addRaw(FltOpcode::meshPrimitive, body);
    FltInventory const inventory = of(flt.pop().pop());
    ASSERT_EQ(inventory.meshes.size(), 1U);
    EXPECT_TRUE(inventory.meshes[0].hasPool);
    std::vector<std::array<std::uint32_t, 3>> primitives;
    for (FltInventory::Primitive const& one : inventory.meshes[0].primitives)
        primitives.push_back({static_cast<std::uint32_t>(one.type), one.indexCount, one.badIndices});
    EXPECT_EQ(primitives, (std::vector<std::array<std::uint32_t, 3>>{
                              {1, 3, 0}, {2, 4, 0}, {3, 4, 2}, {4, 3, 3}, {1, 2, 0}}));
    EXPECT_EQ(inventory.triangles(), 1U + 2U + 2U + 1U);
    EXPECT_EQ(inventory.nodes[0].faces, 1U);
    flt = FltWriter();
    flt.push().addRaw(FltOpcode::mesh, std::string(80, '\0')).push();
    flt.addRaw(FltOpcode::meshPrimitive, Mesh::primitive(Mesh::triangleStrip, 1, {0, 0, 0})).pop().pop();
    EXPECT_EQ(of(flt).meshes.at(0).primitives.at(0).badIndices, 3U) << "without a pool";
}

TEST_F(FltInventoryTest, worksOutTheDeterminantOfTheLinearPartOfAMatrix)
{
    FltWriter flt;
    flt.push().add("Group").add("Matrix",
                                {{"matrix", {2, 3, 5, 91, 7, 11, 13, 92, 17, 19, 29, 93, 94, 95, 96, 97}}});
    FltInventory const inventory = of(flt.pop());
    ASSERT_EQ(inventory.matrices.size(), 1U);
    EXPECT_EQ(inventory.matrices[0].determinant,
              2 * (11 * 29 - 13 * 19) - 3 * (7 * 29 - 13 * 17) + 5 * (7 * 19 - 11 * 17));
}

TEST_F(FltInventoryTest, tellsTheLower32NamesOfALongWay)
{
    FltWriter flt;
    for (int i = 1; i <= 33; ++i)
        flt.push().add("Group", {{"idASCII", "g" + std::to_string(i)}});
    for (int i = 0; i < 33; ++i)
        flt.pop();
    FltInventory const inventory = of(flt);
    std::string names;
    for (int i = 2; i <= 33; ++i)
        names += "/g" + std::to_string(i);
    EXPECT_EQ(inventory.pathOf(33), "..." + names);
    std::string const whole = inventory.pathOf(32);
    EXPECT_EQ(whole.substr(0, 6), "g1/g2/");
    EXPECT_EQ(inventory.pathOf(0), "");
    EXPECT_EQ(inventory.pathOf(FltInventory::none), "");
}

/// They were listed, although every conversion leaves them out.
TEST_F(FltInventoryTest, listsWhatIsNestedTooDeeplyApart)
{
    FltWriter flt;
    for (int level = 0; level < FltLimits::hierarchyDepth; ++level)
        flt.push().add("Group", {{"idASCII", "g" + std::to_string(level)}});
    flt.add("Object").push().add("Object").pop();
    for (int level = 0; level < FltLimits::hierarchyDepth; ++level)
        flt.pop();
    FltInventory const inventory = of(flt.push());
    auto const listed = static_cast<std::uint32_t>(FltLimits::hierarchyDepth);
    EXPECT_EQ(inventory.nodes.size(), listed);
    EXPECT_EQ(inventory.nodes.back().depth, listed - 1);
    ASSERT_EQ(inventory.tooDeep.size(), 2U);
    EXPECT_EQ(inventory.tooDeep[0].opcode, FltOpcode::group);
    EXPECT_EQ(inventory.tooDeep[1].opcode, FltOpcode::object);
    EXPECT_EQ(inventory.tooDeep[1].node, listed - 1);
    EXPECT_EQ(inventory.nodes.back().children, 2U);
    EXPECT_EQ(inventory.imbalances.size(), 1U) << "the last Push";
}

TEST_F(FltInventoryTest, tellsOfLevelsThatAreTooDeepAndNeverClosed)
{
    FltWriter flt;
    for (int level = 0; level < FltLimits::hierarchyDepth + 4; ++level)
        flt.push().add("Group");
    EXPECT_EQ(of(flt).imbalances.size(), static_cast<std::size_t>(FltLimits::hierarchyDepth + 4));
}

TEST_F(FltInventoryTest, countsTheBytesOfVerticesAloneByTheRuleOfTheExactConversion)
{
    FltWriter flt;
    flt.vertexPalette();
    std::size_t const head = flt.lastOffset();
    double const first = flt.vertex("VertexColor", 1, 2, 3);
    auto const length = static_cast<double>(flt.bytes().size() - flt.lastOffset());
    flt.add("Comment", {{"textDescription", "between two vertices"}});
    flt.vertex("VertexColor", 4, 5, 6);
    auto const byPlace = static_cast<double>(flt.lastOffset() - head);
    flt.push().face({first, first + length, byPlace}).pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt", FltInventory::Offsets::bySums);
    ASSERT_EQ(inventory.lostOffsets.size(), 1U);
    EXPECT_EQ(inventory.lostOffsets[0].value, byPlace);
    EXPECT_EQ(inventory.position(inventory.faceVertices.at(1)), (std::array<double, 3>{4, 5, 6}));
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

/// Each field holds another value, which tells where it was read.
TEST_F(FltInventoryTest, listsAllOfADatabaseOfEveryRecord)
{
    for (int const revision : {13, 1580})
        expectSameText(
            inventoryText(of(everyRecordInBrief(revision))),
            contentsOf(VELLOREADER_GOLDEN "every_record_" + std::to_string(revision) + ".inventory"));
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

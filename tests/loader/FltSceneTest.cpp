#include "loader/FltLoader.h"
#include "support/ScratchFolder.h"
#include "toolkit/SoNodeRef.h"
#include "writer/FltWriter.h"

#include <Inventor/SbName.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoBlinker.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTransform.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace
{

/// Loads a database that it writes, and knows where its records stand.
class FltSceneTest : public testing::Test
{
protected:
    using Fields = FltWriter::Fields;

    FltSceneTest()
    {
        writer.vertexPalette();
        for (auto const& [x, y] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}})
            corners.push_back(writer.vertex("VertexColorNormal", x, y, 0, {{"vertexNormal", {0, 0, 1}}}));
    }

    /// Adds a record. @return where it begins
    std::uint64_t add(char const* record, Fields const& fields = {})
    {
        writer.add(record, fields);
        return writer.lastOffset();
    }

    /// Adds a level with a face in it. @return where the face begins
    std::uint64_t addFace(Fields const& fields = {{"texturePatternIndex", -1}, {"materialIndex", -1}})
    {
        std::uint64_t const offset = writer.push().bytes().size();
        writer.face(corners, fields).pop();
        return offset;
    }

    void load()
    {
        writer.save(database);
        scene = loader.load(database);
    }

    /// Loads it with the instance as it is, and in a mirror.
    void loadInBothSenses()
    {
        for (double const x : {1.0, -1.0}) {
            writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
            writer.add("Matrix",
                       {{"matrix", std::vector<double>{x, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}});
        }
        writer.pop();
        load();
    }

    /// The first node of a type, or the one of a number.
    template <class Node>
    Node* find(int number = 0) const
    {
        auto const isMeant = [](SoNode const& node) { return node.isOfType(Node::getClassTypeId()); };
        return static_cast<Node*>(found(isMeant, number));
    }

    SoNode* named(char const* name, int number = 0) const
    {
        return found([name](SoNode const& node) { return node.getName() == name; }, number);
    }

    FltRecordPlace placeOf(SoNode const* node) const
    {
        std::optional<FltRecordPlace> const place = scene.recordOf(*node);
        if (place)
            return *place;
        ADD_FAILURE() << "it has no record";
        return {};
    }

    void expectOwn(std::uint64_t offset, SoNode const* node) const { expect(offset, true, node); }
    void expectAbove(std::uint64_t offset, SoNode const* node) const { expect(offset, false, node); }

    ScratchFolder const folder;
    std::string const database = folder / "a.flt";
    FltWriter writer;
    std::vector<double> corners;
    FltLoader loader;
    FltScene scene;

private:
    using Condition = std::function<bool(SoNode const& node)>;

    /// The node of a number among those that fulfil a condition, in the order of a traversal.
    SoNode* found(Condition const& isMeant, int number) const
    {
        std::vector<SoNode*> nodes;
        collect(scene.root(), isMeant, nodes);
        return nodes.at(static_cast<std::size_t>(number));
    }

    static void collect(SoNode* node, Condition const& isMeant, std::vector<SoNode*>& nodes)
    {
        if (isMeant(*node))
            nodes.push_back(node);
        SoChildList const* const children = node->getChildren();
        for (int i = 0; children != nullptr && i < children->getLength(); ++i)
            collect((*children)[i], isMeant, nodes);
    }

    void expect(std::uint64_t offset, bool isOwn, SoNode const* node) const
    {
        FltRecordPlace const place = placeOf(node);
        EXPECT_EQ(place.file, database);
        EXPECT_EQ(place.offset, offset);
        EXPECT_EQ(place.isOwn, isOwn);
    }
};

} // namespace

TEST_F(FltSceneTest, KnowsTheRecordsOfNamedNodes)
{
    writer.push();
    std::uint64_t const group = add("Group", {{"idASCII", "hangar"}});
    writer.add("LongID", {{"idASCII", "the hangar"}}).push();
    std::uint64_t const object = add("Object", {{"idASCII", "door"}});
    addFace();
    writer.pop().pop();
    load();
    expectOwn(group, named("the_hangar"));
    expectOwn(object, named("door"));
    expectOwn(0, scene.root());
}

TEST_F(FltSceneTest, GivesAShapeAndWhatItHoldsTheRecordOfTheirObject)
{
    writer.push();
    std::uint64_t const object = add("Object");
    addFace();
    writer.pop();
    load();
    expectAbove(object, find<SoIndexedFaceSet>());
    expectAbove(object, find<SoIndexedFaceSet>()->vertexProperty.getValue());
}

TEST_F(FltSceneTest, GivesAPropertyThatManyShapesShareTheRecordOfTheFirst)
{
    writer.push();
    std::vector<std::uint64_t> objects;
    for (int i = 0; i < 300; ++i) {
        objects.push_back(add("Object"));
        addFace();
    }
    writer.pop();
    load();
    SoNode const* const hints = find<SoShapeHints>();
    EXPECT_EQ(find<SoShapeHints>(299), hints);
    EXPECT_EQ(hints->getRefCount(), 300);
    expectAbove(objects.front(), hints);
    expectAbove(objects.back(), find<SoIndexedFaceSet>(299));
}

TEST_F(FltSceneTest, GivesASharedPartTheRecordOfItsDefinition)
{
    writer.push();
    std::uint64_t const definition = add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    writer.push();
    std::uint64_t const object = add("Object", {{"idASCII", "tree"}});
    addFace();
    writer.pop();
    std::uint64_t const first = add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    std::uint64_t const second = add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    writer.pop();
    load();
    auto const* const one = static_cast<SoGroup*>(scene.root()->getChild(0));
    auto const* const other = static_cast<SoGroup*>(scene.root()->getChild(1));
    expectOwn(first, one);
    expectOwn(second, other);
    ASSERT_EQ(one->getChild(0), other->getChild(0));
    expectOwn(definition, one->getChild(0));
    expectOwn(object, named("tree"));
}

TEST_F(FltSceneTest, KnowsTheRecordsOfLightsAndOfFacesThatTurn)
{
    writer.add("LightSourcePalette", {{"paletteIndex", 0}, {"diffuseGreen", 1}}).push();
    std::uint64_t const light = add("LightSource", {{"flags", {128, 0, 0, 0}}});
    add("Object");
    std::uint64_t const face =
        addFace({{"texturePatternIndex", -1}, {"materialIndex", -1}, {"templateBillboard", 2}});
    writer.pop();
    load();
    expectOwn(light, find<SoDirectionalLight>());
    expectAbove(face, find<SoVRMLBillboard>());
    expectAbove(face, find<SoIndexedFaceSet>());
}

TEST_F(FltSceneTest, KnowsTheRecordsOfLevelsSwitchesAndCopies)
{
    writer.push();
    std::uint64_t const lod =
        add("LOD", {{"idASCII", "near"}, {"switchInDistance", 100}, {"switchOutDistance", 0}});
    addFace();
    std::uint64_t const choice =
        add("Switch",
            {{"idASCII", "lamp"}, {"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}});
    writer.push();
    std::uint64_t const on = add("Object", {{"idASCII", "on"}});
    addFace();
    writer.face(corners, {{"texturePatternIndex", -1}, {"materialIndex", -1}}).pop();
    std::uint64_t const row = add("Group", {{"idASCII", "row"}});
    writer.add("Replicate", {{"numberOfReplications", 2}});
    writer.add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 2, 0, 1}}});
    addFace();
    writer.pop();
    load();
    expectAbove(0, find<SoLOD>());
    expectOwn(lod, named("near"));
    expectOwn(choice, named("lamp"));
    expectAbove(choice, find<SoSwitch>(0));
    expectOwn(on, named("on"));
    expectAbove(choice, find<SoSwitch>(1));
    expectOwn(row, named("row"));
    expectAbove(row, find<SoMultipleCopy>());
    expectAbove(row, find<SoMultipleCopy>()->getChild(0));
}

TEST_F(FltSceneTest, NamesTheOtherFileOfItsNodes)
{
    writer.push().add("Group", {{"idASCII", "inside"}});
    std::uint64_t const inside = writer.lastOffset();
    addFace();
    writer.pop().save(folder / "other.flt");
    writer = FltWriter();
    writer.push();
    std::uint64_t const reference = add("ExternalReference", {{"asciiPath", "other.flt"}});
    writer.pop();
    load();
    expectOwn(reference, named("other"));
    FltRecordPlace const group = placeOf(named("inside"));
    EXPECT_EQ(group.file, folder / "other.flt");
    EXPECT_EQ(group.offset, inside);
    auto const* const wrapper = static_cast<SoGroup*>(scene.root()->getChild(0));
    FltRecordPlace const file = placeOf(wrapper->getChild(0));
    EXPECT_EQ(file.file, folder / "other.flt");
    EXPECT_EQ(file.offset, 0U);
    EXPECT_TRUE(file.isOwn);
}

TEST_F(FltSceneTest, NamesTheDatabaseAsTheHostDoes)
{
    writer.save(database);
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "");
    scene = loader.load("a.flt");
    std::filesystem::current_path(before);
    EXPECT_EQ(placeOf(scene.root()).file, "a.flt");
}

TEST_F(FltSceneTest, GivesTheRootOfADatabaseInFeetItsHeader)
{
    writer = FltWriter(1570, {{"vertexCoordinateUnits", 4}});
    writer.push().add("Group", {{"idASCII", "g"}}).push().pop().pop();
    load();
    ASSERT_NE(named("root"), nullptr);
    ASSERT_EQ(scene.root()->getNumChildren(), 2) << "a scale, and what is scaled";
    expectOwn(0, scene.root());
    expectOwn(0, scene.root()->getChild(1));
    expectAbove(0, scene.root()->getChild(0));
}

TEST_F(FltSceneTest, KnowsTheRecordsBelowANodeThatIsNamedRoot)
{
    writer.push();
    std::uint64_t const root = add("Group", {{"idASCII", "root"}});
    writer.push();
    std::uint64_t const object = add("Object", {{"idASCII", "inner"}});
    addFace();
    writer.pop().pop();
    load();
    expectOwn(object, named("inner"));
    expectOwn(root, scene.root()->getChild(0));
}

TEST_F(FltSceneTest, KnowsNoRecordWhereNoneIsKnown)
{
    writer.push().add("Group", {{"idASCII", "g"}}).push().pop().pop();
    load();
    SoNodeRef<SoSeparator> const stranger(new SoSeparator);
    EXPECT_FALSE(scene.recordOf(*stranger));
    EXPECT_FALSE(FltScene().recordOf(*scene.root()));
    FltScene const moved = std::move(scene);
    EXPECT_TRUE(moved.recordOf(*moved.root()));
    EXPECT_FALSE(scene.recordOf(*moved.root()));
    loader.exact = true;
    FltScene const exact = loader.load(database);
    EXPECT_FALSE(exact.recordOf(*exact.root()));
    EXPECT_FALSE(exact.recordOf(*exact.root()->getChild(0)));
}

TEST_F(FltSceneTest, KnowsTheRecordsAfterItHandedTheSceneOver)
{
    writer.push();
    std::uint64_t const object = add("Object");
    addFace();
    writer.pop();
    load();
    SoNode const* const shape = find<SoIndexedFaceSet>();
    SoSeparator* const root = scene.release();
    EXPECT_EQ(root->getRefCount(), 1);
    expectAbove(object, shape);
    expectOwn(0, root);
    root->unref();
}

TEST_F(FltSceneTest, TellsTheSwitchAndTheJointOfANodeAmongThoseOfOneName)
{
    writer.push();
    for (int i = 0; i < 3; ++i) {
        Fields const fields = {
            {"idASCII", "lamp"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 0}}};
        writer.add("Switch", fields).push().add("Group").pop().add("DOF", {{"idASCII", "door"}});
        writer.push().add("Group").pop();
    }
    writer.pop();
    load();
    for (std::size_t i = 0; i < 3; ++i) {
        SoNode const* const choice = scene.root()->getChild(2 * static_cast<int>(i));
        SoNode const* const door = scene.root()->getChild(2 * static_cast<int>(i) + 1);
        EXPECT_EQ(scene.switchOf(*choice), i);
        EXPECT_EQ(scene.degreeOfFreedomOf(*door), i);
        EXPECT_FALSE(scene.switchOf(*door));
        EXPECT_FALSE(scene.degreeOfFreedomOf(*choice));
    }
    EXPECT_FALSE(FltScene().switchOf(*scene.root()));
    EXPECT_FALSE(FltScene().degreeOfFreedomOf(*scene.root()));
}

TEST_F(FltSceneTest, StartsAndStopsAllFlipBooks)
{
    writer.push();
    for (char const* const name : {"fire", "smoke"}) {
        add("Group", {{"idASCII", name}, {"flags", 0x40000000}});
        writer.push().add("Object").add("Object").pop();
    }
    writer.pop();
    load();
    std::vector<FltVisualFlipBook> const books = scene.flipBooks();
    ASSERT_EQ(books.size(), 2U);
    EXPECT_EQ(books[0].name, "fire");
    EXPECT_EQ(books[1].name, "smoke");
    for (bool const isPlaying : {true, false}) {
        EXPECT_TRUE(scene.play(isPlaying));
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(find<SoBlinker>(i)->on.getValue(), isPlaying);
    }
    EXPECT_FALSE(FltScene().play(true));
    EXPECT_TRUE(FltScene().flipBooks().empty());
}

/// A flip-book that stands in a mirror and elsewhere has two blinkers, and is one flip-book all the same.
TEST_F(FltSceneTest, PlaysBothFormsOfAFlipBookThatStandsInAMirrorToo)
{
    writer.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    add("Group", {{"idASCII", "flag"}, {"flags", 0x40000000}});
    writer.push().add("Object");
    addFace();
    writer.add("Object");
    addFace();
    writer.pop().pop();
    loadInBothSenses();
    EXPECT_EQ(scene.flipBooks().size(), 1U);
    ASSERT_NE(find<SoBlinker>(0), find<SoBlinker>(1));
    EXPECT_TRUE(scene.play(true));
    for (int const form : {0, 1})
        EXPECT_TRUE(find<SoBlinker>(form)->on.getValue()) << form;
}

TEST_F(FltSceneTest, ShowsAMaskOfOneSwitchAmongThoseOfItsName)
{
    writer.push();
    for (int i = 0; i < 2; ++i) {
        writer.add(
            "Switch",
            {{"idASCII", "lamp"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 0}}});
        writer.push().add("Group").pop();
    }
    writer.pop();
    load();
    EXPECT_TRUE(scene.show(1, 1));
    EXPECT_EQ(scene.switches()[0].currentMask, 0);
    EXPECT_EQ(scene.switches()[1].currentMask, 1);
    EXPECT_EQ(find<SoSwitch>(0)->whichChild.getValue(), SO_SWITCH_ALL);
    EXPECT_EQ(find<SoSwitch>(1)->whichChild.getValue(), SO_SWITCH_NONE);
    EXPECT_TRUE(scene.switches()[1].shows(0, 0));
    EXPECT_FALSE(scene.switches()[1].shows(1, 0));
    EXPECT_FALSE(scene.show(1, 2));
    EXPECT_FALSE(scene.show(1, -1));
    EXPECT_FALSE(scene.show(2, 0));
    EXPECT_FALSE(FltScene().show(0, 0));
    EXPECT_EQ(scene.switches()[1].currentMask, 1);
}

/// A part that stands in a mirror and elsewhere has two forms, and is one switch or joint all the same.
TEST_F(FltSceneTest, MovesBothFormsOfAPartThatStandsInAMirrorToo)
{
    writer.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    writer.add(
        "Switch",
        {{"idASCII", "lamp"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {3, 2}}});
    writer.push().add("Object");
    addFace();
    writer.add("DOF", {{"idASCII", "door"}}).push().add("Object");
    addFace();
    writer.pop().pop().pop();
    loadInBothSenses();
    ASSERT_EQ(scene.switches().size(), 1U);
    ASSERT_EQ(scene.degreesOfFreedom().size(), 1U);
    EXPECT_NE(find<SoIndexedFaceSet>(0), find<SoIndexedFaceSet>(2));
    EXPECT_TRUE(scene.show(0, 1));
    for (int const door : {0, 2})
        EXPECT_EQ(find<SoSwitch>(door)->whichChild.getValue(), SO_SWITCH_NONE) << door;
    for (int const door : {1, 3})
        EXPECT_EQ(find<SoSwitch>(door)->whichChild.getValue(), SO_SWITCH_ALL) << door;
    EXPECT_EQ(find<SoTransform>(0), find<SoTransform>(1));
    FltDegreeOfFreedom values;
    values.translation[0].current = 7;
    EXPECT_TRUE(scene.move(0, values));
    EXPECT_EQ(find<SoTransform>(0)->translation.getValue(), SbVec3f(7, 0, 0));
    for (int const form : {0, 1}) {
        EXPECT_EQ(scene.switchOf(*named("lamp", form)), 0U);
        EXPECT_EQ(scene.degreeOfFreedomOf(*named("door", 2 * form)),
                  0U); // its transformation has the name too
    }
}

TEST_F(FltSceneTest, KnowsTheRecordOfWhatWasPickedOfMergedShapes)
{
    writer.push();
    std::vector<std::uint64_t> objects;
    for (int x = 0; x < 5; ++x) {
        SbMatrix matrix;
        matrix.setTranslate(SbVec3f(static_cast<float>(10 * x), 0, 0));
        objects.push_back(add("Object", {{"idASCII", "o" + std::to_string(x)}}));
        std::vector<double> values;
        for (int i = 0; i < 16; ++i)
            values.push_back(double(matrix[i / 4][i % 4]));
        writer.add("Matrix", {{"matrix", values}});
        addFace();
    }
    writer.pop();
    for (bool const isMerged : {false, true}) {
        loader.merge = isMerged;
        load();
        EXPECT_EQ(SoNode::getByName("o3") != nullptr, !isMerged);
        for (std::size_t x = 0; x < objects.size(); ++x) {
            SoRayPickAction pick(SbViewportRegion(10, 10));
            pick.setRay(SbVec3f(10 * static_cast<float>(x) + 0.7F, 0.6F, 5), SbVec3f(0, 0, -1));
            pick.apply(scene.root());
            ASSERT_NE(pick.getPickedPoint(), nullptr) << x;
            std::optional<FltRecordPlace> const place = scene.recordOf(*pick.getPickedPoint());
            ASSERT_TRUE(place.has_value());
            EXPECT_EQ(place->offset, objects[x]);
            EXPECT_EQ(place->file, database);
            EXPECT_FALSE(place->isOwn);
        }
    }
}

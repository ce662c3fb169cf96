#include "visual/FltVisualBuilder.h"

#include "messages/FltLimits.h"
#include "model/FltModelReader.h"
#include "support/AnimatedGroup.h"
#include "support/CompleteDatabase.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"
#include "support/VisualDump.h"
#include "toolkit/SoNodeName.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <set>

using Fields = FltWriter::Fields;
using Options = FltVisualConversion::Options;

namespace
{

template <class Node>
std::vector<Node*> findAll(SoNode* root)
{
    SoSearchAction search;
    search.setType(Node::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(root);
    std::vector<Node*> nodes;
    for (int i = 0; i < search.getPaths().getLength(); ++i)
        nodes.push_back(static_cast<Node*>(search.getPaths()[i]->getTail()));
    return nodes;
}

std::vector<double> matrixWithMove(double x, double y, double z)
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

/// A square below a group "row" that is replicated along y.
CompleteDatabase replicated(int copies)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Group", {{"idASCII", "row"}}).add("Replicate", {{"numberOfReplications", copies}});
    database.writer.add("Matrix", {{"matrix", matrixWithMove(0, 2, 0)}}).push();
    database.object(offsets).writer.pop();
    return database;
}

/// How many nodes a traversal meets, without one.
double visitsOf(SoNode* node, std::map<SoNode*, double>& known)
{
    auto const [entry, isNew] = known.try_emplace(node, 1);
    if (isNew && node->getChildren() != nullptr) {
        double below = 0;
        for (int i = 0; i < node->getChildren()->getLength(); ++i)
            below += visitsOf((*node->getChildren())[i], known);
        if (node->isOfType(SoMultipleCopy::getClassTypeId()))
            below *= static_cast<SoMultipleCopy*>(node)->matrix.getNum();
        known[node] = 1 + below;
    }
    return known[node];
}

double visitsOf(SoNode* root)
{
    std::map<SoNode*, double> known;
    return visitsOf(root, known);
}

/// Below a record of these fields stands a square.
CompleteDatabase squareBelow(char const* record, Fields const& fields, Fields const& header = {})
{
    CompleteDatabase database(1570, header);
    std::vector<double> const offsets = database.square();
    database.begin().add(record, fields).push();
    database.object(offsets);
    database.writer.pop();
    return database;
}

} // namespace

TEST(FltVisualBuilder, namesNodesByTheirIdsAndLongIds)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin()
        .add("Group", {{"idASCII", "short"}})
        .add("LongID", {{"idASCII", "a_longer_name"}})
        .push();
    database.object(offsets, CompleteDatabase::face(), "house");
    EXPECT_EQ(database.draw().triangles[0].names,
              (std::vector<std::string>{"root", "a_longer_name", "house"}));
}

TEST(FltVisualBuilder, cutsLongNamesAndKeepsThemWhole)
{
    std::string const beginning(59'999, 'n');
    CompleteDatabase database;
    database.begin();
    for (char const end : {'1', '2'})
        for (std::string_view const record : {"Group", "Switch", "DOF", "LightSource"}) {
            Fields fields = {{"idASCII", "short"}};
            if (record == "LightSource")
                fields.push_back({"flags", {128, 0, 0, 0}});
            database.writer.add(record, fields).add("LongID", {{"idASCII", beginning + end}});
        }
    CompleteDatabase::Converted const result = database.convert();
    std::multiset<std::string> wholeNames;
    for (SoNode const* const node : findAll<SoNode>(result.root.get())) {
        EXPECT_LE(node->getName().getLength(), 255);
        if (std::string const whole = SoNodeName::wholeOf(*node); whole.size() == 60'000)
            wholeNames.insert(whole);
    }
    EXPECT_EQ(wholeNames.count(beginning + '1'), 4U);
    EXPECT_EQ(wholeNames.count(beginning + '2'), 4U);
    EXPECT_EQ(result.switches.at(0).name, beginning + '1');
    EXPECT_EQ(result.joints.at(1).name, beginning + '2');
    EXPECT_EQ(findAll<SoLight>(result.root.get()).size(), 2U);
}

TEST(FltVisualBuilder, keepsANameOf255BytesInTheNodeAlone)
{
    std::size_t infos = 0;
    for (std::size_t const size : {255, 256}) {
        CompleteDatabase database;
        database.begin().add("Group").add("LongID", {{"idASCII", std::string(size, 'n')}});
        CompleteDatabase::Converted const result = database.convert();
        EXPECT_EQ(findAll<SoInfo>(result.root.get()).size(), infos++);
    }
}

TEST(FltVisualBuilder, drawsLevelsOfDetailBetweenTheirDistancesInTheWorld)
{
    CompleteDatabase database = squareBelow("LOD", {{"switchInDistance", 100}, {"switchOutDistance", 10}},
                                            {{"vertexCoordinateUnits", 4}});
    CompleteDatabase::Converted const result = database.convert();
    SoLOD const* const lod = findAll<SoLOD>(result.root.get()).at(0);
    ASSERT_EQ(lod->range.getNum(), 2);
    EXPECT_FLOAT_EQ(lod->range[0], 3.048F);
    EXPECT_FLOAT_EQ(lod->range[1], 30.48F);
    ASSERT_EQ(lod->getNumChildren(), 3);
    EXPECT_EQ(lod->center.getValue(), SbVec3f(0.5F, 0.5F, 0));
}

TEST(FltVisualBuilder, drawsLevelsOfDetailWithoutARangeAlways)
{
    for (Fields const& fields : {Fields{}, Fields{{"switchInDistance", 10}, {"switchOutDistance", 20}},
                                 Fields{{"switchInDistance", 10}, {"switchOutDistance", 10}}}) {
        CompleteDatabase database = squareBelow("LOD", fields);
        CompleteDatabase::Converted const result = database.convert();
        EXPECT_TRUE(findAll<SoLOD>(result.root.get()).empty());
        EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 2U);
    }
}

TEST(FltVisualBuilder, makesOneChoiceOfLevelsOfDetailWhoseDistancesMeet)
{
    CompleteDatabase database;
    std::vector<std::vector<double>> offsets;
    for (int i = 0; i < 4; ++i)
        offsets.push_back(database.square(2 * i));
    database.begin();
    double const ranges[][2] = {{100, 500}, {0, 100}, {500, 900}, {2000, 3000}};
    for (std::size_t i = 0; i < 4; ++i) {
        database.writer.add("LOD", {{"switchOutDistance", ranges[i][0]}, {"switchInDistance", ranges[i][1]}})
            .push();
        database.object(offsets[i]).writer.pop();
    }
    CompleteDatabase::Converted const result = database.convert();
    std::vector<SoLOD*> const lods = findAll<SoLOD>(result.root.get());
    ASSERT_EQ(lods.size(), 2U);
    EXPECT_EQ(lods[0]->range.getNum(), 3);
    EXPECT_EQ(lods[0]->range[1], 500);
    EXPECT_EQ(lods[1]->range.getNum(), 2);

    Options options;
    options.levelsOfDetail = FltVisualOptions::LevelsOfDetail::highest;
    EXPECT_EQ(database.draw(options).extent(), "2 0 0 to 7 1 0");
    options.levelsOfDetail = FltVisualOptions::LevelsOfDetail::lowest;
    EXPECT_EQ(database.draw(options).extent(), "4 0 0 to 7 1 0");
}

TEST(FltVisualBuilder, keepsTheSignificantSizeForHosts)
{
    CompleteDatabase database = squareBelow("Group", {});
    database.writer.add("LOD", {{"switchInDistance", 10}}).resizeLast(80).push().pop();
    std::string bytes = database.writer.bytes();
    std::string const size = FltWriter::bigDouble(12.5);
    std::size_t const at = bytes.rfind(std::string("\0\x49\0\x50", 4)) + 72;
    bytes.replace(at, 8, size);
    StreamCapture const err(std::cerr);
    CompleteDatabase::Converted const result =
        CompleteDatabase::sceneOf(FltVisualConversion::convert(database.folder.write("lod.flt", bytes), {}));
    ASSERT_EQ(findAll<SoInfo>(result.root.get()).size(), 2U);
    EXPECT_NE(std::string(findAll<SoInfo>(result.root.get())[0]->string.getValue().getString()).find("12.5"),
              std::string::npos);
}

TEST(FltVisualBuilder, bringsDegreesOfFreedomToTheirCurrentValues)
{
    Fields const frame = {{"XOriginOfDOFLocalCoordinateSystem", 1},
                          {"XPointOnXAxisOfDOFLocalCoordinateSystem", 1},
                          {"YPointOnXAxisOfDOFLocalCoordinateSystem", 1},
                          {"XPointInXYPlaneOfDOFLocalCoordinateSystem", 0}};
    EXPECT_EQ(squareBelow("DOF", frame).draw().extent(), "0 0 0 to 1 1 0");
    Fields moved = frame;
    moved.emplace_back("XCurrentValue", 5); // along the local x axis, which is the y axis around
    EXPECT_EQ(squareBelow("DOF", moved).draw().extent(), "0 5 0 to 1 6 0");
    Fields turned = frame;
    turned.emplace_back("currentYaw", 90);
    EXPECT_EQ(squareBelow("DOF", turned).draw().extent(), "0 -1 0 to 1 0 0");
    Fields scaled = frame;
    scaled.emplace_back("YCurrentScale", 2);
    scaled.emplace_back("ZCurrentScale", 0);
    EXPECT_EQ(squareBelow("DOF", scaled).draw().extent(), "-1 0 0 to 1 1 0");
}

TEST(FltVisualBuilder, letsAHostMoveADegreeOfFreedom)
{
    CompleteDatabase database = squareBelow("DOF", {{"idASCII", "door"},
                                                    {"ZMinValue", -1},
                                                    {"ZMaxValue", 4},
                                                    {"ZIncrement", 0.5},
                                                    {"flags", 0x20000000}});
    CompleteDatabase::Converted result = database.convert();
    ASSERT_EQ(result.joints.size(), 1U);
    FltSceneJoint& door = result.joints[0];
    EXPECT_EQ(door.name, "door");
    EXPECT_EQ(door.translation[2].maximum, 4);
    EXPECT_TRUE(door.translation[2].isLimited);
    EXPECT_EQ(SoNode::getByName("door"), door.transform.get());
    door.translation[2].current = 3;
    door.apply();
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "0 0 3 to 1 1 3");
    std::string const info = findAll<SoInfo>(result.root.get()).at(0)->string.getValue().getString();
    EXPECT_NE(info.find("z min -1 max 4 current 0 step 0.5 limited"), std::string::npos) << info;
}

TEST(FltVisualBuilder, passesOverFramesOfDegreesOfFreedomThatNobodySet)
{
    double const unset = -1e8;
    Fields const fields = {{"XOriginOfDOFLocalCoordinateSystem", unset},
                           {"YOriginOfDOFLocalCoordinateSystem", unset},
                           {"ZOriginOfDOFLocalCoordinateSystem", unset},
                           {"XPointOnXAxisOfDOFLocalCoordinateSystem", unset},
                           {"XPointInXYPlaneOfDOFLocalCoordinateSystem", unset}};
    EXPECT_EQ(squareBelow("DOF", fields).draw().extent(), "0 0 0 to 1 1 0");
}

TEST(FltVisualBuilder, showsTheChildrenOfTheCurrentMaskAndOfAnyOtherOne)
{
    CompleteDatabase database;
    std::vector<std::vector<double>> offsets;
    for (int i = 0; i < 40; ++i)
        offsets.push_back(database.square(2 * i));
    database.begin().add("Switch", {{"idASCII", "sock"},
                                    {"indexOfCurrentMask", 1},
                                    {"numberOfMasks", 2},
                                    {"numberOf32BitWordsPerMask", 2},
                                    {"masks", {1, 0, 6, 0x80}}});
    database.writer.addRaw(132, FltWriter::big32(1) + std::string("windy\0", 6)).push();
    for (std::vector<double> const& each : offsets)
        database.object(each);
    CompleteDatabase::Converted result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 6U);
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "2 0 0 to 79 1 0");
    ASSERT_EQ(result.switches.size(), 1U);
    EXPECT_EQ(result.switches[0].maskNames, (std::vector<std::string>{"", "windy"}));
    EXPECT_TRUE(result.switches[0].choose(0));
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "0 0 0 to 1 1 0");
    EXPECT_FALSE(result.switches[0].choose(2));
    EXPECT_FALSE(result.switches[0].choose(-1));
    EXPECT_EQ(DrawnScene(result.root.get()).triangles[0].names,
              (std::vector<std::string>{"root", "sock", "o"}));
}

TEST(FltVisualBuilder, takesSwitchesWithCountsThatArentTrue)
{
    for (int const count : {-1, 0, 1000000}) {
        CompleteDatabase database = squareBelow(
            "Switch",
            {{"indexOfCurrentMask", 3}, {"numberOfMasks", count}, {"numberOf32BitWordsPerMask", count}});
        EXPECT_EQ(database.draw().extent(), "nothing");
    }
}

TEST(FltVisualBuilder, drawsInstancesWhereTheyAreReferredToAndNotWhereTheyAreDefined)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("InstanceReference", {{"instanceDefinitionNumber", 7}});
    database.writer.add("Group").push().add("InstanceDefinition", {{"instanceDefinitionNumber", 7}}).push();
    database.object(offsets).writer.pop();
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 7}});
    database.writer.add("Matrix", {{"matrix", matrixWithMove(0, 4, 0)}}).pop();
    DrawnScene const drawn = database.draw();
    EXPECT_EQ(drawn.triangles.size(), 4U);
    EXPECT_EQ(drawn.extent(), "0 0 0 to 1 5 0");
}

TEST(FltVisualBuilder, leavesInstancesOutThatAreMissingOrHoldThemselves)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    database.object(offsets).writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop();
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 2}});
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 2U);
    EXPECT_EQ(result.leftOut.at("instance without a definition"), 1);
    EXPECT_NE(database.messages.find("refers to itself"), std::string::npos);
}

TEST(FltVisualBuilder, boundsWhatInstancesOfInstancesMakeOfASmallFile)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    for (int level = 0; level < 60; ++level) {
        database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", level}}).push();
        if (level == 0)
            database.object(offsets);
        for (int i = 0; level > 0 && i < 4; ++i)
            database.writer.add("InstanceReference", {{"instanceDefinitionNumber", level - 1}});
        database.writer.pop();
    }
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 59}});
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(result.outcome, FltVisualConversion::Outcome::converted);
    EXPECT_NE(database.messages.find("the scene would become too large"), std::string::npos);
}

TEST(FltVisualBuilder, boundsTheDepthOfTheHierarchyWhateverStandsBelowLightPointsBefore)
{
    constexpr int levelsOfAFile = FltLimits::hierarchyDepth * 2 / 3;
    auto const depthAfter = [](int lightPoints) {
        CompleteDatabase database;
        database.begin();
        for (int i = 0; i < lightPoints; ++i)
            database.writer.add("LightPoint").push().add("Group").pop();
        FltWriter referenced;
        referenced.push();
        for (int i = 0; i < levelsOfAFile; ++i) {
            database.writer.add("Group").push();
            referenced.add("Group").push();
        }
        database.writer.add("ExternalReference", {{"asciiPath", "referenced.flt"}});
        referenced.save(database.folder / "referenced.flt");
        std::shared_ptr<FltVisualNode> node = database.see().root;
        int depth = 0;
        for (; node != nullptr; node = node->children.empty() ? nullptr : node->children.back())
            ++depth;
        return depth;
    };
    int const depth = depthAfter(0);
    EXPECT_GT(depth, FltLimits::hierarchyDepth / 2);
    EXPECT_EQ(depthAfter(6), depth);
}

TEST(FltVisualBuilder, boundsTheDepthOfTheHierarchy)
{
    CompleteDatabase database;
    for (int i = 0; i < 5000; ++i)
        database.writer.push().add("Group");
    EXPECT_EQ(database.convert().outcome, FltVisualConversion::Outcome::converted);
    EXPECT_NE(database.messages.find("nested too deeply"), std::string::npos);
    CompleteDatabase levels;
    for (int i = 0; i < 1100; ++i)
        levels.writer.push().add("LOD", {{"switchInDistance", 1}});
    EXPECT_EQ(levels.convert().outcome, FltVisualConversion::Outcome::converted);
}

TEST(FltVisualBuilder, repeatsReplicatedGroups)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Group").add("Replicate", {{"numberOfReplications", 3}});
    database.writer.add("Matrix", {{"matrix", matrixWithMove(0, 2, 0)}}).push();
    database.object(offsets).writer.pop();
    DrawnScene const drawn = database.draw();
    EXPECT_EQ(drawn.triangles.size(), 8U);
    EXPECT_EQ(drawn.extent(), "0 0 0 to 1 7 0");
    CompleteDatabase many;
    many.begin().add("Group").add("Replicate", {{"numberOfReplications", 2000000000}});
    many.writer.add("Matrix", {{"matrix", matrixWithMove(0, 2, 0)}});
    many.convert();
    EXPECT_NE(many.messages.find("Too many replications"), std::string::npos);
}

TEST(FltVisualBuilder, holdsAllCopiesOfAReplicationInOneNode)
{
    CompleteDatabase::Converted const result = replicated(20).convert();
    std::vector<SoMultipleCopy*> const copies = findAll<SoMultipleCopy>(result.root.get());
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0]->matrix.getNum(), 21);
    EXPECT_EQ(copies[0]->getNumChildren(), 1);
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "0 0 0 to 1 41 0");
}

TEST(FltVisualBuilder, tellsTheRecordsOfACopyThatIsPicked)
{
    CompleteDatabase::Converted const result = replicated(20).convert();
    SoRayPickAction pick{SbViewportRegion(100, 100)};
    pick.setRay(SbVec3f(0.5F, 24.5F, 5), SbVec3f(0, 0, -1));
    pick.apply(result.root.get());
    ASSERT_NE(pick.getPickedPoint(), nullptr);
    EXPECT_TRUE(pick.getPickedPoint()->getPoint().equals(SbVec3f(0.5F, 24.5F, 0), 1e-3F));
    std::string names;
    SoPath const& path = *pick.getPickedPoint()->getPath();
    for (int i = 0; i < path.getLength(); ++i)
        names += std::string(path.getNode(i)->getName().getString()) + '/';
    EXPECT_NE(names.find("row/"), std::string::npos) << names;
    EXPECT_NE(names.find("o/"), std::string::npos) << names;
}

TEST(FltVisualBuilder, letsCopiesGrowWithTheBytesOfTheFile)
{
    for (std::size_t const bytes : {std::size_t{0}, std::size_t{100'000}}) {
        CompleteDatabase database = replicated(2'000'000'000);
        database.writer.addBytes(repeated(FltWriter().add("Group").lastRecord(), bytes / 44));
        CompleteDatabase::Converted const result = database.convert();
        EXPECT_NE(database.messages.find("Too many replications"), std::string::npos);
        ASSERT_EQ(findAll<SoMultipleCopy>(result.root.get()).size(), 1U);
        std::int64_t const size = static_cast<std::int64_t>(database.writer.bytes().size());
        EXPECT_EQ(findAll<SoMultipleCopy>(result.root.get())[0]->matrix.getNum(),
                  1 + FltLimits::copies + size / FltLimits::bytesForACopy);
    }
}

TEST(FltVisualBuilder, makesFewerCopiesBelowManyLevels)
{
    CompleteDatabase database;
    database.begin();
    for (int i = 0; i < 800; ++i)
        database.writer.add("Group").push();
    database.writer.add("Group").add("Replicate", {{"numberOfReplications", 2'000'000'000}});
    database.writer.add("Matrix", {{"matrix", matrixWithMove(0, 2, 0)}});
    CompleteDatabase::Converted const result = database.convert();
    ASSERT_EQ(findAll<SoMultipleCopy>(result.root.get()).size(), 1U);
    EXPECT_LT(findAll<SoMultipleCopy>(result.root.get())[0]->matrix.getNum(), FltLimits::copies / 50);
}

TEST(FltVisualBuilder, endsCopiesWhereNumbersEnd)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square(1, 1, 1);
    database.begin().add("Group").add("Replicate", {{"numberOfReplications", 1000}});
    database.writer.add("Matrix", {{"matrix", {10, 0, 0, 0, 0, 10, 0, 0, 0, 0, 10, 0, 0, 0, 0, 1}}}).push();
    database.object(offsets).writer.pop();
    CompleteDatabase::Converted const result = database.convert();
    ASSERT_EQ(findAll<SoMultipleCopy>(result.root.get()).size(), 1U);
    SoMFMatrix const& matrix = findAll<SoMultipleCopy>(result.root.get())[0]->matrix;
    EXPECT_EQ(matrix.getNum(), 30);
    EXPECT_TRUE(std::isfinite(matrix[matrix.getNum() - 1][0][0]));
}

TEST(FltVisualBuilder, countsTheFirstOfReplicatedInstancesToo)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    for (int level = 0; level < 60; ++level) {
        database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", level}}).push();
        if (level == 0)
            database.object(offsets);
        for (int i = 0; level > 0 && i < 4; ++i) {
            database.writer.add("InstanceReference", {{"instanceDefinitionNumber", level - 1}});
            database.writer.add("Replicate", {{"numberOfReplications", 1}});
            database.writer.add("Matrix", {{"matrix", matrixWithMove(0, 2, 0)}});
        }
        database.writer.pop();
    }
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 59}});
    CompleteDatabase::Converted const result = database.convert();
    std::int64_t const size = static_cast<std::int64_t>(database.writer.bytes().size());
    EXPECT_LT(visitsOf(result.root.get()),
              static_cast<double>(FltLimits::sceneNodes.floor + size * FltLimits::sceneNodes.perByte));
}

TEST(FltVisualBuilder, keepsWhatStandsBelowLightPointsClipRegionsTextsAndUnknownRecords)
{
    EXPECT_EQ(squareBelow("LightPoint", {}).draw().triangles.size(), 2U);
    EXPECT_EQ(squareBelow("ClipRegion", {}).draw().triangles.size(), 2U);
    EXPECT_EQ(squareBelow("Text", {}).draw().triangles.size() >= 2U, true);
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().addRaw(199, "new").push();
    database.object(offsets);
    EXPECT_EQ(database.draw().triangles.size(), 2U);
}

TEST(FltVisualBuilder, writesTextInItsPlace)
{
    CompleteDatabase database;
    database.begin().add("Text",
                         {{"XlowerLeftCorner", 1}, {"XupperRightCorner", 5}, {"ZupperRightCorner", 2}});
    database.writer.add("Comment", {{"textDescription", "Gate 7\nOpen"}});
    CompleteDatabase::Converted const result = database.convert();
    std::vector<SoAsciiText*> const texts = findAll<SoAsciiText>(result.root.get());
    ASSERT_EQ(texts.size(), 1U);
    ASSERT_EQ(texts[0]->string.getNum(), 2);
    EXPECT_STREQ(texts[0]->string[0].getString(), "Gate 7");
}

TEST(FltVisualBuilder, makesNothingOfTextsWithoutAWordAndOfDegreesOfFreedomThatEndWithTheirId)
{
    CompleteDatabase database;
    database.begin().add("Text").add("DOF", {{"idASCII", "stump"}}).resizeLast(12);
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_TRUE(findAll<SoAsciiText>(result.root.get()).empty());
    EXPECT_TRUE(result.joints.empty());
}

TEST(FltVisualBuilder, makesNothingOfRecordsWithoutAByteAndWithoutAnythingBelow)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    for (int const opcode : {2, 14, 61, 63, 73, 96})
        database.writer.addRaw(opcode);
    CompleteDatabase::Converted const empty = database.convert();
    EXPECT_EQ(static_cast<SoGroup*>(empty.root.get())->getNumChildren(), 0);
    database.writer.addRaw(2).push();
    database.object(offsets).writer.pop();
    EXPECT_EQ(database.draw().triangles.size(), 2U);
}

TEST(FltVisualBuilder, lightsTheSceneByLightSourcesThatAreOn)
{
    CompleteDatabase database;
    database.writer.addRaw(102, FltWriter::big32(4) + std::string(80, '\0') + FltWriter::big32(1) +
                                    std::string(148, '\0'));
    database.begin();
    for (int const flags : {0, 0x80})
        database.writer.add("LightSource", {{"idASCII", "lamp"},
                                            {"indexIntoLightPalette", 4},
                                            {"flags", {static_cast<double>(flags), 0, 0, 0}},
                                            {"localOrSpotPositionCoordinateZ", 9}});
    CompleteDatabase::Converted const result = database.convert();
    std::vector<SoPointLight*> const lights = findAll<SoPointLight>(result.root.get());
    ASSERT_EQ(lights.size(), 1U);
    EXPECT_EQ(lights[0]->location.getValue(), SbVec3f(0, 0, 9));
}

TEST(FltVisualBuilder, makesSpotsOfLightsThatShineInACone)
{
    CompleteDatabase database;
    constexpr long spot = 2;
    std::string body = FltWriter::big32(1) + std::string(232, '\0');
    auto const put = [&body](std::size_t at, std::string const& bytes) {
        body.replace(at - 4, bytes.size(), bytes);
    };
    put(56, FltWriter::bigFloat(1)); // the red of its diffuse colour
    put(88, FltWriter::big32(spot));
    put(132, FltWriter::bigFloat(64) + FltWriter::bigFloat(30)); // drop-off and angle
    database.writer.addRaw(102, body);
    database.begin().add("LightSource", {{"indexIntoLightPalette", 1},
                                         {"flags", {128, 0, 0, 0}},
                                         {"localOrSpotPositionCoordinateX", 3},
                                         {"infiniteOrSpotPitch", -90}});
    CompleteDatabase::Converted const result = database.convert();
    std::vector<SoSpotLight*> const lights = findAll<SoSpotLight>(result.root.get());
    ASSERT_EQ(lights.size(), 1U);
    EXPECT_EQ(lights[0]->color.getValue(), SbColor(1, 0, 0));
    EXPECT_EQ(lights[0]->location.getValue(), SbVec3f(3, 0, 0));
    EXPECT_TRUE(lights[0]->direction.getValue().equals(SbVec3f(0, 0, -1), 1e-6F));
    EXPECT_NEAR(lights[0]->cutOffAngle.getValue(), 0.5235988, 1e-6);
    EXPECT_NEAR(lights[0]->dropOffRate.getValue(), 0.5, 1e-6);
}

TEST(FltVisualBuilder, turnsBillboardsAboutTheirFeet)
{
    for (int const kind : {2, 4}) {
        CompleteDatabase database;
        std::vector<double> const tree = database.polygon({{10, 5, 1}, {12, 5, 1}, {12, 5, 4}, {10, 5, 4}});
        database.begin();
        database.object(tree, CompleteDatabase::face({{"templateBillboard", kind}}));
        CompleteDatabase::Converted const result = database.convert();
        std::vector<SoVRMLBillboard*> const boards = findAll<SoVRMLBillboard>(result.root.get());
        ASSERT_EQ(boards.size(), 1U);
        EXPECT_EQ(boards[0]->axisOfRotation.getValue(), kind == 2 ? SbVec3f(0, 1, 0) : SbVec3f(0, 0, 0));
        SoNodeRef<SoNode> const board(boards[0]);
        DrawnScene const standing(
            board->getTypeId() == SoVRMLBillboard::getClassTypeId() ? boards[0]->getChild(0) : nullptr);
        EXPECT_EQ(standing.extent(), "-1 0 0 to 1 3 0"); // its foot at the origin, up along y, seen along -z
    }
}

TEST(FltVisualBuilder, movesByTheStepsOfATransformationWhereNoMatrixSaysItAll)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Group");
    database.writer.add("Translate", {{"deltaX", 3}});
    database.writer.add("RotateAboutPoint", {{"KAxisOfRotation", 1}, {"angleToRotate", 90}});
    database.writer.add("ScaleNonUniform", {{"XScaleFactor", 1}, {"YScaleFactor", 2}, {"ZScaleFactor", 1}})
        .push();
    database.object(offsets).writer.pop();
    EXPECT_EQ(database.draw().extent(), "-1 6 0 to 0 8 0");

    CompleteDatabase both;
    std::vector<double> const corners = both.square();
    both.begin().add("Group").add("Translate", {{"deltaX", 3}});
    both.writer.add("Matrix", {{"matrix", matrixWithMove(0, 0, 5)}}).push();
    both.object(corners).writer.pop();
    EXPECT_EQ(both.draw().extent(), "0 0 5 to 1 1 5");
}

TEST(FltVisualBuilder, playsTheChildrenOfAnAnimatedGroup)
{
    CompleteDatabase database;
    std::vector<double> const one = database.square(0), two = database.square(5);
    database.begin();
    addAnimatedGroup(database.writer, "flame", 0x20000000, 3, 4, 0).push(); // swing
    database.object(one).object(two).object(one).writer.pop();
    addAnimatedGroup(database.writer, "lone", 0x40000000, 0, 1, 0).push();
    database.object(one);
    FltVisualConversion::Result const seen = database.see();
    FltVisualNode const& flame = *seen.root->children.at(0);
    auto const* const book = flame.as<FltVisualFlipBook>();
    ASSERT_NE(book, nullptr);
    EXPECT_EQ(book->name, "flame");
    EXPECT_EQ(book->loops, 3U);
    EXPECT_EQ(book->steps.size(), 4U);
    EXPECT_EQ(book->seconds(), 4);
    EXPECT_EQ(flame.children.size(), 3U);
    EXPECT_EQ(seen.root->children.at(1)->as<FltVisualFlipBook>(), nullptr) << "a single frame";
    EXPECT_TRUE(seen.leftOut.empty());
    EXPECT_EQ(database.draw().extent(), "0 0 0 to 1 1 0");
}

/// What is only there for references elsewhere is no empty frame.
TEST(FltVisualBuilder, takesAnInstanceDefinitionForNoFrame)
{
    CompleteDatabase database;
    std::vector<double> const square = database.square();
    database.begin().add("Group", {{"flags", 0x40000000}}).push();
    database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    database.object(square).writer.pop();
    database.object(square).object(square);
    FltVisualConversion::Result const seen = database.see();
    FltVisualNode const& group = *seen.root->children.at(0);
    EXPECT_EQ(group.children.size(), 2U);
    EXPECT_EQ(group.as<FltVisualFlipBook>()->steps.size(), 2U);
}

/// A frame that stands twice in its loop is visited twice, and so are its own frames.
TEST(FltVisualBuilder, swingsNoFramesOfASceneThatWouldBecomeTooLarge)
{
    CompleteDatabase database;
    database.begin();
    for (int level = 0; level < 60; ++level) {
        database.writer.add("Group", {{"flags", 0x20000000}}).push();
        database.writer.add("Group").add("Group");
        database.writer.add("Group").add("Group").push();
    }
    FltVisualConversion::Result const seen = database.see();
    EXPECT_NE(database.messages.find("the scene would become too large"), std::string::npos);
    EXPECT_EQ(seen.root->children.at(0)->as<FltVisualFlipBook>()->steps.size(), 4U);
}

namespace
{

constexpr int largeComments = 200;
constexpr std::size_t largeComment = 60'000;

/// Builds the visual of an Object, many groups with large comments and the Object again, and has the bytes
/// given back.
struct BuiltWithoutBytes {
    explicit BuiltWithoutBytes(bool hasDefinition)
    {
        CompleteDatabase database;
        std::vector<double> const offsets = database.square();
        database.begin();
        if (hasDefinition)
            database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push().pop();
        database.object(offsets);
        for (int i = 0; i < largeComments; ++i)
            database.writer.add("Group", {{"idASCII", "g"}}).addRaw(31, std::string(largeComment, 'x'));
        database.object(offsets);
        ScratchFolder const folder;
        database.writer.save(folder / "large.flt");
        FltFileInput input((folder / "large.flt").c_str());
        std::string_view const bytes(input.getBuffer(), static_cast<std::size_t>(input.getSize()));
        FltModel model("large.flt", bytes.data(), bytes.size(), true);
        FltVisualSetting setting;
        FltModelReader::read(model, setting.leftOut, [](std::size_t /*done*/) {});
        FltVisualBuilder builder(model, setting, 1);
        builder.dropBytesOf(input);
        root = builder.build().node;
        bytesThere = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), 'x'));
    }

    std::shared_ptr<FltVisualNode> root;
    std::size_t bytesThere = 0; ///< Of the comments.
};

} // namespace

TEST(FltVisualBuilder, givesTheBytesBackThatItHasRead)
{
    BuiltWithoutBytes const built(false);
    EXPECT_LT(built.bytesThere, largeComments * largeComment / 2);
    ASSERT_EQ(built.root->children.size(), largeComments + 2U);
    for (auto const& object : {built.root->children.front(), built.root->children.back()}) {
        ASSERT_EQ(object->meshes.size(), 1U);
        EXPECT_EQ(object->meshes[0].positions.size(), 4U);
        EXPECT_EQ(object->meshes[0].positions[2], built.root->children.front()->meshes[0].positions[2]);
    }
    EXPECT_EQ(built.root->children[largeComments]->comments, std::vector{std::string(largeComment, 'x')});
}

/// A reference may stand behind all that it means.
TEST(FltVisualBuilder, keepsTheBytesWhereThereAreDefinitions)
{
    EXPECT_GE(BuiltWithoutBytes(true).bytesThere, largeComments * largeComment);
}

/// What a node says is read before what stands below it.
TEST(FltVisualBuilder, seesTheSameWhereBytesAreGivenBack)
{
    auto const see = [](bool keepsBytes) {
        CompleteDatabase database;
        std::vector<double> const offsets = database.square();
        database.begin();
        auto const addLargePart = [&](char const* kind, Fields const& fields) {
            database.writer.add(kind, fields);
            database.writer.add("Matrix", {{"matrix", matrixWithMove(1, 2, 3)}}).push();
            database.object(offsets);
            for (int i = 0; i < largeComments / 2; ++i)
                database.writer.add("Group").addRaw(31, std::string(largeComment, 'x'));
            database.object(offsets).writer.pop();
        };
        addLargePart("LOD", {{"idASCII", "near"}, {"switchInDistance", 10}});
        addLargePart("OLDLOD", {{"idASCII", "old"}, {"switchInDistance", 20}, {"switchOutDistance", 10}});
        addLargePart("Group", {{"idASCII", "group"}});
        addLargePart("Group", {{"idASCII", "book"}, {"flags", 0x40000000}});
        addLargePart("DOF", {{"idASCII", "joint"}, {"XCurrentScale", 2}});
        addLargePart(
            "Switch",
            {{"idASCII", "switch"}, {"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {3}}});
        addLargePart("LightSource", {{"idASCII", "light"}});
        if (keepsBytes)
            database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push().pop();
        FltVisualConversion::Result const seen = database.see();
        return VisualDump::of(*seen.root, seen.textures);
    };
    EXPECT_TRUE(see(false) == see(true)) << "too large to be shown";
}

#include "visual/FltMirrors.h"

#include "support/CompleteDatabase.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <gtest/gtest.h>
#include <set>

namespace
{

/// A matrix record that scales each axis, and moves.
CompleteDatabase::Fields matrix(double x, double y, double z, double move = 0)
{
    return {{"matrix", std::vector<double>{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, move, 0, 0, 1}}};
}

SbMatrix scale(float x, float y, float z)
{
    SbMatrix made;
    made.setScale(SbVec3f(x, y, z));
    return made;
}

std::shared_ptr<FltVisualNode> nodeWith(std::vector<SbDPMatrix> const& transform)
{
    auto made = std::make_shared<FltVisualNode>();
    made->transform = transform;
    return made;
}

/// How many forms the faces of a scene have.
std::size_t countForms(SoNode* root)
{
    SoSearchAction search;
    search.setType(SoIndexedFaceSet::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.apply(root);
    std::set<SoNode*> forms;
    for (int i = 0; i < search.getPaths().getLength(); ++i)
        forms.insert(search.getPaths()[i]->getTail());
    return forms.size();
}

/// All faces are seen from above, where they were modelled to be seen from.
/// @return how many triangles there are
std::size_t expectToLookUp(CompleteDatabase& database, std::size_t forms,
                           FltVisualConversion::Options const& options = {})
{
    CompleteDatabase::Converted const made = database.convert(options);
    DrawnScene const drawn(made.root.get());
    for (DrawnScene::Primitive const& each : drawn.triangles) {
        EXPECT_GT(each.front()[2], 0.99F);
        EXPECT_GT(each.normals[0][2], 0.99F);
    }
    EXPECT_EQ(countForms(made.root.get()), forms);
    return drawn.triangles.size();
}

constexpr int definition = 3;

void addDefinition(CompleteDatabase& database, std::vector<double> const& offsets)
{
    database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", definition}}).push();
    database.object(offsets);
    database.writer.pop();
}

void addInstance(CompleteDatabase& database, CompleteDatabase::Fields const& place)
{
    database.writer.add("InstanceReference", {{"instanceDefinitionNumber", definition}}).add("Matrix", place);
}

} // namespace

TEST(FltMirrors, areMatricesWithANegativeDeterminant)
{
    EXPECT_FALSE(FltMirrors::isMirror(SbMatrix::identity()));
    EXPECT_TRUE(FltMirrors::isMirror(scale(-1, 1, 1)));
    EXPECT_FALSE(FltMirrors::isMirror(scale(-1, -1, 1)));
    EXPECT_TRUE(FltMirrors::isMirror(scale(-1e-9F, -1e-9F, -1e-9F)));
    EXPECT_FALSE(FltMirrors::isMirror(scale(0, 1, 1)));
}

TEST(FltMirrors, areNodesOfAnOddNumberOfThem)
{
    EXPECT_TRUE(FltMirrors::isMirror(*nodeWith({scale(-1, 1, 1)})));
    EXPECT_FALSE(FltMirrors::isMirror(*nodeWith({scale(-1, 1, 1), scale(1, 1, -2)})));
    auto const joint = nodeWith({scale(-1, 1, 1)});
    joint->become<FltVisualJoint>().scale[1].current = -1;
    EXPECT_FALSE(FltMirrors::isMirror(*joint));
    auto const unit = nodeWith({});
    unit->become<FltVisualScale>().factor = -1;
    EXPECT_TRUE(FltMirrors::isMirror(*unit));
}

TEST(FltMirrors, tellInWhichSensesEachNodeStands)
{
    auto const root = nodeWith({}), mirror = nodeWith({scale(-1, 1, 1)}), both = nodeWith({}),
               inside = nodeWith({scale(1, -1, 1)}), inTwo = nodeWith({});
    root->children = {mirror, both, nullptr};
    mirror->children = {both, inside};
    inside->children = {inTwo};
    FltMirrors::find(*root);
    EXPECT_TRUE(root->senses.isStraight && !root->senses.isMirrored);
    EXPECT_TRUE(mirror->senses.isStraight && !mirror->senses.isMirrored);
    EXPECT_TRUE(both->senses.isStraight && both->senses.isMirrored);
    EXPECT_TRUE(!inside->senses.isStraight && inside->senses.isMirrored);
    EXPECT_TRUE(inTwo->senses.isStraight && !inTwo->senses.isMirrored);
}

TEST(FltMirrors, areFoundInTimeWhereManyPlacesShareAPart)
{
    auto root = nodeWith({});
    auto const bottom = root;
    for (int level = 0; level < 60; ++level) {
        auto above = nodeWith({scale(-1, 1, 1)});
        above->children = {root, root};
        root = above;
    }
    FltMirrors::find(*root);
    EXPECT_TRUE(bottom->senses.isStraight && !bottom->senses.isMirrored);
}

/// They were seen from behind, and those of one side not at all.
TEST(FltMirrors, leaveFacesWithTheSideThatTheyAreSeenFrom)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Group").add("Matrix", matrix(-1, 1, 1)).push();
    database.object(offsets);
    EXPECT_EQ(expectToLookUp(database, 1), 2U);
}

TEST(FltMirrors, undoEachOther)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Group").add("Matrix", matrix(-1, 1, 1)).push();
    database.writer.add("Group").add("Matrix", matrix(1, -1, 1)).push();
    database.object(offsets);
    EXPECT_EQ(expectToLookUp(database, 1), 2U);
}

TEST(FltMirrors, giveASharedPartAFormForEachSense)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    addDefinition(database, offsets);
    for (double const x : {1.0, -1.0, 2.0, -2.0, -3.0})
        addInstance(database, matrix(x, 1, 1));
    EXPECT_EQ(expectToLookUp(database, 2), 10U);
}

TEST(FltMirrors, maySplitTheCopiesOfAReplication)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Group").add("Replicate", {{"numberOfReplications", 4}});
    database.writer.add("Matrix", matrix(-1, 1, 1, 3)).push();
    database.object(offsets);
    EXPECT_EQ(expectToLookUp(database, 2), 10U);
}

TEST(FltMirrors, makeNoMoreThanTwoFormsHoweverTheyAreNested)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    addDefinition(database, offsets);
    database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", 4}}).push();
    database.writer.add("Group").add("Replicate", {{"numberOfReplications", 2}});
    database.writer.add("Matrix", matrix(1, -1, 1, 3)).push();
    addInstance(database, matrix(-1, 1, 1));
    database.writer.pop().pop();
    for (double const x : {1.0, -1.0})
        database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 4}})
            .add("Matrix", matrix(x, 1, 1));
    addInstance(database, matrix(1, 1, 1));
    EXPECT_EQ(expectToLookUp(database, 2), 14U);
}

TEST(FltMirrors, findAPartAgainThatOthersHaveUsedUpBefore)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    addDefinition(database, offsets);
    database.writer.add("InstanceDefinition", {{"instanceDefinitionNumber", 4}}).push();
    addInstance(database, matrix(1, 1, 1));
    database.writer.pop();
    for (double const x : {1.0, -1.0})
        addInstance(database, matrix(x, 1, 1));
    for (double const x : {1.0, -1.0})
        database.writer.add("InstanceReference", {{"instanceDefinitionNumber", 4}})
            .add("Matrix", matrix(x, 1, 1));
    EXPECT_EQ(expectToLookUp(database, 2), 8U);
}

TEST(FltMirrors, reachIntoOtherFiles)
{
    CompleteDatabase other;
    std::vector<double> const offsets = other.square();
    other.begin();
    other.object(offsets);
    CompleteDatabase database;
    database.folder.write("other.flt", other.writer.bytes());
    database.begin();
    for (double const y : {1.0, -1.0})
        database.writer.add("ExternalReference", {{"asciiPath", "other.flt"}}).add("Matrix", matrix(1, y, 1));
    EXPECT_EQ(expectToLookUp(database, 2), 4U);
}

TEST(FltMirrors, turnFacesBelowJointsAndInSwitches)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("DOF", {{"XCurrentScale", -1}, {"YCurrentScale", 1}, {"ZCurrentScale", 1}});
    database.writer.push().add("Switch",
                               {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}});
    database.writer.push();
    database.object(offsets);
    EXPECT_EQ(expectToLookUp(database, 1), 2U);
}

TEST(FltMirrors, leaveAVisualThatIsKeptAsItIs)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    addDefinition(database, offsets);
    for (double const x : {1.0, -1.0})
        addInstance(database, matrix(x, 1, 1));
    FltVisualConversion::Result const seen = database.see();
    for (int time = 0; time < 2; ++time) {
        FltMadeScene const made = FltSceneMaker::makeOfKept(seen.root, seen.textures);
        EXPECT_EQ(DrawnScene(made.root.get()).triangles.size(), 4U);
        EXPECT_EQ(countForms(made.root.get()), 2U);
    }
}

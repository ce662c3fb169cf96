#include "scene/FltNodeRecords.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

namespace
{

class FltNodeRecordsTest : public testing::Test
{
protected:
    SoSeparator* addGroup(SoGroup& above)
    {
        auto* const group = new SoSeparator;
        above.addChild(group);
        return group;
    }

    void knowScene()
    {
        records.finish();
        records.addParts(*root);
    }

    /// The offset that a node has; -1 for a node that isn't known.
    long offsetOf(SoNode const* node) const
    {
        FltNodeRecords::Entry const* const entry = records.find(*node);
        return entry != nullptr ? static_cast<long>(entry->second.offset) : -1;
    }

    SoNodeRef<SoSeparator> const root{new SoSeparator};
    FltNodeRecords records;
};

} // namespace

TEST_F(FltNodeRecordsTest, FindsTheRecordOfEachNodeThatHasOne)
{
    for (unsigned i = 0; i < 100; ++i)
        records.add(addGroup(*root), {10 * i, i % 3});
    records.finish();
    for (int i = 0; i < 100; ++i) {
        FltNodeRecords::Entry const* const entry = records.find(*root->getChild(i));
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->first, root->getChild(i));
        EXPECT_EQ(entry->second.offset, 10U * static_cast<unsigned>(i));
        EXPECT_EQ(entry->second.file, static_cast<unsigned>(i % 3));
    }
}

TEST_F(FltNodeRecordsTest, TakesNoRecordForOne)
{
    EXPECT_TRUE(records.isEmpty());
    records.add(root.get(), {});
    EXPECT_TRUE(records.isEmpty());
    knowScene();
    EXPECT_EQ(offsetOf(root.get()), -1);
    EXPECT_EQ(offsetOf(addGroup(*root)), -1);
}

TEST_F(FltNodeRecordsTest, GivesANodeWithoutARecordThatOfTheNearestAbove)
{
    SoSeparator* const group = addGroup(*root);
    SoSeparator* const part = addGroup(*addGroup(*group));
    SoSeparator* const inner = addGroup(*part);
    records.add(root.get(), {0, 0});
    records.add(group, {100, 0});
    records.add(inner, {200, 0});
    SoSeparator* const innerPart = addGroup(*inner);
    SoSeparator* const next = addGroup(*root);
    knowScene();
    EXPECT_EQ(offsetOf(part), 100);
    EXPECT_EQ(records.find(*part)->first, group);
    EXPECT_EQ(offsetOf(innerPart), 200);
    EXPECT_EQ(offsetOf(next), 0);
}

TEST_F(FltNodeRecordsTest, FindsWhatStandsInAField)
{
    SoSeparator* const group = addGroup(*root);
    auto* const shape = new SoFaceSet;
    auto* const property = new SoVertexProperty;
    shape->vertexProperty = property;
    group->addChild(shape);
    records.add(root.get(), {0, 0});
    records.add(group, {100, 0});
    knowScene();
    EXPECT_EQ(offsetOf(shape), 100);
    EXPECT_EQ(offsetOf(property), 100);
}

TEST_F(FltNodeRecordsTest, GivesAPartOfSeveralNodesTheFirstOfThemHoweverManyThereAre)
{
    auto* const material = new SoMaterial;
    for (unsigned i = 0; i < 20'000; ++i) {
        SoSeparator* const group = addGroup(*root);
        group->addChild(material);
        records.add(group, {100 + i, 0});
    }
    knowScene();
    for (int i = 0; i < 20'000; ++i)
        ASSERT_EQ(offsetOf(material), 100);
}

TEST_F(FltNodeRecordsTest, LooksAtASharedNodeOnceHoweverManyWaysLeadToIt)
{
    // Each group holds the next one twice: 2^60 ways to the last.
    SoSeparator* group = root.get();
    for (int i = 0; i < 60; ++i) {
        SoSeparator* const next = addGroup(*group);
        group->addChild(next);
        group = next;
    }
    records.add(root.get(), {7, 0});
    knowScene();
    EXPECT_EQ(offsetOf(group), 7);
}

TEST_F(FltNodeRecordsTest, KnowsNothingOfOtherNodes)
{
    SoNodeRef<SoSeparator> const above(new SoSeparator);
    SoNodeRef<SoSeparator> const other(new SoSeparator);
    above->addChild(root.get());
    records.add(root.get(), {0, 0});
    SoSeparator* const part = addGroup(*root);
    knowScene();
    EXPECT_EQ(offsetOf(above.get()), -1);
    EXPECT_EQ(offsetOf(other.get()), -1);
    EXPECT_EQ(offsetOf(addGroup(*root)), -1) << "it was added later";
    EXPECT_EQ(offsetOf(part), 0);
}

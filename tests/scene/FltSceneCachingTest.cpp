#include "scene/FltSceneCaching.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/nodes/SoBlinker.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTransform.h>
#include <Inventor/nodes/SoTransparencyType.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

namespace
{

class FltSceneCachingTest : public testing::Test
{
protected:
    static SoSeparator* add(SoGroup* above)
    {
        auto* const group = new SoSeparator;
        above->addChild(group);
        return group;
    }

    /// A separator in which two shapes stand still.
    static SoSeparator* addStill(SoGroup* above)
    {
        SoSeparator* const group = add(above);
        group->addChild(new SoIndexedFaceSet);
        group->addChild(new SoIndexedFaceSet);
        return group;
    }

    void arrange(std::unordered_set<SoNode const*> const& changing = {})
    {
        FltSceneCaching::arrange(*root, changing);
    }

    static void expect(SoSeparator const* group, SoSeparator::CacheEnabled caching)
    {
        EXPECT_EQ(group->renderCaching.getValue(), caching);
    }

    SoNodeRef<SoSeparator> const root{new SoSeparator};
};

} // namespace

TEST_F(FltSceneCachingTest, KeepsTheTopmostOfWhatStandsStill)
{
    SoSeparator* const part = addStill(root.get());
    arrange();
    expect(root.get(), SoSeparator::ON);
    EXPECT_EQ(root->boundingBoxCaching.getValue(), SoSeparator::ON);
    expect(part, SoSeparator::AUTO);
    EXPECT_TRUE(part->renderCaching.isDefault());
}

TEST_F(FltSceneCachingTest, KeepsWhatStandsBesideAndBelowWhatChangesByItself)
{
    SoNodeRef<SoTransparencyType> const blending(new SoTransparencyType);
    blending->value = SoTransparencyType::SORTED_OBJECT_BLEND;
    for (SoNode* const changing : std::initializer_list<SoNode*>{
             new SoLOD, new SoBlinker, new SoVRMLBillboard, new SoDirectionalLight, blending.get()}) {
        SoNodeRef<SoSeparator> const top(new SoSeparator);
        SoSeparator* const beside = addStill(top.get());
        SoSeparator* const around = add(top.get());
        around->addChild(changing);
        SoSeparator* const below = changing->isOfType(SoGroup::getClassTypeId())
                                       ? addStill(static_cast<SoGroup*>(changing))
                                       : addStill(around);
        FltSceneCaching::arrange(*top, {});
        SCOPED_TRACE(changing->getTypeId().getName().getString());
        expect(top.get(), SoSeparator::OFF);
        expect(around, SoSeparator::OFF);
        expect(beside, SoSeparator::ON);
        expect(below, SoSeparator::ON);
    }
}

TEST_F(FltSceneCachingTest, TakesWhatIsDrawnInOrderForStill)
{
    auto* const opaque = new SoTransparencyType;
    opaque->value = SoTransparencyType::NONE;
    addStill(root.get())->insertChild(opaque, 0);
    arrange();
    expect(root.get(), SoSeparator::ON);
}

TEST_F(FltSceneCachingTest, KeepsNothingAboveWhatHostsChange)
{
    auto* const door = new SoSwitch;
    auto* const hidden = new SoSwitch;
    auto* const motion = new SoTransform;
    SoSeparator* const inDoor = addStill(door);
    SoSeparator* const withHidden = addStill(root.get());
    withHidden->addChild(hidden);
    SoSeparator* const joint = add(root.get());
    joint->addChild(motion);
    SoSeparator* const moved = addStill(joint);
    root->addChild(door);
    arrange({door, motion});
    expect(root.get(), SoSeparator::OFF);
    expect(inDoor, SoSeparator::ON);
    expect(withHidden, SoSeparator::ON); // what hides seldom changes
    expect(joint, SoSeparator::OFF);
    expect(moved, SoSeparator::ON);
}

TEST_F(FltSceneCachingTest, KeepsNoPartOfOneShapeAndNoneWithoutAny)
{
    SoSeparator* const one = add(root.get());
    one->addChild(new SoIndexedFaceSet);
    SoSeparator* const none = add(root.get());
    none->addChild(new SoDirectionalLight);
    root->addChild(new SoLOD);
    arrange();
    expect(one, SoSeparator::AUTO);
    expect(none, SoSeparator::AUTO);
    expect(root.get(), SoSeparator::OFF);
}

TEST_F(FltSceneCachingTest, KeepsLargePartsByThemselves)
{
    SoSeparator* const faces = addStill(root.get());
    static_cast<SoIndexedFaceSet*>(faces->getChild(0))->coordIndex.setNum(FltSceneCaching::mostCorners / 2);
    SoSeparator* const points = addStill(root.get());
    auto* const shape = new SoPointSet;
    auto* const property = new SoVertexProperty;
    property->vertex.setNum(FltSceneCaching::mostCorners / 2 + 2);
    shape->vertexProperty = property;
    points->addChild(shape);
    arrange();
    expect(root.get(), SoSeparator::OFF);
    expect(faces, SoSeparator::ON);
    expect(points, SoSeparator::ON);
}

TEST_F(FltSceneCachingTest, KeepsThePartsOfGroupsThatCannotKeepThemselves)
{
    auto* const copies = new SoMultipleCopy;
    SoSeparator* const copied = addStill(copies);
    root->addChild(copies);
    root->addChild(new SoLOD);
    arrange();
    expect(copied, SoSeparator::ON);
}

TEST_F(FltSceneCachingTest, LooksAtASharedNodeOnceHoweverManyWaysLeadToIt)
{
    SoGroup* group = root.get();
    for (int i = 0; i < 60; ++i) { // 2^60 ways to the last
        SoGroup* const next = i % 2 == 0 ? new SoGroup : add(group);
        if (i % 2 == 0)
            group->addChild(next);
        group->addChild(next);
        group = next;
    }
    SoSeparator* const last = addStill(group);
    group->addChild(new SoLOD);
    arrange();
    expect(root.get(), SoSeparator::OFF);
    expect(last, SoSeparator::ON);
}

TEST_F(FltSceneCachingTest, KeepsAsManyCornersAsThereMayBeAndNoneMore)
{
    for (int const more : {0, 1}) {
        SoNodeRef<SoSeparator> const top(new SoSeparator);
        SoSeparator* const part = addStill(top.get());
        auto const fill = [part](int child, int corners) {
            static_cast<SoIndexedFaceSet*>(part->getChild(child))->coordIndex.setNum(corners);
        };
        fill(0, FltSceneCaching::mostCorners / 2);
        fill(1, FltSceneCaching::mostCorners / 2 + more);
        FltSceneCaching::arrange(*top, {});
        EXPECT_EQ(top->renderCaching.getValue() == SoSeparator::ON, more == 0);
    }
}

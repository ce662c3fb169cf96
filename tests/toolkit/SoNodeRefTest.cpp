#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

/// A node that lives as long as the test.
class SoNodeRefTest : public testing::Test
{
protected:
    SoNodeRefTest() { node->ref(); }
    ~SoNodeRefTest() override { node->unref(); }

    SoSeparator* node = new SoSeparator;
};

TEST_F(SoNodeRefTest, HoldsOneReferenceForAsLongAsItLives)
{
    {
        SoNodeRef<SoSeparator> const ref(node);
        EXPECT_EQ(node->getRefCount(), 2);
        EXPECT_EQ(ref.get(), node);
        EXPECT_EQ(&*ref, node);
        EXPECT_EQ(ref->getNumChildren(), 0);
    }
    EXPECT_EQ(node->getRefCount(), 1);
}

TEST_F(SoNodeRefTest, MayHoldNone)
{
    SoNodeRef<SoSeparator> const none;
    SoNodeRef<SoSeparator> const null(nullptr);
    EXPECT_EQ(none.get(), nullptr);
    EXPECT_EQ(null.get(), nullptr);
}

TEST_F(SoNodeRefTest, ACopyHoldsAReferenceOfItsOwn)
{
    SoNodeRef<SoSeparator> const ref(node);
    SoNodeRef<SoSeparator> copy(ref);
    EXPECT_EQ(node->getRefCount(), 3);
    copy = SoNodeRef<SoSeparator>();
    EXPECT_EQ(node->getRefCount(), 2);
    EXPECT_EQ(ref.get(), node);
}

TEST_F(SoNodeRefTest, AMoveHandsTheReferenceOver)
{
    SoNodeRef<SoSeparator> ref(node);
    SoNodeRef<SoSeparator> const moved(std::move(ref));
    EXPECT_EQ(node->getRefCount(), 2);
    EXPECT_EQ(moved.get(), node);
}

TEST_F(SoNodeRefTest, AnAssignmentLetsGoOfTheNodeBefore)
{
    SoNodeRef<SoSeparator> ref(node);
    ref = SoNodeRef<SoSeparator>(new SoSeparator);
    EXPECT_EQ(node->getRefCount(), 1);
    EXPECT_NE(ref.get(), node);
    ref = SoNodeRef<SoSeparator>();
    EXPECT_EQ(ref.get(), nullptr);
}

TEST_F(SoNodeRefTest, AnAssignmentOfTheSameNodeKeepsIt)
{
    SoNodeRef<SoSeparator> ref(new SoSeparator);
    SoSeparator* const same = ref.get();
    ref = SoNodeRef<SoSeparator>(same);
    EXPECT_EQ(ref.get(), same);
    EXPECT_EQ(same->getRefCount(), 1);
}

} // namespace

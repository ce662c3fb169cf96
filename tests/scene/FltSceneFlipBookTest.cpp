#include "scene/FltSceneFlipBook.h"

#include <Inventor/engines/SoEngineOutput.h>
#include <Inventor/engines/SoTimeCounter.h>
#include <Inventor/nodes/SoInfo.h>
#include <gtest/gtest.h>

namespace
{

/// A flip-book with these steps.
FltSceneFlipBook bookOf(std::vector<FltVisualFlipBook::Step> const& steps)
{
    std::vector<SoNodeRef<SoNode>> frames;
    for (std::size_t i = 0; i < steps.size(); ++i)
        frames.emplace_back(new SoInfo);
    FltSceneFlipBook book;
    book.steps = steps;
    book.blinker = SoNodeRef<SoBlinker>(new SoBlinker);
    book.fill(frames);
    return book;
}

/// How long the children of a blinker show; none if all show equally long.
std::vector<float> dutiesOf(SoBlinker& blinker)
{
    SoEngineOutput* output = nullptr;
    blinker.whichChild.getConnectedEngine(output);
    auto const& counter = *static_cast<SoTimeCounter*>(output->getContainer());
    SoMFFloat const& duty = counter.duty;
    return duty.getNum() > 1 ? std::vector<float>(duty.getValues(0), duty.getValues(0) + duty.getNum())
                             : std::vector<float>();
}

} // namespace

TEST(FltSceneFlipBook, standsStillAtItsFirstFrame)
{
    FltSceneFlipBook const book = bookOf({{0, 0.5}, {1, 0.5}, {2, 0.5}, {3, 0.5}});
    EXPECT_FALSE(book.blinker->on.getValue());
    EXPECT_EQ(book.blinker->whichChild.getValue(), 0);
    EXPECT_EQ(book.blinker->speed.getValue(), 0.5F) << "loops in a second";
    EXPECT_EQ(dutiesOf(*book.blinker), std::vector<float>());
}

TEST(FltSceneFlipBook, hasAChildForEachStep)
{
    FltSceneFlipBook const book = bookOf({{2, 1}, {1, 1}, {0, 1}, {1, 1}});
    ASSERT_EQ(book.blinker->getNumChildren(), 4);
    EXPECT_EQ(book.blinker->getChild(1), book.blinker->getChild(3));
    EXPECT_EQ(book.blinker->whichChild.getValue(), 2) << "where the first frame stands";
}

TEST(FltSceneFlipBook, givesEachFrameItsTime)
{
    FltSceneFlipBook const book = bookOf({{0, 0.5}, {1, 0.5}, {2, 3}});
    EXPECT_EQ(book.blinker->speed.getValue(), 0.25F);
    EXPECT_EQ(dutiesOf(*book.blinker), (std::vector<float>{0.5F, 0.5F, 3}));
}

TEST(FltSceneFlipBook, startsAndStops)
{
    FltSceneFlipBook book = bookOf({{0, 1}, {1, 1}});
    book.play(true);
    EXPECT_TRUE(book.blinker->on.getValue());
    book.play(false);
    EXPECT_FALSE(book.blinker->on.getValue());
}

#include "scene/FltSceneFlipBook.h"

#include <Inventor/SoDB.h>
#include <Inventor/engines/SoEngineOutput.h>
#include <Inventor/engines/SoTimeCounter.h>
#include <Inventor/fields/SoSFTime.h>
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
    book.addBlinker(frames);
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
    EXPECT_FALSE(book.blinkers[0]->on.getValue());
    EXPECT_EQ(book.blinkers[0]->whichChild.getValue(), 0);
    EXPECT_EQ(book.blinkers[0]->speed.getValue(), 0.5F) << "loops in a second";
    EXPECT_EQ(dutiesOf(*book.blinkers[0]), std::vector<float>());
}

TEST(FltSceneFlipBook, hasAChildForEachStep)
{
    FltSceneFlipBook const book = bookOf({{2, 1}, {1, 1}, {0, 1}, {1, 1}});
    ASSERT_EQ(book.blinkers[0]->getNumChildren(), 4);
    EXPECT_EQ(book.blinkers[0]->getChild(1), book.blinkers[0]->getChild(3));
    EXPECT_EQ(book.blinkers[0]->whichChild.getValue(), 2) << "where the first frame stands";
}

TEST(FltSceneFlipBook, givesEachFrameItsTime)
{
    FltSceneFlipBook const book = bookOf({{0, 0.5}, {1, 0.5}, {2, 3}});
    EXPECT_EQ(book.blinkers[0]->speed.getValue(), 0.25F);
    EXPECT_EQ(dutiesOf(*book.blinkers[0]), (std::vector<float>{0.5F, 0.5F, 3}));
}

TEST(FltSceneFlipBook, startsAndStops)
{
    FltSceneFlipBook book = bookOf({{0, 1}, {1, 1}});
    book.play(true);
    EXPECT_TRUE(book.blinkers[0]->on.getValue());
    book.play(false);
    EXPECT_FALSE(book.blinkers[0]->on.getValue());
}

/// A loop of two seconds, three times: after six seconds it stands still.
TEST(FltSceneFlipBook, endsAfterItsLoops)
{
    auto& time = *static_cast<SoSFTime*>(SoDB::getGlobalField("realTime"));
    SoDB::enableRealTimeSensor(FALSE);
    FltSceneFlipBook book = bookOf({{0, 1}, {1, 1}});
    book.loops = 3;
    time = SbTime(1000.);
    book.play(true);
    for (double const seconds : {0.5, 2.5, 5.5}) {
        time = SbTime(1000 + seconds);
        EXPECT_TRUE(book.blinkers[0]->on.getValue()) << seconds;
    }
    time = SbTime(1006.5);
    EXPECT_FALSE(book.blinkers[0]->on.getValue());
    book.play(true);
    EXPECT_TRUE(book.blinkers[0]->on.getValue()) << "again from the start";
    book.play(false);
    EXPECT_FALSE(book.blinkers[0]->on.getValue());
    EXPECT_FALSE(book.blinkers[0]->on.isConnectedFromEngine());
    SoDB::enableRealTimeSensor(TRUE);
}

TEST(FltSceneFlipBook, playsInMirrorsAndElsewhere)
{
    FltSceneFlipBook book = bookOf({{0, 1}, {1, 1}});
    book.addBlinker({SoNodeRef<SoNode>(new SoInfo), SoNodeRef<SoNode>(new SoInfo)});
    ASSERT_EQ(book.blinkers.size(), 2U);
    book.play(true);
    EXPECT_TRUE(book.blinkers[1]->on.getValue());
    book.play(false);
    EXPECT_FALSE(book.blinkers[1]->on.getValue());
}

#include "visual/FltFlipBookReader.h"

#include "support/AnimatedGroup.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace
{

constexpr unsigned forward = 0x40000000;
constexpr unsigned swing = 0x20000000;
constexpr unsigned backward = 0x02000000;

FltRecordView viewOf(std::string const& bytes, std::uint32_t opcode = 2)
{
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size()), opcode, 0};
}

FltVisualFlipBook read(unsigned flags, std::size_t frames, long loops = 0, double loop = 0, double last = 0)
{
    FltWriter writer;
    std::string const bytes = addAnimatedGroup(writer, "g", flags, loops, loop, last).lastRecord();
    return FltFlipBookReader::read(viewOf(bytes), 1570, frames).value_or(FltVisualFlipBook());
}

std::vector<std::size_t> framesOf(FltVisualFlipBook const& book)
{
    std::vector<std::size_t> frames;
    for (FltVisualFlipBook::Step const& step : book.steps)
        frames.push_back(step.frame);
    return frames;
}

std::vector<double> timesOf(FltVisualFlipBook const& book)
{
    std::vector<double> times;
    for (FltVisualFlipBook::Step const& step : book.steps)
        times.push_back(step.seconds);
    return times;
}

using Frames = std::vector<std::size_t>;
using Times = std::vector<double>;

} // namespace

TEST(FltFlipBookReader, knowsAnAnimatedGroupByEachOfThreeFlags)
{
    for (auto const& [flags, isAnimated] : {std::pair(forward, true),
                                            {swing, true},
                                            {backward, true},
                                            {~(forward | swing | backward), false}}) {
        std::string const bytes = FltWriter().add("Group", {{"flags", flags}}).lastRecord();
        EXPECT_EQ(FltFlipBookReader::isAnimated(viewOf(bytes)), isAnimated) << flags;
    }
    std::string const object = FltWriter().add("Object", {{"flags", forward}}).lastRecord();
    EXPECT_FALSE(FltFlipBookReader::isAnimated(viewOf(object, 4)));
}

TEST(FltFlipBookReader, playsForwardBackwardAndThereAndBack)
{
    EXPECT_EQ(framesOf(read(forward, 4)), (Frames{0, 1, 2, 3}));
    EXPECT_EQ(framesOf(read(backward, 4)), (Frames{3, 2, 1, 0}));
    EXPECT_EQ(framesOf(read(forward | backward, 4)), (Frames{0, 1, 2, 3}));
    EXPECT_EQ(framesOf(read(swing, 4)), (Frames{0, 1, 2, 3, 2, 1}));
    EXPECT_EQ(framesOf(read(swing | backward, 4)), (Frames{3, 2, 1, 0, 1, 2}));
    EXPECT_EQ(framesOf(read(swing, 2)), (Frames{0, 1}));
}

TEST(FltFlipBookReader, takesASingleFrameForNoFlipBook)
{
    EXPECT_TRUE(read(forward, 1).steps.empty());
    EXPECT_TRUE(read(forward, 0).steps.empty());
}

TEST(FltFlipBookReader, sharesTheLoopAmongTheFrames)
{
    EXPECT_EQ(timesOf(read(forward, 4, 0, 2)), (Times{0.5, 0.5, 0.5, 0.5}));
    EXPECT_EQ(timesOf(read(swing, 3, 0, 2)), (Times{0.5, 0.5, 0.5, 0.5}));
}

TEST(FltFlipBookReader, givesTheLastFrameItsOwnTime)
{
    EXPECT_EQ(timesOf(read(forward, 3, 0, 2, 1)), (Times{0.5, 0.5, 1}));
    EXPECT_EQ(timesOf(read(backward, 3, 0, 2, 1)), (Times{0.5, 0.5, 1}));
    EXPECT_EQ(timesOf(read(swing, 3, 0, 2.5, 1)), (Times{0.5, 0.5, 1, 0.5}));
    EXPECT_EQ(timesOf(read(forward, 2, 0, 2, 4)), (Times{1, 4})) << "longer than the loop";
    EXPECT_EQ(read(forward, 3, 0, 2, 1).seconds(), 2);
}

TEST(FltFlipBookReader, takesASecondForALoopWithoutATime)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    for (double const time : {0.0, -1.0, 1e30, none})
        EXPECT_EQ(timesOf(read(forward, 2, 0, time, time)), (Times{0.5, 0.5})) << time;
    std::string const bytes = FltWriter().add("Group", {{"flags", forward}}).lastRecord();
    ASSERT_EQ(bytes.size(), 32U);
    EXPECT_EQ(timesOf(*FltFlipBookReader::read(viewOf(bytes), 1570, 2)), (Times{0.5, 0.5}));
}

TEST(FltFlipBookReader, countsLoopsAndTakesNoneForWithoutEnd)
{
    EXPECT_EQ(read(forward, 2, 7).loops, 7U);
    EXPECT_EQ(read(forward, 2, 0).loops, 0U);
    EXPECT_EQ(read(forward, 2, -1).loops, 0U);
}

TEST(FltFlipBookReader, findsTheTimesAtTheSamePlaceInOldRevisions)
{
    FltWriter writer;
    std::string const bytes = addAnimatedGroup(writer, "g", forward, 3, 4, 0).lastRecord();
    FltVisualFlipBook const book = FltFlipBookReader::read(viewOf(bytes), 1420, 2).value();
    EXPECT_EQ(book.loops, 3U);
    EXPECT_EQ(timesOf(book), (Times{2, 2}));
}

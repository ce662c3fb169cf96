#include "model/FltLevels.h"

#include "model/FltModelRecordReader.h"
#include "records/FltOpcode.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <vector>

namespace
{

using Step = FltLevelStep;

/// The steps that the records after a header make, each node being its opcode.
struct Climbed {
    explicit Climbed(FltWriter const& flt, int most = 100) : bytes(flt.bytes()), levels(0, most)
    {
        FltModelRecordReader reader(bytes.data(), bytes.size(), false);
        FltRecordView record;
        reader.next(record);
        while (reader.next(record)) {
            steps.push_back(levels.take(record));
            if (steps.back() == Step::node)
                levels.setLast(static_cast<int>(record.opcode));
        }
    }

    std::string bytes;
    FltLevels<int> levels;
    std::vector<Step> steps;
};

} // namespace

TEST(FltLevels, belongToTheNodeBeforeThem)
{
    Climbed const climbed(FltWriter().push().add("Group").add("Comment").push().add("Object"));
    EXPECT_EQ(climbed.steps,
              (std::vector<Step>{Step::opened, Step::node, Step::ancillary, Step::opened, Step::node}));
    EXPECT_EQ(climbed.levels.getParent(), FltOpcode::group);
    EXPECT_EQ(climbed.levels.getLast(), FltOpcode::object);
    ASSERT_EQ(climbed.levels.getLevels().size(), 3U);
    EXPECT_EQ(climbed.levels.getLevels()[0].offset, 0U);
    EXPECT_EQ(climbed.levels.getLevels()[2].owner, FltOpcode::group);
    EXPECT_EQ(climbed.levels.getLevels()[2].offset, climbed.bytes.size() - 28 - 4)
        << "an Object has 28 bytes";
}

TEST(FltLevels, openNothingRightAfterAPush)
{
    Climbed const climbed(FltWriter().push().add("Comment").push().pop().push());
    EXPECT_EQ(climbed.steps, (std::vector<Step>{Step::opened, Step::ancillary, Step::openedNothing,
                                                Step::closed, Step::opened}));
}

TEST(FltLevels, areEndedByAPopOfEitherKind)
{
    Climbed const climbed(FltWriter()
                              .add("Face")
                              .add("PushSubface")
                              .add("PopSubface")
                              .add("PushSubface")
                              .pop()
                              .push()
                              .add("PopSubface")
                              .pop());
    EXPECT_EQ(climbed.steps,
              (std::vector<Step>{Step::node, Step::opened, Step::closed, Step::opened, Step::closedOther,
                                 Step::opened, Step::closedOther, Step::closedNothing}));
    EXPECT_EQ(climbed.levels.getLast(), 0) << "the root";
}

TEST(FltLevels, knowWhetherTheyAreOfSubfaces)
{
    EXPECT_TRUE(Climbed(FltWriter().add("Face").add("PushSubface")).levels.isSubface());
    EXPECT_FALSE(Climbed(FltWriter().add("Face").add("PushSubface").add("Face").push()).levels.isSubface());
    EXPECT_FALSE(Climbed(FltWriter().add("Face").add("PushSubface").add("PopSubface")).levels.isSubface());
}

TEST(FltLevels, leaveAloneWhatStandsInAnExtension)
{
    Climbed const climbed(FltWriter()
                              .add("PopExtension")
                              .add("PushExtension")
                              .add("PushExtension")
                              .add("PopExtension")
                              .add("Group")
                              .push()
                              .add("PopExtension")
                              .add("PushExtension"));
    EXPECT_EQ(climbed.steps,
              (std::vector<Step>{Step::closedNoExtension, Step::extension, Step::extension, Step::extension,
                                 Step::inExtension, Step::inExtension, Step::extension, Step::extension}));
    EXPECT_EQ(climbed.levels.getExtensions(), std::vector<std::size_t>{climbed.bytes.size() - 24});
    EXPECT_EQ(climbed.levels.getLevels().size(), 1U);
}

TEST(FltLevels, giveNobodyWhatFollowsAPop)
{
    Climbed const climbed(
        FltWriter().push().add("Group").pop().add("Comment").add("Comment").push().add("Comment"));
    EXPECT_EQ(climbed.steps, (std::vector<Step>{Step::opened, Step::node, Step::closed, Step::nowhere,
                                                Step::nowhere, Step::opened, Step::ancillary}));
}

TEST(FltLevels, areLeftOutWhereTheyAreTooDeep)
{
    Climbed const climbed(FltWriter().push().add("Group").push().push().add("Object").add("Comment").pop(),
                          2);
    EXPECT_EQ(climbed.steps,
              (std::vector<Step>{Step::opened, Step::node, Step::openedTooDeep, Step::openedTooDeep,
                                 Step::tooDeep, Step::tooDeep, Step::closed}));
    EXPECT_EQ(climbed.levels.getLevelsTooDeep().size(), 1U);
    EXPECT_EQ(climbed.levels.getLast(), FltOpcode::group);
}

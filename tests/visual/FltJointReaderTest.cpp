#include "visual/FltJointReader.h"

#include "support/CompleteDatabase.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Fields = FltWriter::Fields;

FltVisualJoint read(Fields const& fields)
{
    CompleteDatabase database;
    database.begin().add("DOF", fields);
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    FltVisualJoint const* const joint = root->children.at(0)->as<FltVisualJoint>();
    return joint != nullptr ? *joint : FltVisualJoint();
}

/// The frame at (1, 2, 3) with x to y, and y away from x.
Fields const frame = {
    {"XOriginOfDOFLocalCoordinateSystem", 1},          {"YOriginOfDOFLocalCoordinateSystem", 2},
    {"ZOriginOfDOFLocalCoordinateSystem", 3},          {"XPointOnXAxisOfDOFLocalCoordinateSystem", 1},
    {"YPointOnXAxisOfDOFLocalCoordinateSystem", 5},    {"ZPointOnXAxisOfDOFLocalCoordinateSystem", 3},
    {"XPointInXYPlaneOfDOFLocalCoordinateSystem", -4}, {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 7},
    {"ZPointInXYPlaneOfDOFLocalCoordinateSystem", 3}};

} // namespace

TEST(FltJointReader, readsEachRangeWithItsLimit)
{
    struct Case {
        char const* part;
        FltDegreeOfFreedom::Range const& (*rangeOf)(FltDegreeOfFreedom const&);
        long flag;
    };
    using Joint = FltDegreeOfFreedom;
    using Range = FltDegreeOfFreedom::Range;
    Case const cases[] = {
        {"X%Value", [](Joint const& joint) -> Range const& { return joint.translation[0]; }, 0x80000000L},
        {"Y%Value", [](Joint const& joint) -> Range const& { return joint.translation[1]; }, 0x40000000L},
        {"Z%Value", [](Joint const& joint) -> Range const& { return joint.translation[2]; }, 0x20000000L},
        {"X%Scale", [](Joint const& joint) -> Range const& { return joint.scale[0]; }, 0x02000000L},
        {"Y%Scale", [](Joint const& joint) -> Range const& { return joint.scale[1]; }, 0x01000000L},
        {"Z%Scale", [](Joint const& joint) -> Range const& { return joint.scale[2]; }, 0x00800000L},
    };
    for (Case const& each : cases) {
        std::string const part = each.part;
        auto const field = [&part](char const* which) {
            std::string name = part;
            return name.replace(part.find('%'), 1, which);
        };
        FltVisualJoint const joint =
            read({{field("Min"), -1}, {field("Max"), 2}, {field("Current"), 1.5}, {"flags", each.flag}});
        Range const& range = each.rangeOf(joint);
        EXPECT_EQ(range.minimum, -1) << part;
        EXPECT_EQ(range.maximum, 2) << part;
        EXPECT_EQ(range.current, 1.5) << part;
        EXPECT_TRUE(range.isLimited) << part;
        EXPECT_FALSE(each.rangeOf(read({{"flags", 0x7fffffffL & ~each.flag}})).isLimited) << part;
    }
}

TEST(FltJointReader, readsAnglesWithTheirLimits)
{
    FltVisualJoint const joint = read({{"minimumPitch", 1},
                                       {"maxPitch", 2},
                                       {"currentPitch", 1.5},
                                       {"incrementInPitch", 0.5},
                                       {"currentRoll", 3},
                                       {"currentYaw", 4},
                                       {"flags", 0x10000000}});
    EXPECT_EQ(joint.pitch.minimum, 1);
    EXPECT_EQ(joint.pitch.maximum, 2);
    EXPECT_EQ(joint.pitch.current, 1.5);
    EXPECT_EQ(joint.pitch.step, 0.5);
    EXPECT_EQ(joint.roll.current, 3);
    EXPECT_EQ(joint.yaw.current, 4);
    EXPECT_TRUE(joint.pitch.isLimited);
    EXPECT_FALSE(joint.roll.isLimited);
    EXPECT_TRUE(read({{"flags", 0x08000000}}).roll.isLimited);
    EXPECT_TRUE(read({{"flags", 0x04000000}}).yaw.isLimited);
}

TEST(FltJointReader, makesAFrameOfThreePoints)
{
    FltVisualJoint const joint = read(frame);
    ASSERT_TRUE(joint.frame.has_value());
    SbDPMatrix const expected(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1);
    EXPECT_TRUE(joint.frame->equals(expected, 1e-6));
}

TEST(FltJointReader, makesAFrameOfPointsThatAreNear)
{
    FltVisualJoint const joint = read({{"YPointOnXAxisOfDOFLocalCoordinateSystem", 0.5},
                                       {"XPointInXYPlaneOfDOFLocalCoordinateSystem", -0.5}});
    ASSERT_TRUE(joint.frame.has_value());
    SbDPMatrix const expected(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_TRUE(joint.frame->equals(expected, 1e-6));
}

TEST(FltJointReader, takesTheAxesOfTheNodeForPointsInOneLine)
{
    FltVisualJoint const joint = read({{"XOriginOfDOFLocalCoordinateSystem", 4}});
    ASSERT_TRUE(joint.frame.has_value());
    SbDPMatrix expected;
    expected.setTranslate(SbVec3d(4, 0, 0));
    EXPECT_TRUE(joint.frame->equals(expected, 1e-6));
}

TEST(FltJointReader, hasNoFrameWhereNobodySetOne)
{
    EXPECT_FALSE(read({}).frame.has_value());
    EXPECT_FALSE(read({{"ZOriginOfDOFLocalCoordinateSystem", -1e8}}).frame.has_value());
    EXPECT_TRUE(read({{"ZOriginOfDOFLocalCoordinateSystem", -9e7}}).frame.has_value());
}

TEST(FltJointReader, takes0ForCurrentValuesThatArentNumbers)
{
    FltVisualJoint const joint = read({{"ZCurrentValue", std::numeric_limits<double>::infinity()}});
    EXPECT_EQ(joint.translation[2].current, 0);
}

#include "gltf/FltGltfExtras.h"

#include <gtest/gtest.h>

TEST(FltGltfExtras, TellEachLineOfAComment)
{
    FltVisualNode node;
    node.comments = {"one\ntwo\n", "", "a\tb"};
    EXPECT_EQ(FltGltfExtras::of(node, {0, 0, 0}),
              GltfJson::parse(R"({"comments": [["one", "two", ""], [""], ["a b"]]})"));
}

TEST(FltGltfExtras, TellWhichChildrenEachMaskShows)
{
    FltVisualNode node;
    FltVisualSwitch& choice = node.become<FltVisualSwitch>();
    choice.wordsPerMask = 1;
    choice.masks = {0x80000001, 2};
    choice.currentMask = 1;
    node.children.resize(40);
    GltfJson const told = FltGltfExtras::of(node, {0, 0, 0})["switch"];
    EXPECT_EQ(told["masks"], GltfJson::parse("[[0, 31], [1]]"));
    EXPECT_EQ(told["children"], 40);
    EXPECT_EQ(told["current"], 1);
    choice.wordsPerMask = 2;
    EXPECT_EQ(FltGltfExtras::of(node, {0, 0, 0})["switch"]["masks"], GltfJson::parse("[[0, 31, 33]]"));
    node.children.resize(2);
    EXPECT_EQ(FltGltfExtras::of(node, {0, 0, 0})["switch"]["masks"], GltfJson::parse("[[0]]"));
    choice.masks = {~0U, ~0U};
    EXPECT_EQ(FltGltfExtras::of(node, {0, 0, 0})["switch"]["masks"], GltfJson::parse("[[0, 1]]"))
        << "more bits than children";
}

TEST(FltGltfExtras, TellPlacesAsTheyStandInTheNode)
{
    FltVisualNode levels, sign;
    FltVisualLevels& ranges = levels.become<FltVisualLevels>();
    ranges.distances = {1, 2};
    EXPECT_FALSE(FltGltfExtras::of(levels, {1, 2, 3})["levels"].contains("center"));
    EXPECT_FALSE(FltGltfExtras::of(levels, {1, 2, 3})["levels"].contains("nextStays"));
    ranges.center = SbVec3f(11, 12, 13);
    ranges.nextStays = {true, false};
    EXPECT_EQ(FltGltfExtras::of(levels, {1, 2, 3})["levels"],
              GltfJson::parse(
                  R"({"distances": [1.0, 2.0], "center": [10.0, 10.0, 10.0], "nextStays": [true, false]})"));
    FltVisualText& text = sign.become<FltVisualText>();
    text.place = SbVec3d(11, 12, 13);
    text.color = 0x102030ff;
    GltfJson told = FltGltfExtras::of(sign, {1, 2, 3})["text"];
    EXPECT_EQ(told["place"], GltfJson({10.0, 10.0, 10.0}));
    EXPECT_EQ(told["color"], GltfJson({0x10, 0x20, 0x30}));
    EXPECT_EQ(told["alignment"], "left");
    text.alignment = FltVisualText::Alignment::right;
    EXPECT_EQ(FltGltfExtras::of(sign, {0, 0, 0})["text"]["alignment"], "right");
    text.alignment = FltVisualText::Alignment::center;
    EXPECT_EQ(FltGltfExtras::of(sign, {0, 0, 0})["text"]["alignment"], "center");
}

TEST(FltGltfExtras, TellAllRangesOfAJoint)
{
    FltVisualJoint joint;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        joint.translation[axis].current = 1 + static_cast<double>(axis);
        joint.scale[axis].current = 4 + static_cast<double>(axis);
    }
    joint.pitch.current = 7;
    joint.roll.current = 8;
    joint.yaw.current = 9;
    GltfJson const told = FltGltfExtras::of(joint);
    std::vector<double> currents;
    for (char const* const kind : {"translation", "scale"})
        for (char const* const axis : {"x", "y", "z"})
            currents.push_back(told[kind][axis]["current"].get<double>());
    for (char const* const kind : {"pitch", "roll", "yaw"})
        currents.push_back(told[kind]["current"].get<double>());
    EXPECT_EQ(currents, (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(FltGltfExtras, TellHowALevelWasMeantAndHowAFaceTurns)
{
    FltVisualNode level, turning;
    level.become<FltVisualLevel>().significantSize = 12.5;
    EXPECT_EQ(FltGltfExtras::of(level, {0, 0, 0}), GltfJson::parse(R"({"significantSize": 12.5})"));
    turning.become<FltVisualTurning>();
    EXPECT_EQ(FltGltfExtras::of(turning, {0, 0, 0})["turning"], "axis");
    turning.become<FltVisualTurning>().isAboutPoint = true;
    EXPECT_EQ(FltGltfExtras::of(turning, {0, 0, 0})["turning"], "point");
}

#include "inspect/FltCheckVisibility.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "writer/FltWriter.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace Number = FltFindingNumber;

namespace
{

using Found = FamilyFindings<FltCheckVisibility>;

std::vector<int> const nothing;

FltWriter levelOf(double near, double far)
{
    FltWriter flt;
    flt.push().add("LOD", {{"switchOutDistance", near}, {"switchInDistance", far}});
    return flt.pop();
}

/// A level of detail in another one.
FltWriter levelInLevel(double near, double far, double innerNear, double innerFar)
{
    FltWriter flt;
    flt.push().add("LOD", {{"switchOutDistance", near}, {"switchInDistance", far}}).push();
    flt.add("LOD", {{"switchOutDistance", innerNear}, {"switchInDistance", innerFar}}).pop();
    return flt.pop();
}

FltWriter switchOf(int children, int current, int wordsPerMask, std::vector<double> const& words)
{
    FltWriter flt;
    flt.push().add("Switch", {{"indexOfCurrentMask", current},
                              {"numberOfMasks", static_cast<int>(words.size()) / wordsPerMask},
                              {"numberOf32BitWordsPerMask", wordsPerMask},
                              {"masks", words}});
    flt.push();
    for (int i = 0; i < children; ++i)
        flt.add("Group");
    return flt.pop().pop();
}

FltWriter withJoint(FltWriter::Fields const& fields)
{
    FltWriter flt;
    return flt.push().add("DOF", fields).pop();
}

} // namespace

TEST(FltCheckVisibility, findsRangesInWhichNothingIsSeen)
{
    std::vector<int> const empty = {Number::emptyRange};
    EXPECT_EQ(Found::numbersIn(levelOf(10, 20)), nothing);
    EXPECT_EQ(Found::numbersIn(levelOf(0, 0)), nothing) << "always seen";
    EXPECT_EQ(Found::numbersIn(levelOf(20, 20)), empty);
    EXPECT_EQ(Found::numbersIn(levelOf(20, 10)), empty);
    EXPECT_EQ(Found::numbersIn(levelOf(20, 0)), empty);
    EXPECT_EQ(Found::in(levelOf(20, 10)).at(0).text, "from 20 to 10");
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Found::numbersIn(levelOf(0, infinity)), std::vector<int>{Number::unusableRange});
    EXPECT_EQ(Found::numbersIn(levelOf(-infinity, 10)), std::vector<int>{Number::unusableRange});
}

TEST(FltCheckVisibility, findsLevelsWithoutAPlace)
{
    for (char const* const field : {"XcenterCoordinate", "YcenterCoordinate", "ZcenterCoordinate"}) {
        FltWriter flt;
        flt.push().add("LOD", {{"switchInDistance", 10}, {field, std::numeric_limits<double>::quiet_NaN()}});
        EXPECT_EQ(Found::numbersIn(flt.pop()), std::vector<int>{Number::unusableRange}) << field;
    }
}

TEST(FltCheckVisibility, findsLevelsThatThoseAroundThemHide)
{
    std::vector<int> const hidden = {Number::hiddenRange};
    EXPECT_EQ(Found::numbersIn(levelInLevel(0, 100, 50, 200)), nothing);
    EXPECT_EQ(Found::numbersIn(levelInLevel(0, 100, 100, 200)), hidden);
    EXPECT_EQ(Found::numbersIn(levelInLevel(100, 200, 0, 100)), hidden);
    EXPECT_EQ(Found::numbersIn(levelInLevel(100, 200, 0, 101)), nothing);
    EXPECT_EQ(Found::numbersIn(levelInLevel(100, 200, 0, 0)), nothing);
    EXPECT_EQ(Found::numbersIn(levelInLevel(0, 0, 100, 200)), nothing);
    FltWriter flt;
    flt.push().add("LOD", {{"switchInDistance", 10}}).push();
    flt.add("LOD", {{"switchOutDistance", 20}, {"switchInDistance", 30}}).push();
    flt.add("LOD", {{"switchOutDistance", 20}, {"switchInDistance", 30}}).pop().pop();
    EXPECT_EQ(Found::numbersIn(flt.pop()), hidden) << "what stands in it is told with it";
}

TEST(FltCheckVisibility, findsCurrentMasksThatAreNone)
{
    std::vector<int> const none = {Number::noSuchMask};
    EXPECT_EQ(Found::numbersIn(switchOf(1, 0, 1, {1, 1})), nothing);
    EXPECT_EQ(Found::numbersIn(switchOf(1, 1, 1, {1, 1})), nothing);
    EXPECT_EQ(Found::numbersIn(switchOf(1, 2, 1, {1, 1})), none);
    EXPECT_EQ(Found::numbersIn(switchOf(1, -1, 1, {1, 1})), none);
    EXPECT_EQ(Found::in(switchOf(1, 2, 1, {1, 1})).at(0).text, "mask 2 of 2");
}

TEST(FltCheckVisibility, findsChildrenThatNoMaskShows)
{
    std::vector<int> const never = {Number::neverShownChild};
    EXPECT_EQ(Found::numbersIn(switchOf(3, 0, 1, {1, 6})), nothing) << "any mask will do";
    EXPECT_EQ(Found::numbersIn(switchOf(3, 0, 1, {1, 2})), never);
    EXPECT_EQ(Found::in(switchOf(3, 0, 1, {1, 2})).at(0).text, "child 2");
    double const all = 0xffffffff;
    EXPECT_EQ(Found::numbersIn(switchOf(33, 0, 2, {all, 0, 0, 1})), nothing)
        << "it stands in the second word";
    EXPECT_EQ(Found::in(switchOf(33, 0, 2, {all, 0, 1, 0})).at(0).text, "child 32");
    EXPECT_EQ(Found::in(switchOf(33, 0, 1, {all})).at(0).text, "child 32");
}

TEST(FltCheckVisibility, tellsOfASwitchWithoutMasksOnceAndNotOfItsChildren)
{
    EXPECT_EQ(Found::numbersIn(switchOf(3, 0, 1, {})), std::vector<int>{Number::noSuchMask});
}

/// Which of them stands where isn't known.
TEST(FltCheckVisibility, saysNothingOfTheChildrenOfASwitchWithFaces)
{
    FltWriter flt;
    flt.push().add("Switch", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {0}}});
    flt.push().add("Face").add("Group").pop();
    EXPECT_EQ(Found::numbersIn(flt.pop()), nothing);
}

TEST(FltCheckVisibility, findsLimitsThatAValueIsNotWithin)
{
    std::vector<int> const impossible = {Number::impossibleLimits};
    struct Limited {
        char const* least;
        char const* most;
        char const* current;
        unsigned bit;
        char const* name;
    };
    for (Limited const& one : {Limited{"XMinValue", "XMaxValue", "XCurrentValue", 31, "x"},
                               {"YMinValue", "YMaxValue", "YCurrentValue", 30, "y"},
                               {"ZMinValue", "ZMaxValue", "ZCurrentValue", 29, "z"},
                               {"minimumPitch", "maxPitch", "currentPitch", 28, "pitch"},
                               {"minimumRoll", "maxRoll", "currentRoll", 27, "roll"},
                               {"minimumYaw", "maxYaw", "currentYaw", 26, "yaw"},
                               {"XMinScale", "XMaxScale", "XCurrentScale", 25, "x scale"},
                               {"YMinScale", "YMaxScale", "YCurrentScale", 24, "y scale"},
                               {"ZMinScale", "ZMaxScale", "ZCurrentScale", 23, "z scale"}}) {
        auto const joint = [&](double least, double most, double current, bool isLimited = true) {
            return withJoint({{one.least, least},
                              {one.most, most},
                              {one.current, current},
                              {"flags", isLimited ? static_cast<double>(1U << one.bit) : 0}});
        };
        EXPECT_EQ(Found::numbersIn(joint(-10, 10, 10)), nothing) << one.name;
        EXPECT_EQ(Found::numbersIn(joint(-10, 10, -10)), nothing) << one.name;
        EXPECT_EQ(Found::numbersIn(joint(5, 5, 5)), nothing) << one.name;
        EXPECT_EQ(Found::numbersIn(joint(-10, 10, -11)), impossible) << one.name;
        EXPECT_EQ(Found::numbersIn(joint(10, -10, 0)), impossible) << one.name;
        EXPECT_EQ(Found::numbersIn(joint(-10, 10, std::numeric_limits<double>::quiet_NaN())), impossible)
            << one.name;
        EXPECT_EQ(Found::in(joint(-10, 10, 11)).at(0).text,
                  std::string(one.name) + " is 11, between -10 and 10");
        EXPECT_EQ(Found::numbersIn(joint(-10, 10, 11, false)), nothing) << one.name;
    }
}

TEST(FltCheckVisibility, findsMatricesThatFlatten)
{
    auto const by = [](std::vector<double> const& matrix) {
        FltWriter flt;
        return Found::numbersIn(flt.push().add("Group").add("Matrix", {{"matrix", matrix}}).pop());
    };
    auto const with = [&](double x) { return by({x, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}); };
    EXPECT_EQ(with(1), nothing);
    EXPECT_EQ(with(-0.001), nothing);
    EXPECT_EQ(with(0), std::vector<int>{Number::flatMatrix});
    EXPECT_EQ(with(std::numeric_limits<double>::quiet_NaN()), std::vector<int>{Number::flatMatrix});
    double const r = std::sqrt(0.5); // turned by 45 degrees about each axis
    EXPECT_EQ(by({1, 0, 0, 0, 0, r, r, 0, 0, -r, r, 0, 0, 0, 0, 1}), nothing);
    EXPECT_EQ(by({r, 0, -r, 0, 0, 1, 0, 0, r, 0, r, 0, 0, 0, 0, 1}), nothing);
    EXPECT_EQ(by({r, r, 0, 0, -r, r, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}), nothing);
    EXPECT_EQ(by({1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}), std::vector<int>{Number::flatMatrix});
}

#include "inspect/FltCheckPlaces.h"

#include "inspect/FltCheckFaces.h"
#include "messages/FltFindingNumber.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace Number = FltFindingNumber;

namespace
{

using Fields = FltWriter::Fields;

std::vector<FltFinding> findingsIn(FltWriter const& flt)
{
    ScratchFolder const folder;
    flt.save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltFindingList ignored(inventory);
    FltFindingList findings(inventory);
    FltCheckedModel checked(inventory);
    FltCheckFaces faces(checked, ignored);
    faces.check();
    FltCheckPlaces(checked, faces.boxes(), findings).check();
    return findings.sorted();
}

std::vector<int> numbersIn(FltWriter const& flt)
{
    std::vector<int> numbers;
    for (FltFinding const& finding : findingsIn(flt))
        numbers.push_back(finding.kind->number);
    return numbers;
}

struct Range {
    double near;
    double far;
    double x = 0; ///< Where its square lies.
    double size = 1;
    Fields more = {};
    double height = 0;
};

/// Levels of detail beside each other, each with a square.
FltWriter withLevels(std::vector<Range> const& ranges)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<std::vector<double>> squares;
    for (Range const& range : ranges) {
        squares.emplace_back();
        for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            squares.back().push_back(
                flt.vertex("VertexColor", range.x + x * range.size, y * range.size, range.height));
    }
    flt.push();
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        Fields fields = ranges[i].more;
        fields.insert(fields.end(), {{"idASCII", "l" + std::to_string(i)},
                                     {"switchOutDistance", ranges[i].near},
                                     {"switchInDistance", ranges[i].far}});
        flt.add("LOD", fields).push().add("Object").push().face(squares[i]).pop().pop();
    }
    return flt.pop();
}

std::vector<int> const nothing;
std::vector<int> const gap = {Number::gapInLevels};
std::vector<int> const overlap = {Number::overlappingLevels};

/// A group with a box, and a square in it that lies ten units on.
FltWriter withBox(std::vector<double> const& low, std::vector<double> const& high,
                  std::string_view record = "BoundingBox")
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0, 0}, {100, 0}, {100, 100}, {0, 100}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    flt.push().add("Group").add("Translate", {{"deltaX", 10}});
    flt.add(record, {{"XcoordinateLowestCorner", low[0]},
                     {"YcoordinateLowestCorner", low[1]},
                     {"ZcoordinateLowestCorner", low[2]},
                     {"XcoordinateHighestCorner", high[0]},
                     {"YcoordinateHighestCorner", high[1]},
                     {"ZcoordinateHighestCorner", high[2]}});
    flt.push().add("Object").push().face(corners).pop().pop();
    return flt.pop();
}

} // namespace

TEST(FltCheckPlaces, findsGapsAndOverlapsOfLevelsInOnePlace)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {100, 500}, {500, 900}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{120, 500}, {0, 100}})), gap);
    EXPECT_EQ(numbersIn(withLevels({{0, 150}, {100, 500}})), overlap);
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 50, 1, {}, 70}, {120, 500, 50, 1, {}, 70}})), gap) << "far off";
    std::vector<FltFinding> const findings = findingsIn(withLevels({{0, 100}, {120, 500}}));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].text, "nothing from 100, where \"l0\" ends, to 120");
    EXPECT_EQ(findings[0].node, "l1");
}

TEST(FltCheckPlaces, takesLevelsInOtherPlacesAndOfOtherSizesAsOtherThings)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {120, 500, 5}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1}, {100, 500, 0, 10}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {0, 100, 5}, {120, 500}, {100, 500, 5}})), gap);
}

TEST(FltCheckPlaces, takesFlatLevelsForOneThingIfLittleIsBetweenThem)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 0, 10}, {120, 500, 0, 10, {}, 0.04}})), gap);
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 0, 10}, {120, 500, 0, 10, {}, 0.06}})), nothing);
}

TEST(FltCheckPlaces, takesLevelsThatAddDetailAsMeant)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {0, 100}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {50, 100}, {120, 500}})), nothing); // the first covers the gap
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, {{"flags", 1 << 30}}}, {100, 500}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, {{"transitionRange", 50}}}, {100, 500}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, {{"transitionRange", 40}}}, {100, 500}})), overlap);
}

TEST(FltCheckPlaces, takesDistancesThatDifferByAMillionthOfThemForOne)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {1000.0009, 2000}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {1000.0015, 2000}})), gap);
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {999.9991, 2000}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {999.9985, 2000}})), overlap);
}

TEST(FltCheckPlaces, takesALevelThatAddsToTheOtherAsMeantOnEitherSide)
{
    FltWriter::Fields const additive = {{"flags", 1 << 30}};
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, additive}, {100, 500}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150}, {100, 500, 0, 1, additive}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150}, {100, 500, 0, 1, {{"transitionRange", 50}}}})), nothing);
    for (int const bit : {0, 29})
        EXPECT_EQ(numbersIn(withLevels({{0, 150}, {100, 500, 0, 1, {{"flags", 1 << bit}}}})), overlap) << bit;
}

TEST(FltCheckPlaces, takesLevelsForOneThingOfWhichHalfIsCommon)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 0, 10}, {120, 500, 3.2, 10}})), gap);
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 0, 10}, {120, 500, 3.6, 10}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 3.2, 10}, {120, 500, 0, 10}})), gap);
    EXPECT_EQ(numbersIn(withLevels({{0, 100, 3.6, 10}, {120, 500, 0, 10}})), nothing);
}

TEST(FltCheckPlaces, comparesALevelWithTheEighthAfterItAndNoFurtherOne)
{
    auto const with = [](int between) {
        std::vector<Range> ranges = {{0, 100}};
        for (int i = 0; i < between; ++i)
            ranges.push_back({100. + i, 500, 10. + 5 * i});
        ranges.push_back({120, 500});
        return numbersIn(withLevels(ranges));
    };
    EXPECT_EQ(with(7), gap);
    EXPECT_EQ(with(8), nothing);
}

TEST(FltCheckPlaces, comparesEachLevelWithTheNextOne)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {100, 200}, {220, 500}})), gap);
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {100, 200}, {150, 500}})), overlap);
}

TEST(FltCheckPlaces, takesLevelsThatAreNeverSeenForNone)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {200, 50}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {-20, 50}})), nothing);
}

TEST(FltCheckPlaces, takesOldLevelsForOnesWithoutATransition)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    flt.push();
    for (auto const& [near, far] : {std::pair{0, 101}, {100, 500}}) {
        flt.add("OLDLOD", {{"switchOutDistance", near}, {"switchInDistance", far}});
        flt.push().add("Object").push().face(corners).pop().pop();
    }
    EXPECT_EQ(numbersIn(flt.pop()), overlap);
}

TEST(FltCheckPlaces, judgesNoBoxOfADamagedFileOrAroundWhatMoves)
{
    auto const with = [](std::string_view below, bool isDamaged) {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            corners.push_back(flt.vertex("VertexColor", x, y, 0));
        flt.push().add("Group").add("BoundingBox", {{"XcoordinateHighestCorner", 50}}).push();
        flt.add(below).push().face(corners).pop().pop().pop();
        if (isDamaged)
            flt.addRaw(2).claimLength(0);
        return numbersIn(flt);
    };
    EXPECT_EQ(with("Object", false), std::vector{int(Number::wrongBox)});
    EXPECT_EQ(with("Object", true), nothing);
    EXPECT_EQ(with("DOF", false), nothing);
}

TEST(FltCheckPlaces, takesALevelWithinAnotherAsMeantInAnyOrder)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 100}, {0, 1000}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {100, 1000}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{100, 1000}, {0, 1000}})), nothing);
}

TEST(FltCheckPlaces, takesBoxesOfWholeNumbersAsRounded)
{
    auto const withOldBox = [](double highest, double lowest = 0) {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (auto const& [x, y] : {std::pair{0, 0}, {10, 0}, {10, 10}, {0, 10}})
            corners.push_back(flt.vertex("VertexColor", x, y, 0));
        flt.push().add("Object").add("OldBoundingBox", {{"XcoordinateLowestCorner", lowest},
                                                        {"XcoordinateHighestCorner", highest},
                                                        {"YcoordinateHighestCorner", 10}});
        return numbersIn(flt.push().face(corners).pop().pop());
    };
    EXPECT_EQ(withOldBox(11), nothing);
    EXPECT_EQ(withOldBox(9), nothing);
    EXPECT_EQ(withOldBox(10, -1), nothing);
    EXPECT_EQ(withOldBox(10, -2), std::vector{int(Number::wrongBox)});
    EXPECT_EQ(withOldBox(12), std::vector{int(Number::wrongBox)});
    EXPECT_EQ(withOldBox(8), std::vector{int(Number::wrongBox)});
}

TEST(FltCheckPlaces, tellsHowManyCopiesStandInOnePlace)
{
    auto const with = [](int copies) {
        FltWriter flt;
        return findingsIn(flt.push().add("Group").add("Replicate", {{"numberOfReplications", copies}}).pop());
    };
    EXPECT_TRUE(with(0).empty());
    EXPECT_EQ(with(1).at(0).text, "1 copy");
    EXPECT_EQ(with(2).at(0).text, "2 copies");
    EXPECT_EQ(with(2)[0].kind->number, Number::replicationInPlace);
}

TEST(FltCheckPlaces, takesABoxBeforeAndAfterTheMatricesOfItsNode)
{
    EXPECT_EQ(numbersIn(withBox({0, 0, 0}, {100, 100, 0})), nothing);
    EXPECT_EQ(numbersIn(withBox({10, 0, 0}, {110, 100, 0})), nothing);
    EXPECT_EQ(numbersIn(withBox({0, 0, 0}, {101, 100, 0})), nothing); // a hundredth of the size
    for (std::vector<double> const& high :
         {std::vector<double>{105, 100, 0}, {95, 100, 0}, {100, 105, 0}, {100, 100, 5}})
        EXPECT_EQ(numbersIn(withBox({0, 0, 0}, high)), std::vector{int(Number::wrongBox)});
    for (std::vector<double> const& low : {std::vector<double>{-5, 0, 0}, {0, -5, 0}, {0, 0, -5}})
        EXPECT_EQ(numbersIn(withBox(low, {100, 100, 0})), std::vector{int(Number::wrongBox)});
    EXPECT_EQ(numbersIn(withBox({0, 0, 0}, {101, 101, 1}, "OldBoundingBox")), nothing);
    EXPECT_EQ(numbersIn(withBox({0, 0, 0}, {105, 100, 0}, "OldBoundingBox")),
              std::vector{int(Number::wrongBox)});
}

TEST(FltCheckPlaces, takesTwoMirrorsInOneNodeAsNone)
{
    std::vector<double> const mirror = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    FltWriter flt;
    flt.push().add("Group").add("Matrix", {{"matrix", mirror}}).add("Matrix", {{"matrix", mirror}});
    EXPECT_EQ(numbersIn(flt.pop()), nothing);
    FltWriter steps;
    steps.push().add("Group").add("ScaleNonUniform",
                                  {{"XScaleFactor", 1}, {"YScaleFactor", -1}, {"ZScaleFactor", 1}});
    EXPECT_EQ(numbersIn(steps.pop()), std::vector{int(Number::mirroringMatrix)});
}

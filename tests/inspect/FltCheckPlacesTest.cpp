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
            squares.back().push_back(flt.vertex("VertexColor", range.x + x * range.size, y * range.size, 0));
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

TEST(FltCheckPlaces, takesLevelsThatAddDetailAsMeant)
{
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {0, 100}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 1000}, {50, 100}, {120, 500}})), nothing); // the first covers the gap
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, {{"flags", 1 << 30}}}, {100, 500}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, {{"transitionRange", 50}}}, {100, 500}})), nothing);
    EXPECT_EQ(numbersIn(withLevels({{0, 150, 0, 1, {{"transitionRange", 40}}}, {100, 500}})), overlap);
}

TEST(FltCheckPlaces, takesABoxBeforeAndAfterTheMatricesOfItsNode)
{
    EXPECT_EQ(numbersIn(withBox({0, 0, 0}, {100, 100, 0})), nothing);
    EXPECT_EQ(numbersIn(withBox({10, 0, 0}, {110, 100, 0})), nothing);
    EXPECT_EQ(numbersIn(withBox({0, 0, 0}, {101, 100, 0})), nothing); // a hundredth of the size
    for (std::vector<double> const& high : {std::vector<double>{105, 100, 0}, {95, 100, 0}, {100, 100, 5}})
        EXPECT_EQ(numbersIn(withBox({0, 0, 0}, high)), std::vector{int(Number::wrongBox)});
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

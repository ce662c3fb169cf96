#include "inspect/FltCheckFaces.h"

#include "messages/FltFindingNumber.h"
#include "support/ScratchFolder.h"
#include "writer/FltMeshRecords.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <utility>

namespace Number = FltFindingNumber;

namespace
{

using Fields = FltWriter::Fields;
using Mesh = FltMeshRecords;

std::vector<FltFinding> findingsIn(FltWriter const& flt)
{
    ScratchFolder const folder;
    flt.save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltFindingList findings(inventory);
    FltCheckedModel checked(inventory);
    FltCheckFaces(checked, findings).check();
    return findings.sorted();
}

/// The numbers of what is found, each as often as it is counted.
std::vector<int> numbersIn(FltWriter const& flt)
{
    std::vector<int> numbers;
    for (FltFinding const& finding : findingsIn(flt))
        numbers.insert(numbers.end(), finding.count, finding.kind->number);
    return numbers;
}

/// An object with one face.
FltWriter withFace(std::vector<std::vector<double>> const& places, Fields const& face = {},
                   Fields const& vertex = {}, Fields const& object = {})
{
    FltWriter flt;
    flt.add("ColorPalette").add("Material", {{"index", 1}, {"alpha", 0}}).vertexPalette();
    std::vector<double> corners;
    for (std::vector<double> const& place : places)
        corners.push_back(flt.vertex("VertexColorNormal", place[0], place[1], place[2], vertex));
    flt.push().add("Object", object).push().face(corners, face).pop();
    return flt.pop();
}

std::vector<std::vector<double>> const square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
std::vector<std::vector<double>> const line = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};

/// Begins a database with vertices. @return what faces refer to them by
std::vector<double> addVertices(FltWriter& flt, std::vector<std::vector<double>> const& places)
{
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (std::vector<double> const& place : places)
        corners.push_back(flt.vertex("VertexColor", place[0], place[1], place[2]));
    return corners;
}

Fields normal(double x, double y, double z)
{
    return {{"vertexNormal", {x, y, z}}};
}

/// A mesh, unlit, of one primitive.
FltWriter withMesh(int type, std::vector<std::vector<double>> const& places, std::vector<int> const& indices)
{
    FltWriter flt;
    flt.push().add("Object").push().addRaw(Mesh::meshOpcode, Mesh::mesh());
    flt.addRaw(Mesh::poolOpcode, Mesh::pool(places)).push();
    return flt.addRaw(Mesh::primitiveOpcode, Mesh::primitive(type, 1, indices)).pop().pop().pop();
}

/// A face of old vertices, at some height.
void addOldFace(FltWriter& flt, int height)
{
    flt.add("Face", {{"texturePatternIndex", -1}, {"materialIndex", -1}, {"flags", 1 << 30}}).push();
    for (std::vector<double> const& place : square)
        flt.add("OldVertex", {{"Xcoordinate", place[0]}, {"Ycoordinate", place[1]}, {"Zcoordinate", height}});
    flt.pop();
}

} // namespace

TEST(FltCheckFaces, findsNoAreaOnlyWhereAnAreaIsToBeDrawn)
{
    EXPECT_EQ(numbersIn(withFace(line)), std::vector{int(Number::noArea)});
    EXPECT_EQ(numbersIn(withFace(line, {{"drawType", 2}})), std::vector<int>{}); // an outline
    EXPECT_EQ(numbersIn(withFace({{0, 0, 0}, {1, 0, 0}})), std::vector<int>{});
    std::vector<std::vector<double>> const bowTie = {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_EQ(numbersIn(withFace(bowTie)), std::vector{int(Number::concaveFace)});
}

TEST(FltCheckFaces, judgesNormalsOfLitFacesAlone)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(numbersIn(withFace(square, {}, normal(0, 0, 0))), std::vector<int>{});
    EXPECT_EQ(numbersIn(withFace(square, {}, normal(0, 0, -1))), std::vector<int>{});
    for (int const lightMode : {2, 3}) {
        Fields const lit = {{"lightMode", lightMode}};
        Fields const flatShaded = {{"flags", 0x08000000}};
        EXPECT_EQ(numbersIn(withFace(square, lit, normal(0, 0, 0), flatShaded)), std::vector<int>{});
        EXPECT_EQ(numbersIn(withFace(square, lit, normal(0, 0, 0))),
                  std::vector(4, int(Number::unusableNormal)));
        EXPECT_EQ(numbersIn(withFace(square, lit, normal(0, nan, 1))),
                  std::vector(4, int(Number::unusableNormal)));
        EXPECT_EQ(numbersIn(withFace(square, lit, normal(0, 0, 0.5))),
                  std::vector(4, int(Number::unevenNormal)));
        EXPECT_EQ(numbersIn(withFace(square, lit, normal(0, 0, 1))), std::vector<int>{});
        EXPECT_EQ(numbersIn(withFace(square, lit, normal(0, 0, -1))),
                  std::vector{int(Number::opposedNormals)});
    }
}

TEST(FltCheckFaces, judgesANormalOnceHoweverManyFacesHaveIt)
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (std::vector<double> const& place : square)
        corners.push_back(flt.vertex("VertexColorNormal", place[0], place[1], place[2], normal(0, 0, 3)));
    flt.push().add("Object").push();
    flt.face({corners[0], corners[1], corners[2]}, {{"lightMode", 2}});
    flt.face({corners[0], corners[2], corners[3]}, {{"lightMode", 2}});
    std::vector<FltFinding> const findings = findingsIn(flt.pop().pop());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].count, 4U);
    EXPECT_EQ(findings[0].text, "(0, 0, 3) is 3 long");
}

/// Upright normals on upright faces are meant so, and a face of two sides turns to its normals.
TEST(FltCheckFaces, tellsOfOpposedNormalsOnlyWhereOneSideIsSeen)
{
    EXPECT_EQ(numbersIn(withFace(square, {{"lightMode", 2}, {"drawType", 1}}, normal(0, 0, -1))),
              std::vector<int>{});
    EXPECT_EQ(numbersIn(withFace(square, {{"lightMode", 2}}, normal(0, 1, 0))), std::vector<int>{});
    EXPECT_EQ(numbersIn(withFace(square, {{"lightMode", 2}}, normal(0, 0.9995, -0.03))), std::vector<int>{});
    EXPECT_EQ(numbersIn(withFace(square, {{"lightMode", 2}}, normal(0, 0.9975, -0.07))),
              std::vector{int(Number::opposedNormals)});
    EXPECT_EQ(numbersIn(withFace(square, {{"lightMode", 2}}, normal(0, 0.8, -0.6))),
              std::vector{int(Number::opposedNormals)});
}

TEST(FltCheckFaces, tellsOfOpposedNormalsWhereverAFaceLooks)
{
    for (int axis = 0; axis < 3; ++axis) {
        std::vector<std::vector<double>> places;
        for (auto const& [x, y] : {std::pair{0., 0.}, {1., 0.}, {1., 1.}, {0., 1.}}) {
            std::vector<double> place(3);
            place[static_cast<std::size_t>(axis + 1) % 3] = x;
            place[static_cast<std::size_t>(axis + 2) % 3] = y;
            places.push_back(place);
        }
        auto const along = [axis](double part) {
            return normal(axis == 0 ? part : 0, axis == 1 ? part : 0, axis == 2 ? part : 0);
        };
        EXPECT_EQ(numbersIn(withFace(places, {{"lightMode", 2}}, along(1))), std::vector<int>{}) << axis;
        EXPECT_EQ(numbersIn(withFace(places, {{"lightMode", 2}}, along(-1))),
                  std::vector{int(Number::opposedNormals)})
            << axis;
    }
}

TEST(FltCheckFaces, takesNormalsUpToATenthLongerOrShorterThanOneAsMeant)
{
    auto const with = [](double length) {
        return numbersIn(withFace(square, {{"lightMode", 2}}, normal(0, 0, length)));
    };
    std::vector<int> const uneven(4, int(Number::unevenNormal));
    for (double const length : {static_cast<double>(0.9F), 0.91, 1., 1.09, static_cast<double>(1.1F)})
        EXPECT_EQ(with(length), std::vector<int>{}) << length;
    for (double const length : {0.89, 1.11})
        EXPECT_EQ(with(length), uneven) << length;
}

TEST(FltCheckFaces, tellsLengthsOfNormalsToThreeDigits)
{
    EXPECT_EQ(findingsIn(withFace(square, {{"lightMode", 2}}, normal(0, 0, 1.23456))).at(0).text,
              "(0, 0, 1.23) is 1.23 long");
    EXPECT_EQ(findingsIn(withFace(square, {{"lightMode", 2}}, normal(1, 2, 3))).at(0).text,
              "(1, 2, 3) is 3.74 long");
}

/// Of a corner without a usable normal nobody knows where it is to look.
TEST(FltCheckFaces, tellsOfOpposedNormalsWhereAllCornersHaveOne)
{
    auto const with = [](char const* form, double length) {
        FltWriter flt;
        flt.add("ColorPalette").vertexPalette();
        std::vector<double> corners;
        for (std::vector<double> const& place : square)
            corners.push_back(
                corners.empty()
                    ? flt.vertex(form, place[0], place[1], place[2],
                                 form == std::string("VertexColor") ? Fields{} : normal(0, 0, length))
                    : flt.vertex("VertexColorNormal", place[0], place[1], place[2], normal(0, 0, -1)));
        flt.push().add("Object").push().face(corners, {{"lightMode", 2}}).pop();
        return numbersIn(flt.pop());
    };
    EXPECT_EQ(with("VertexColorNormal", -1), std::vector{int(Number::opposedNormals)});
    EXPECT_EQ(with("VertexColor", 0), std::vector<int>{});
    EXPECT_EQ(with("VertexColorNormal", 50), (std::vector<int>{Number::unevenNormal, Number::opposedNormals}))
        << "a long one counts no more than the others";
    EXPECT_EQ(with("VertexColorNormal", 0), std::vector{int(Number::unusableNormal)});
}

TEST(FltCheckFaces, takesAllTransparenciesTogether)
{
    std::vector<int> const unseen = {Number::transparentFace};
    EXPECT_EQ(numbersIn(withFace(square, {{"transparency", 65535}})), unseen);
    EXPECT_EQ(numbersIn(withFace(square, {}, {}, {{"transparency", 65535}})), unseen);
    EXPECT_EQ(numbersIn(withFace(square, {{"materialIndex", 1}, {"lightMode", 2}}, normal(0, 0, 1))), unseen);
    EXPECT_EQ(numbersIn(withFace(square, {{"materialIndex", 1}})), std::vector<int>{}); // unlit: none counts
    EXPECT_EQ(numbersIn(withFace(square, {{"transparency", 65000}}, {}, {{"transparency", 65000}})), unseen);
    EXPECT_EQ(numbersIn(withFace(square, {{"transparency", 60000}}, {}, {{"transparency", 60000}})),
              std::vector<int>{});
}

TEST(FltCheckFaces, saysNothingOfTheSightOfHiddenFaces)
{
    EXPECT_EQ(numbersIn(withFace(square, {{"transparency", 65535}, {"flags", 1 << 26}})), std::vector<int>{});
}

TEST(FltCheckFaces, judgesTheFacesOfMeshes)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(numbersIn(withMesh(4, square, {0, 1, 2, 3})), std::vector<int>{});
    EXPECT_EQ(numbersIn(withMesh(4, {{0, 0, 0}, {2, 0, 0}, {0.5, 0.5, 0}, {0, 2, 0}}, {0, 1, 2, 3})),
              std::vector{int(Number::concaveFace)});
    EXPECT_EQ(numbersIn(withMesh(1, line, {0, 1, 2})), std::vector{int(Number::noArea)});
    for (std::vector<double> const& unusable :
         {std::vector<double>{nan, 0, 0}, std::vector<double>{0, nan, 0}, std::vector<double>{0, 0, nan}})
        EXPECT_EQ(numbersIn(withMesh(1, {{0, 0, 0}, {1, 0, 0}, unusable}, {0, 1, 2})),
                  std::vector{int(Number::unusablePlace)});
    EXPECT_EQ(numbersIn(withMesh(1, square, {0, 1, 3, 3, 0, 1, 3})),
              std::vector{int(Number::coincidingFaces)});
}

TEST(FltCheckFaces, tellsWhereTheFaceBeginsThatAnotherOneLiesOn)
{
    FltWriter flt;
    flt.push().add("Object").push();
    std::size_t const first = flt.bytes().size();
    addOldFace(flt, 0);
    addOldFace(flt, 1);
    addOldFace(flt, 0);
    std::vector<FltFinding> const findings = findingsIn(flt.pop().pop());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::coincidingFaces);
    EXPECT_EQ(findings[0].text, "it lies where the one at byte " + std::to_string(first) + " does");
    EXPECT_GT(findings[0].offset, static_cast<std::int64_t>(first));
}

/// They would be a multiple of the file, since no other face has a use for them.
TEST(FltCheckFaces, keepsNoVerticesOfFacesThatWereJudged)
{
    FltWriter flt;
    flt.push().add("Object").push();
    addOldFace(flt, 0);
    addOldFace(flt, 0);
    ScratchFolder const folder;
    flt.pop().pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltFindingList findings(inventory);
    FltCheckedModel checked(inventory);
    FltCheckFaces(checked, findings).check();
    EXPECT_EQ(checked.model.vertices.size(), 0U);
    EXPECT_EQ(findings.sorted().size(), 1U);
}

/// The vertices of the second face have the numbers of the first one's.
TEST(FltCheckFaces, judgesTheVerticesOfEachFaceByThemselves)
{
    FltWriter flt;
    flt.push().add("Object").push();
    for (int height = 0; height < 2; ++height) {
        Fields const face = {{"texturePatternIndex", -1}, {"materialIndex", -1}, {"lightMode", 3}};
        flt.add("Face", face).push();
        for (std::vector<double> const& place : square)
            flt.add("OldVertexColorNormal",
                    {{"Xcoordinate", place[0]}, {"Ycoordinate", place[1]}, {"Zcoordinate", height}});
        flt.pop();
    }
    EXPECT_EQ(numbersIn(flt.pop().pop()), std::vector(8, int(Number::unusableNormal)));
}

/// By triangles that repeat a corner a strip goes on elsewhere.
TEST(FltCheckFaces, takesTheSeamsOfStripsAsMeant)
{
    std::vector<std::vector<double>> places = square;
    for (std::vector<double> const& place : square)
        places.push_back({place[0] + 5, place[1], 0});
    EXPECT_EQ(numbersIn(withMesh(1, places, {0, 1, 3, 2, 2, 4, 4, 5, 7, 6})), std::vector<int>{});
}

TEST(FltCheckFaces, takesARepeatedCornerAsMeantInStripsOfTrianglesAlone)
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0);
    flt.push().add("Object").push().face({a, a, b}).pop();
    EXPECT_EQ(numbersIn(flt.pop()), std::vector{int(Number::noArea)});
    EXPECT_EQ(numbersIn(withMesh(4, line, {0, 1, 2, 0})), std::vector{int(Number::noArea)});
    EXPECT_EQ(numbersIn(withMesh(1, line, {0, 1, 1})), std::vector<int>{});
}

TEST(FltCheckFaces, findsTextureCoordinatesThatAreNoNumbersInEitherDirection)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (auto const& [u, v] : {std::pair{nan, 0.}, {0., nan}, {0., 1.}}) {
        FltWriter flt;
        flt.add("ColorPalette").add("TexturePattern", {{"patternIndex", 0}}).vertexPalette();
        std::vector<double> corners;
        for (std::vector<double> const& place : square)
            corners.push_back(
                flt.vertex("VertexColorUv", place[0], place[1], place[2], {{"texture", {u, v}}}));
        flt.push().add("Object").push().face(corners, {{"texturePatternIndex", 0}}).pop();
        bool const isUsable = u == 0 && v == 1;
        EXPECT_EQ(numbersIn(flt.pop()),
                  isUsable ? std::vector<int>{} : std::vector(4, int(Number::unusableTextureCoordinates)));
    }
}

TEST(FltCheckFaces, tellsOfLostDetailAtTheFirstNodeOfThoseThatLoseMost)
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<std::vector<double>> corners;
    for (double const fraction : {0.0625, 0.125, 0.125}) {
        corners.emplace_back();
        for (std::vector<double> const& place : square)
            corners.back().push_back(flt.vertex("VertexColor", 5'300'000 + fraction + place[0], place[1],
                                                static_cast<double>(corners.size())));
    }
    flt.push();
    for (std::size_t i = 0; i < corners.size(); ++i)
        flt.add("Object", {{"idASCII", "o" + std::to_string(i)}}).push().face(corners[i]).pop();
    std::vector<FltFinding> const findings = findingsIn(flt.pop());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].node, "o1");
    EXPECT_EQ(findings[0].count, 3U);
}

TEST(FltCheckFaces, takesTheLookOfAnObjectForWhatStandsInNodesBelowIt)
{
    FltWriter flt;
    std::vector<double> const corners = addVertices(flt, square);
    flt.push().add("Object", {{"transparency", 65535}}).push().add("Group").push().face(corners);
    EXPECT_EQ(numbersIn(flt.pop().pop().pop()), std::vector{int(Number::transparentFace)});
}

TEST(FltCheckFaces, tellsWhatIsLostOfFacesWithoutAnObject)
{
    FltWriter flt;
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (std::vector<double> const& place : square)
        corners.push_back(flt.vertex("VertexColor", 5'300'000.125 + place[0], place[1], place[2]));
    EXPECT_EQ(numbersIn(flt.push().face(corners).pop()), std::vector{int(Number::lostDetail)});
}

TEST(FltCheckFaces, tellsHowMuchIsLostFarFromTheOrigin)
{
    auto const at = [](double x, double size) {
        return withFace({{x, 0, 0}, {x + size, 0, 0}, {x + size, size, 0}, {x, size, 0}});
    };
    std::vector<FltFinding> const findings = findingsIn(at(5'300'000.125, 1));
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::lostDetail);
    EXPECT_EQ(findings[0].text, "up to 0.12 of a unit is lost");
    EXPECT_EQ(numbersIn(at(5'300'000, 1)), std::vector<int>{});             // floats hold it
    EXPECT_EQ(numbersIn(at(5'300'000.125, 1'000'000)), std::vector<int>{}); // nobody sees so little of it
    EXPECT_EQ(numbersIn(at(1000.00001, 1)), std::vector<int>{});            // a tenth of a millimetre
}

/// What stands below a face is no business of those who draw faces.
TEST(FltCheckFaces, readsSubfacesOnceAndNothingThatIsntDrawn)
{
    FltWriter flt;
    std::vector<double> corners = addVertices(flt, line);
    flt.push().add("Object").push().face(corners).add("PushSubface").face(corners).add("PopSubface");
    EXPECT_EQ(numbersIn(flt.pop().pop()), std::vector(2, int(Number::noArea)));
    FltWriter nested;
    corners = addVertices(nested, line);
    nested.push().add("Object").push().face(corners).add("PushSubface").face(corners);
    nested.add("PushSubface").face(corners).add("PopSubface").add("PopSubface");
    EXPECT_EQ(numbersIn(nested.pop().pop()), std::vector(3, int(Number::noArea)));
    FltWriter first;
    corners = addVertices(first, line);
    first.push().face(corners).add("PushSubface").face(corners).add("PopSubface");
    EXPECT_EQ(numbersIn(first.pop()), std::vector(2, int(Number::noArea))) << "of a face without an object";
}

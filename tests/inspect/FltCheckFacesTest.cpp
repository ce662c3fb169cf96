#include "inspect/FltCheckFaces.h"

#include "messages/FltFindingNumber.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <limits>

namespace Number = FltFindingNumber;

namespace
{

using Fields = FltWriter::Fields;

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

Fields normal(double x, double y, double z)
{
    return {{"vertexNormal", {x, y, z}}};
}

/// A mesh, unlit, of one primitive.
FltWriter withMesh(int type, std::vector<std::vector<double>> const& places, std::vector<int> const& indices)
{
    std::string body(80, '\0');
    for (std::size_t const place : {26, 28, 30, 64}) // no texture, material, mapping
        body.replace(place, 2, "\xff\xff");
    std::string pool = FltWriter::big32(static_cast<long>(places.size())) + FltWriter::big32(0x80000000L);
    for (std::vector<double> const& place : places)
        for (double const part : place)
            pool += FltWriter::bigDouble(part);
    std::string primitive =
        FltWriter::big16(type) + FltWriter::big16(1) + FltWriter::big32(static_cast<long>(indices.size()));
    for (int const index : indices)
        primitive += static_cast<char>(index);
    FltWriter flt;
    flt.push().add("Object").push().addRaw(84, body).addRaw(85, pool);
    return flt.push().addRaw(86, primitive).pop().pop().pop();
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
    EXPECT_EQ(numbersIn(withFace(square, {{"lightMode", 2}}, normal(0, 0.8, -0.6))),
              std::vector{int(Number::opposedNormals)});
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
    EXPECT_EQ(numbersIn(withMesh(1, {{0, 0, 0}, {1, 0, 0}, {0, nan, 0}}, {0, 1, 2})),
              std::vector{int(Number::unusablePlace)});
    EXPECT_EQ(numbersIn(withMesh(1, square, {0, 1, 3, 3, 0, 1, 3})),
              std::vector{int(Number::coincidingFaces)});
}

/// By triangles that repeat a corner a strip goes on elsewhere.
TEST(FltCheckFaces, takesTheSeamsOfStripsAsMeant)
{
    std::vector<std::vector<double>> places = square;
    for (std::vector<double> const& place : square)
        places.push_back({place[0] + 5, place[1], 0});
    EXPECT_EQ(numbersIn(withMesh(1, places, {0, 1, 3, 2, 2, 4, 4, 5, 7, 6})), std::vector<int>{});
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
    flt.add("ColorPalette").vertexPalette();
    std::vector<double> corners;
    for (std::vector<double> const& place : line)
        corners.push_back(flt.vertex("VertexColor", place[0], place[1], place[2]));
    flt.push().add("Object").push().face(corners).add("PushSubface").face(corners).add("PopSubface");
    EXPECT_EQ(numbersIn(flt.pop().pop()), std::vector(2, int(Number::noArea)));
}

#include "visual/FltFaceCollector.h"

#include "support/CompleteDatabase.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTransparencyType.h>
#include <algorithm>
#include <gtest/gtest.h>
#include <tuple>
#include <utility>

using Fields = FltWriter::Fields;

namespace
{

/// A square with other fields than the usual ones.
DrawnScene drawnSquare(Fields const& fields, std::vector<double> const& color = CompleteDatabase::red)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.writer.add("Material",
                        {{"index", 2}, {"diffuse", {0.5, 1, 1}}, {"alpha", 0.5}, {"emissive", {0, 0, 1}}});
    database.writer.add("Material", {{"index", 3}, {"alpha", 1}});
    database.begin();
    database.object(offsets, CompleteDatabase::face(fields, color));
    return database.draw();
}

int countNodes(SoNode* root, SoType type)
{
    SoSearchAction search;
    search.setType(type);
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(root);
    return search.getPaths().getLength();
}

} // namespace

TEST(FltFaceCollector, colorsFacesByTheirLightMode)
{
    struct Case {
        int lightMode;
        char const* color;
        bool isLit;
    };
    for (Case const& each : {Case{0, "255 0 0 255", false}, Case{1, "255 255 255 255", false},
                             Case{2, "255 0 0 255", true}, Case{3, "255 255 255 255", true}}) {
        DrawnScene const drawn = drawnSquare({{"lightMode", each.lightMode}});
        ASSERT_EQ(drawn.triangles.size(), 2U);
        EXPECT_EQ(drawn.triangles[0].color(), each.color) << each.lightMode;
        EXPECT_EQ(drawn.triangles[0].isLit, each.isLit) << each.lightMode;
        EXPECT_EQ(drawn.triangles[0].normals[0], SbVec3f(0, 0, 1));
    }
}

TEST(FltFaceCollector, multipliesWithTheMaterialWhereFacesAreLitAlone)
{
    DrawnScene const lit = drawnSquare({{"materialIndex", 2}});
    EXPECT_EQ(lit.triangles[0].color(), "128 0 0 128");
    EXPECT_EQ(lit.triangles[0].emission, SbVec3f(0, 0, 1));
    EXPECT_EQ(drawnSquare({{"materialIndex", 2}, {"lightMode", 0}}).triangles[0].color(), "255 0 0 255");
    EXPECT_EQ(drawnSquare({{"materialIndex", 3}, {"lightMode", 0}}).triangles[0].color(), "255 0 0 255");
    EXPECT_EQ(drawnSquare({{"materialIndex", 77}}).triangles[0].color(), "255 0 0 255");
}

TEST(FltFaceCollector, countsTransparencyOfTheFaceAndOfItsObject)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin().add("Object", {{"transparency", 32768}}).push();
    database.writer.face(offsets, CompleteDatabase::face({{"transparency", 32768}}));
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).triangles[0].color(), "255 255 255 64");
    EXPECT_EQ(countNodes(result.root.get(), SoTransparencyType::getClassTypeId()), 1);
}

TEST(FltFaceCollector, takesAFaceWithoutColorForWhiteAndAVertexWithoutColorForItsFace)
{
    EXPECT_EQ(drawnSquare({{"flags", 0x40000000}}).triangles[0].color(), "255 255 255 255");
    CompleteDatabase database;
    std::vector<double> offsets;
    for (int i = 0; i < 3; ++i)
        offsets.push_back(
            database.writer.vertex("VertexColor", i % 2, i == 2 ? 1 : 0, 0, {{"flags", 0x2000}}));
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"lightMode", 1}}, CompleteDatabase::green));
    EXPECT_EQ(database.draw().triangles[0].color(), "0 255 0 255");
}

TEST(FltFaceCollector, drawsOnlyTheFrontUnlessBothSidesAreWanted)
{
    EXPECT_FALSE(drawnSquare({{"drawType", 0}}).triangles[0].isTwoSided);
    EXPECT_TRUE(drawnSquare({{"drawType", 1}}).triangles[0].isTwoSided);
}

TEST(FltFaceCollector, drawsFacesWholeWhoseDrawTypeNobodyKnows)
{
    for (int const drawType : {5, 6, 7, 11, 127, -1}) {
        DrawnScene const drawn = drawnSquare({{"drawType", drawType}});
        EXPECT_EQ(drawn.triangles.size(), 2U) << drawType;
        EXPECT_TRUE(drawn.points.empty() && drawn.lines.empty()) << drawType;
    }
}

TEST(FltFaceCollector, drawsOutlines)
{
    EXPECT_EQ(drawnSquare({{"drawType", 2}}).lines.size(), 4U);
    EXPECT_EQ(drawnSquare({{"drawType", 2}}).triangles.size(), 0U);
    EXPECT_EQ(drawnSquare({{"drawType", 3}}).lines.size(), 3U);
    DrawnScene const both = drawnSquare({{"drawType", 4}, {"alternatePackedColor", CompleteDatabase::green}});
    EXPECT_EQ(both.triangles.size(), 2U);
    ASSERT_EQ(both.lines.size(), 4U);
    EXPECT_EQ(both.lines[0].color(), "0 255 0 255");
    EXPECT_EQ(both.triangles[0].color(), "255 0 0 255");
}

TEST(FltFaceCollector, closesOutlinesOfThreeVerticesButNotOfTwo)
{
    CompleteDatabase database;
    std::vector<double> const two = database.polygon({{0, 0, 0}, {1, 0, 0}});
    std::vector<double> const three = database.polygon({{0, 5, 0}, {1, 5, 0}, {1, 6, 0}});
    database.begin().add("Object").push();
    database.writer.face(two, CompleteDatabase::face({{"drawType", 2}}));
    EXPECT_EQ(CompleteDatabase(database).draw().lines.size(), 1U);
    database.writer.face(three, CompleteDatabase::face({{"drawType", 2}}));
    EXPECT_EQ(database.draw().lines.size(), 4U);
}

TEST(FltFaceCollector, drawsLinesAsWideAsTheirStyle)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.polygon({{0, 0, 0}, {1, 0, 0}});
    for (auto const& [style, width] : {std::pair{1, 1}, {2, 5}, {3, 100000}, {4, -5}})
        database.writer.add("LineStylePalette", {{"lineStyleIndex", style}, {"lineWidth", width}});
    database.begin().add("Object").push();
    for (int const style : {0, 1, 2, 3, 4, 9})
        database.writer.face(offsets, CompleteDatabase::face({{"lineStyleIndex", style}}));
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    std::vector<FltMesh> const& meshes = root->children.at(0)->meshes;
    ASSERT_EQ(meshes.size(), 3U);
    EXPECT_EQ(meshes[0].size, 0) << "four styles of the usual width";
    EXPECT_EQ(meshes[0].indices.size(), 4U * 3);
    EXPECT_EQ(meshes[1].size, 5);
    EXPECT_EQ(meshes[2].size, 64);
}

TEST(FltFaceCollector, drawsLightPoints)
{
    for (int const drawType : {8, 9, 10})
        EXPECT_EQ(drawnSquare({{"drawType", drawType}}).points.size(), 4U) << drawType;
}

TEST(FltFaceCollector, drawsFacesOfOneOrTwoVerticesAndAllOthersBesideThem)
{
    CompleteDatabase database;
    std::vector<double> const point = database.polygon({{5, 0, 0}});
    std::vector<double> const line = database.polygon({{6, 0, 0}, {7, 0, 0}});
    std::vector<double> const square = database.square();
    database.begin().add("Object").push();
    database.writer.face(point, CompleteDatabase::face()).face(line, CompleteDatabase::face());
    database.writer.face(square, CompleteDatabase::face());
    DrawnScene const drawn = database.draw();
    EXPECT_EQ(drawn.points.size(), 1U);
    EXPECT_EQ(drawn.lines.size(), 1U);
    EXPECT_EQ(drawn.triangles.size(), 2U);
}

TEST(FltFaceCollector, leavesDegenerateFacesOutAndCountsThem)
{
    CompleteDatabase database;
    std::vector<double> const flat = database.polygon({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
    database.begin();
    database.object(flat);
    database.object({});
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "nothing");
    EXPECT_EQ(result.leftOut.at("degenerate face"), 1);
    EXPECT_EQ(result.leftOut.at("face without vertices"), 1);
}

TEST(FltFaceCollector, hidesHiddenFacesBehindASwitchThatAHostCanOpen)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"flags", 0x14000000}}));
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "nothing");
    auto* const hidden = static_cast<SoSwitch*>(SoNode::getByName("hidden"));
    ASSERT_NE(hidden, nullptr);
    hidden->whichChild = SO_SWITCH_ALL;
    EXPECT_EQ(DrawnScene(result.root.get()).extent(), "0 0 0 to 1 1 0");
}

TEST(FltFaceCollector, drawsFacesThatLookAlikeAsOneShapeAndSharesTheirVertices)
{
    CompleteDatabase database;
    std::vector<double> const grid =
        database.polygon({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {2, 0, 0}, {2, 1, 0}});
    database.begin().add("Object").push();
    database.writer.face({grid[0], grid[1], grid[2], grid[3]}, CompleteDatabase::face());
    database.writer.face({grid[1], grid[4], grid[5], grid[2]}, CompleteDatabase::face());
    CompleteDatabase::Converted const result = database.convert();
    SoSearchAction search;
    search.setType(SoIndexedFaceSet::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.apply(result.root.get());
    ASSERT_EQ(search.getPaths().getLength(), 1);
    auto const* faces = static_cast<SoIndexedFaceSet*>(search.getPaths()[0]->getTail());
    EXPECT_EQ(static_cast<SoVertexProperty*>(faces->vertexProperty.getValue())->vertex.getNum(), 6);
    EXPECT_EQ(faces->coordIndex.getNum(), 10);
}

TEST(FltFaceCollector, keepsFacesOfDifferentMaterialsApart)
{
    CompleteDatabase database;
    std::vector<double> const a = database.square();
    std::vector<double> const b = database.square(2);
    database.writer.add("Material", {{"index", 1}, {"emissive", {1, 0, 0}}, {"alpha", 1}});
    database.writer.add("Material", {{"index", 2}, {"emissive", {0, 1, 0}}, {"alpha", 1}});
    database.begin().add("Object").push();
    database.writer.face(a, CompleteDatabase::face({{"materialIndex", 1}}));
    database.writer.face(b, CompleteDatabase::face({{"materialIndex", 2}}));
    DrawnScene const drawn = database.draw();
    ASSERT_EQ(drawn.triangles.size(), 4U);
    EXPECT_EQ(drawn.triangles[0].emission, SbVec3f(1, 0, 0));
    EXPECT_EQ(drawn.triangles[2].emission, SbVec3f(0, 1, 0));
}

TEST(FltFaceCollector, bringsFacesThatLieOnOthersNearerToTheEye)
{
    CompleteDatabase database;
    std::vector<double> const below = database.square();
    std::vector<double> const above = database.polygon({{0, 0, 0}, {0.5, 0, 0}, {0.5, 0.5, 0}});
    database.begin().add("Object").push();
    database.writer.face(below, CompleteDatabase::face()).add("PushSubface");
    database.writer.face(above, CompleteDatabase::face({}, CompleteDatabase::red)).add("PopSubface");
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 3U);
    EXPECT_EQ(countNodes(result.root.get(), SoPolygonOffset::getClassTypeId()), 1);
}

namespace
{

/// A square that looks along z, whose first vertices have these normals and whose others have none.
DrawnScene squareWithNormals(std::vector<std::vector<double>> const& normals, Fields const& fields)
{
    CompleteDatabase database;
    std::vector<double> offsets;
    std::vector<std::vector<double>> const places = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (std::size_t i = 0; i < places.size(); ++i) {
        Fields vertex;
        if (i < normals.size())
            vertex = {{"vertexNormal", normals[i]}};
        offsets.push_back(database.writer.vertex(i < normals.size() ? "VertexColorNormal" : "VertexColor",
                                                 places[i][0], places[i][1], 0, vertex));
    }
    database.begin();
    database.object(offsets, CompleteDatabase::face(fields));
    return database.draw();
}

/// Offsets of a bow tie about the origin: its triangles lie to the left and to the right.
std::vector<double> bowTie(CompleteDatabase& database, double right = 1)
{
    return database.polygon({{-1, -1, 0}, {right, right, 0}, {right, -right, 0}, {-1, 1, 0}});
}

} // namespace

TEST(FltFaceCollector, takesNoNormalWithoutADirection)
{
    for (DrawnScene::Primitive const& each : squareWithNormals({{0, 0, 0}}, {}).triangles)
        for (SbVec3f const& normal : each.normals)
            EXPECT_EQ(normal, SbVec3f(0, 0, 1));
}

/// The toolkit lights the back by the opposites of the normals, so the side that was to be seen was dark.
TEST(FltFaceCollector, turnsFacesOfTwoSidesToTheSideOfTheirNormals)
{
    std::vector<double> const down = {0, 0, -1}, up = {0, 0, 1};
    DrawnScene const turned = squareWithNormals({down, down, down, down}, {{"drawType", 1}});
    ASSERT_EQ(turned.triangles.size(), 2U);
    for (DrawnScene::Primitive const& each : turned.triangles) {
        EXPECT_EQ(each.front(), SbVec3f(0, 0, -1));
        EXPECT_EQ(each.normals[0], SbVec3f(0, 0, -1));
    }
    EXPECT_EQ(turned.area(), 1);
    EXPECT_EQ(squareWithNormals({up, up, up, up}, {{"drawType", 1}}).triangles[0].front(), SbVec3f(0, 0, 1));
}

TEST(FltFaceCollector, turnsAFaceByTheSumOfItsNormalsAndLeavesATieAsItIsStored)
{
    std::vector<double> const down = {0, 0, -1}, up = {0, 0, 1}, aside = {1, 0, 0};
    auto const front = [](std::vector<std::vector<double>> const& normals) {
        return squareWithNormals(normals, {{"drawType", 1}}).triangles[0].front()[2];
    };
    EXPECT_EQ(front({down, down, up, aside}), -1);
    EXPECT_EQ(front({down, up, up, aside}), 1);
    EXPECT_EQ(front({down, up}), 1);
    EXPECT_EQ(front({aside, aside}), 1);
    EXPECT_EQ(front({}), 1);
}

TEST(FltFaceCollector, givesVerticesWithoutANormalThatOfTheTurnedFace)
{
    DrawnScene const drawn = squareWithNormals({{0, 0, -1}}, {{"drawType", 1}});
    ASSERT_EQ(drawn.triangles.size(), 2U);
    for (DrawnScene::Primitive const& each : drawn.triangles)
        for (SbVec3f const& normal : each.normals)
            EXPECT_EQ(normal, SbVec3f(0, 0, -1));
}

TEST(FltFaceCollector, leavesFacesOfOneSideAndUnlitOnesAsTheyAreStored)
{
    std::vector<std::vector<double>> const down(4, {0, 0, -1});
    for (Fields const& fields : {Fields{{"drawType", 0}}, {{"drawType", 1}, {"lightMode", 0}}})
        EXPECT_EQ(squareWithNormals(down, fields).triangles[0].front(), SbVec3f(0, 0, 1));
}

/// A concave one is cut from its inner corner, on whatever side.
TEST(FltFaceCollector, coversAConcaveFaceThatItTurns)
{
    CompleteDatabase database;
    std::vector<double> offsets;
    for (auto const& [x, y] : {std::pair{0.0, 0.0}, {4.0, 0.0}, {1.0, 1.0}, {0.0, 4.0}})
        offsets.push_back(
            database.writer.vertex("VertexColorNormal", x, y, 0, {{"vertexNormal", {0, 0, -1}}}));
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"drawType", 1}}));
    DrawnScene const drawn = database.draw();
    EXPECT_NEAR(drawn.area(), 4, 1e-5);
    for (DrawnScene::Primitive const& each : drawn.triangles)
        EXPECT_EQ(each.front(), SbVec3f(0, 0, -1));
}

/// It was said to have no area where its triangles are equal.
TEST(FltFaceCollector, cutsABowTieIntoItsTwoTrianglesSeenFromOneSide)
{
    for (double const right : {1.0, 0.5}) {
        CompleteDatabase database;
        std::vector<double> const offsets = bowTie(database, right);
        database.begin();
        database.object(offsets);
        CompleteDatabase::Converted const result = database.convert();
        EXPECT_EQ(result.leftOut.count("degenerate face"), 0U);
        DrawnScene const drawn(result.root.get());
        ASSERT_EQ(drawn.triangles.size(), 2U) << right;
        EXPECT_NEAR(drawn.area(), 1 + right * right, 1e-6) << right;
        EXPECT_EQ(drawn.triangles[0].front(), drawn.triangles[1].front()) << right;
    }
}

TEST(FltFaceCollector, mixesWhatTheVerticesAroundACrossingHave)
{
    CompleteDatabase database;
    std::vector<double> offsets;
    for (auto const& [x, y, u] : {std::tuple{-1, -1, 0.0}, {1, 1, 1.0}, {1, -1, 1.0}, {-1, 1, 0.0}})
        offsets.push_back(database.writer.vertex(
            "VertexColorUv", x, y, 0,
            {{"flags", 0x1000}, {"packedColor", {255.0, 0.0, 0.0, 255 * u}}, {"texture", {u, u}}}));
    database.writer.add("TexturePattern", {{"fileName", "none.rgb"}, {"patternIndex", 0}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"lightMode", 1}, {"texturePatternIndex", 0}}));
    FltVisualConversion::Result const seen = database.see();
    FltMesh const& mesh = seen.root->children.at(0)->meshes.at(0);
    auto const middle = static_cast<std::size_t>(
        std::find(mesh.positions.begin(), mesh.positions.end(), SbVec3f(0, 0, 0)) - mesh.positions.begin());
    ASSERT_LT(middle, mesh.positions.size());
    EXPECT_EQ(mesh.positions.size(), 5U);
    EXPECT_EQ(mesh.uvs[middle], SbVec2f(0.5F, 0.5F));
    EXPECT_EQ(mesh.colors[middle], 0x800000ffU);
}

TEST(FltFaceCollector, drawsTheOutlineOfABowTieAsItGoes)
{
    CompleteDatabase database;
    std::vector<double> const offsets = bowTie(database);
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"drawType", 4}}));
    DrawnScene const drawn = database.draw();
    EXPECT_EQ(drawn.triangles.size(), 2U);
    EXPECT_EQ(drawn.lines.size(), 4U);
}

/// Whether faces let light through by their own colours decides how their picture is drawn.
TEST(FltFaceCollector, keepsOpaqueFacesWithATextureApartFromTranslucentOnes)
{
    CompleteDatabase database;
    std::vector<double> const near = database.square(), far = database.square(5);
    database.writer.add("TexturePattern", {{"fileName", "none.rgb"}, {"patternIndex", 0}});
    database.begin().add("Object").push();
    for (auto const& [offsets, transparency] : {std::pair{near, 0}, {far, 0x8000}})
        database.writer.face(offsets, CompleteDatabase::face({{"texturePatternIndex", 0},
                                                              {"templateBillboard", 1},
                                                              {"transparency", transparency}}));
    FltVisualConversion::Result const seen = database.see();
    std::vector<FltMesh> const& meshes = seen.root->children.at(0)->meshes;
    ASSERT_EQ(meshes.size(), 2U);
    EXPECT_TRUE(meshes[0].isBlended && meshes[1].isBlended);
    EXPECT_FALSE(meshes[0].isCutOut || meshes[1].isCutOut);
}

TEST(FltFaceCollector, leavesCornersWhereTheyAreUnlessTheyArePlaced)
{
    FltPlacement const none;
    EXPECT_EQ(none.place(SbVec3d(1, 2, 3)), SbVec3d(1, 2, 3));
    EXPECT_EQ(none.turn(SbVec3d(4, 5, 6)), SbVec3d(4, 5, 6));
    FltPlacement placed;
    std::swap(placed.rows[0], placed.rows[1]);
    placed.origin[2] = 1;
    EXPECT_EQ(placed.place(SbVec3d(1, 2, 3)), SbVec3d(2, 1, 2));
}

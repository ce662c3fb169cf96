#include "obj/FltObj.h"

#include "ObjOfVisual.h"
#include "loader/FltLoader.h"
#include "support/Moved.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <map>

namespace
{

using Fields = FltWriter::Fields;

constexpr int feet = 4, unlit = 0, lit = 3;
constexpr unsigned hasPackedColor = 0x10000000;

/// A database with one Object, written as OBJ.
class WrittenObj
{
public:
    explicit WrittenObj(Fields const& header = {}) : flt(1570, header) { flt.vertexPalette(); }

    double vertex(double x, double y, double z, char const* form = "VertexColor", Fields const& fields = {})
    {
        return flt.vertex(form, x, y, z, fields);
    }

    FltGltfReport write(std::string const& name = "model.obj")
    {
        flt.save(folder / "model.flt");
        return FltObj::write(FltLoader().loadVisual(folder / "model.flt"), folder / name);
    }

    std::string text(std::string const& name = "model.obj") const { return contentsOf(folder / name); }

    FltWriter flt;
    ScratchFolder folder;
};

Fields face(std::vector<double> const& color, int lightMode = unlit)
{
    return {{"packedColor", color}, {"flags", hasPackedColor}, {"lightMode", lightMode}};
}

bool lists(FltGltfReport const& report, std::string const& kind)
{
    for (FltOmission const& omission : report.omissions)
        if (omission.kind == kind)
            return true;
    return false;
}

SbDPMatrix scaled(double x, double y, double z)
{
    SbDPMatrix matrix;
    matrix.setScale(SbVec3d(x, y, z));
    return matrix;
}

/// A triangle with normals and, if it is asked for, coordinates of the first texture.
FltMesh litTriangle(bool hasPicture)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.isLit = true;
    mesh.normals = {{0.6F, 0, 0.8F}, {0, 0.6F, 0.8F}, {0, 0, 1}};
    if (hasPicture) {
        mesh.texture = 0;
        mesh.uvs = {{0.25F, 0.75F}, {1, 0}, {0, 2}};
    }
    return mesh;
}

/// The text of a mesh from its first place on.
std::string shapeOf(FltMesh const& mesh, std::vector<SbDPMatrix> const& transform = {}, double metres = 1,
                    bool lifts = true)
{
    ObjOfVisual obj;
    obj.visual.metresPerUnit = metres;
    obj.options.lifts = lifts;
    obj.add({mesh})->transform = transform;
    obj.write();
    std::string const text = obj.text();
    return text.substr(std::min(text.find("\nv ") + 1, text.size()));
}

} // namespace

TEST(FltObj, standsInMetresWithYUp)
{
    WrittenObj obj({{"vertexCoordinateUnits", feet}});
    std::vector<double> const corners = {obj.vertex(10, 20, 30), obj.vertex(20, 20, 30),
                                         obj.vertex(10, 30, 30)};
    obj.flt.push().add("Object", {{"idASCII", "roof"}}).push().face(corners, face({255, 0, 0, 255}));
    FltGltfReport const report = obj.write();
    EXPECT_EQ(obj.text(), "mtllib model.mtl\n"
                          "o roof\n"
                          "usemtl material1\n"
                          "v 3.048 9.144 -6.096\n"
                          "v 6.096 9.144 -6.096\n"
                          "v 3.048 9.144 -9.144\n"
                          "f 1 2 3\n");
    EXPECT_EQ(obj.text("model.mtl"), "newmtl material1\n"
                                     "Kd 1 0 0\n"
                                     "d 1\n"
                                     "illum 0\n");
    EXPECT_EQ(report.triangles, 1U);
    EXPECT_EQ(report.vertices, 3U);
}

TEST(FltObj, keepsPlacesFarFromZero)
{
    WrittenObj obj;
    std::vector<double> const corners = {obj.vertex(4000000.125, 0, 0), obj.vertex(4000001, 0, 0),
                                         obj.vertex(4000000.125, 1, 0)};
    obj.flt.push().add("Object").push().face(corners, face({255, 0, 0, 255}));
    obj.write();
    EXPECT_NE(obj.text().find("v 4000000.125 0 0\nv 4000001 0 0\n"), std::string::npos) << obj.text();
}

TEST(FltObj, keepsTheSidesOfFacesInMirrors)
{
    WrittenObj obj;
    std::vector<double> const corners = {obj.vertex(0, 0, 0), obj.vertex(1, 0, 0), obj.vertex(0, 1, 0)};
    obj.flt.push()
        .add("Object")
        .add("Matrix", {{"matrix", {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}})
        .push()
        .face(corners, face({255, 0, 0, 255}));
    obj.write();
    EXPECT_NE(obj.text().find("v 0 0 0\nv -1 0 0\nv 0 0 -1\nf 1 3 2\n"), std::string::npos) << obj.text();
}

TEST(FltObj, hasNormalsWhereItIsLit)
{
    WrittenObj obj;
    Fields const up = {{"vertexNormal", {0, 0, 1}}};
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}})
        corners.push_back(obj.vertex(x, y, 0, "VertexColorNormal", up));
    obj.flt.push().add("Object").push().face(corners, face({255, 0, 0, 255}, lit));
    obj.write();
    EXPECT_NE(obj.text().find("vn 0 1 0\n"), std::string::npos) << obj.text();
    EXPECT_NE(obj.text().find("//1 "), std::string::npos) << obj.text();
    EXPECT_NE(obj.text("model.mtl").find("illum 2\n"), std::string::npos);
}

TEST(FltObj, namesAreWords)
{
    WrittenObj obj;
    std::vector<double> const corners = {obj.vertex(0, 0, 0), obj.vertex(1, 0, 0), obj.vertex(0, 1, 0)};
    obj.flt.push().add("Object").add("LongID", {{"idASCII", "a roof\nv 9 9 9"}}).push();
    obj.flt.face(corners, face({255, 0, 0, 255}));
    obj.write();
    EXPECT_NE(obj.text().find("o a_roof_v_9_9_9\n"), std::string::npos) << obj.text();
}

TEST(FltObj, leavesOutWhatHasNoPlace)
{
    WrittenObj obj;
    std::vector<double> const whole = {obj.vertex(0, 0, 0), obj.vertex(1, 0, 0), obj.vertex(0, 1, 0)};
    std::vector<double> const broken = {obj.vertex(std::numeric_limits<double>::quiet_NaN(), 0, 0),
                                        obj.vertex(1, 0, 0), obj.vertex(0, 1, 0)};
    obj.flt.push().add("Object").push().face(whole, face({255, 0, 0, 255}));
    obj.flt.face(broken, face({255, 0, 0, 255}));
    obj.write();
    EXPECT_EQ(obj.text().find("nan"), std::string::npos) << obj.text();
    EXPECT_NE(obj.text().find("f 1 2 3\n"), std::string::npos) << obj.text();
}

TEST(FltObj, listsWhatItLoses)
{
    WrittenObj obj;
    std::vector<double> const corners = {obj.vertex(0, 0, 0), obj.vertex(1, 0, 0), obj.vertex(0, 1, 0)};
    obj.flt.push().add("DOF").push().add("Object").push().face(corners, face({255, 0, 0, 255})).pop().pop();
    FltGltfReport const report = obj.write();
    EXPECT_TRUE(lists(report, "degrees of freedom, which stand still"));
    EXPECT_FALSE(lists(report, "lights"));
}

TEST(FltObj, isTheSameEachTime)
{
    WrittenObj obj;
    std::vector<double> const corners = {obj.vertex(0, 0, 0), obj.vertex(1, 0, 0), obj.vertex(0, 1, 0)};
    obj.flt.push().add("Object").push().face(corners, face({255, 0, 0, 255}));
    obj.write("model.obj");
    std::string const first = obj.text();
    obj.write("model.obj");
    EXPECT_EQ(obj.text(), first);
}

TEST(FltObj, namesEachObjectOnceBeforeItsShapes)
{
    ObjOfVisual obj;
    FltMesh other = ObjOfVisual::triangle();
    other.colors = {0x00ff00ff};
    obj.add({ObjOfVisual::triangle(), other}, "a");
    obj.add({ObjOfVisual::triangle()}, "b c");
    obj.root->meshes = {ObjOfVisual::triangle(), FltMesh()};
    FltGltfReport const report = obj.write();
    std::string const places = "v 0 0 0\nv 1 0 0\nv 0 0 -1\n";
    EXPECT_EQ(obj.text(), "mtllib m.mtl\n"
                          "o a\nusemtl material1\n" +
                              places + "f 1 2 3\nusemtl material2\n" + places +
                              "f 4 5 6\n"
                              "o b_c\nusemtl material1\n" +
                              places +
                              "f 7 8 9\n"
                              "o unnamed\nusemtl material1\n" +
                              places + "f 10 11 12\n");
    EXPECT_EQ(report.meshes, 4U);
    EXPECT_EQ(report.triangles, 4U);
    EXPECT_EQ(report.vertices, 12U);
    EXPECT_EQ(report.materials, 2U);
    EXPECT_EQ(report.bytes, obj.text().size());
    EXPECT_EQ(report.files, (std::vector<std::string>{obj.folder / "m.mtl", obj.folder / "m.obj"}));
}

TEST(FltObj, hasLinesAndPoints)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.kind = FltMesh::Kind::lines;
    std::string const places = "v 0 0 0\nv 1 0 0\nv 0 0 -1\n";
    EXPECT_EQ(shapeOf(mesh), places + "l 1 2\nl 2 3\n");
    mesh.kind = FltMesh::Kind::points;
    mesh.indices.clear();
    EXPECT_EQ(shapeOf(mesh), places + "p 1\np 2\np 3\n");
    ObjOfVisual obj;
    obj.add({mesh});
    EXPECT_EQ(obj.write().triangles, 0U);
}

TEST(FltObj, standsWhereOriginsMatricesAndUnitsBringIt)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.origin = SbVec3d(10, 20, 30);
    EXPECT_EQ(shapeOf(mesh, {moved(1, 2, 3), scaled(2, 2, 2)}, 0.5),
              "v 10.5 31.5 -21\nv 11.5 31.5 -21\nv 10.5 31.5 -22\nf 1 2 3\n");
}

TEST(FltObj, keepsTheOrderOfCornersThatAMatrixFlattens)
{
    EXPECT_EQ(shapeOf(ObjOfVisual::triangle(), {scaled(1, 1, 0)}), "v 0 0 0\nv 1 0 0\nv 0 0 -1\nf 1 2 3\n");
    EXPECT_EQ(shapeOf(ObjOfVisual::triangle(), {scaled(1, 1, -1)}), "v 0 0 0\nv 1 0 0\nv 0 0 -1\nf 1 3 2\n");
}

TEST(FltObj, liftsFacesThatLieOnOthersByAPartOfTheirSizeOrFiveCentimetres)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.positions = {{0, 0, 0}, {10, 0, 0}, {0, 4, 0}};
    auto const begins = [&](std::string const& first, std::vector<SbDPMatrix> const& transform, double metres,
                            bool lifts) {
        std::string const text = shapeOf(mesh, transform, metres, lifts);
        EXPECT_EQ(text.substr(0, text.find('\n')), first);
    };
    begins("v 0 0 0", {}, 1, true);
    mesh.level = 1;
    begins("v 0 0.005 0", {}, 1, true);
    begins("v 0 0 0", {}, 1, false);
    begins("v 0 0.05 0", {scaled(10, 10, 10)}, 10, true);
    mesh.level = 2;
    begins("v 0 0.01 0", {}, 1, true);
}

TEST(FltObj, liftsNothingThatReachesIntoTheEndless)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.level = 1;
    mesh.positions.emplace_back(std::numeric_limits<float>::infinity(), 0.0F, 0.0F);
    mesh.indices = {0, 1, 2, FltMesh::end, 0, 1, 3, FltMesh::end};
    std::string const text = shapeOf(mesh);
    EXPECT_EQ(text.substr(0, text.find('\n')), "v 0 0 0");
    EXPECT_NE(text.find("f 1 2 3\n"), std::string::npos) << text;
}

TEST(FltObj, countsPlacesTextureCoordinatesAndNormalsApart)
{
    ObjOfVisual obj;
    FltTexture picture;
    picture.name = "a";
    picture.pixels = std::make_shared<PicturePixels const>(PicturePixels{1, 1, 1, {7}});
    obj.visual.textures = {picture};
    FltMesh unlit = litTriangle(true);
    unlit.isLit = false;
    unlit.normals.clear();
    obj.add({litTriangle(true), litTriangle(false), unlit, litTriangle(true), ObjOfVisual::triangle()});
    obj.write();
    std::string const text = obj.text();
    for (std::string const faces : {"f 1/1/1 2/2/2 3/3/3\n", "f 4//4 5//5 6//6\n", "f 7/4 8/5 9/6\n",
                                    "f 10/7/7 11/8/8 12/9/9\n", "f 13 14 15\n"})
        EXPECT_NE(text.find(faces), std::string::npos) << faces << text;
    EXPECT_NE(text.find("vt 0.25 0.75\nvt 1 0\nvt 0 2\n"), std::string::npos) << text;
    EXPECT_NE(text.find("vn 0.6 0.8 0\nvn 0 0.8 -0.6\nvn 0 1 0\n"), std::string::npos) << text;
}

TEST(FltObj, countsEachKindOfNodeThatItLoses)
{
    ObjOfVisual obj;
    auto const add = [&obj] { return obj.add({}); };
    add()->become<FltVisualSwitch>();
    add()->become<FltVisualJoint>();
    add()->become<FltVisualFlipBook>();
    add()->become<FltVisualText>();
    add()->become<FltVisualText>();
    add()->become<FltVisualLight>();
    add()->become<FltVisualTurning>();
    add()->become<FltVisualFile>();
    ObjOfVisual::Node const shared = add();
    shared->comments = {"one", "two"};
    obj.root->children.push_back(shared);
    ObjOfVisual::Node const levels = add();
    levels->become<FltVisualLevels>().distances = {10, 20};
    levels->children = {shared, nullptr, shared};
    add()->become<FltVisualLevels>();
    ObjOfVisual::Node const one = add();
    one->become<FltVisualLevels>();
    one->children = {shared};
    add()->children = {shared, shared, shared};
    std::map<std::string, std::uint64_t> counts;
    for (FltOmission const& omission : obj.write().omissions)
        counts[omission.kind] = omission.count;
    EXPECT_EQ(counts, (std::map<std::string, std::uint64_t>{{"coarser levels of detail", 2},
                                                            {"comments", 2},
                                                            {"degrees of freedom, which stand still", 1},
                                                            {"flip-books that play", 1},
                                                            {"lights", 1},
                                                            {"other files, which readers don't open", 1},
                                                            {"switches, which show what they show now", 1},
                                                            {"texts", 2},
                                                            {"turning faces, which stand still", 1}}));
}

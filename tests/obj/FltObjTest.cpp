#include "obj/FltObj.h"

#include "loader/FltLoader.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <limits>

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

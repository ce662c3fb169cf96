#include "vrml/FltVrmlPlace.h"

#include "support/DrawnScene.h"
#include "support/MemoryStream.h"
#include "support/Moved.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbDPRotation.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

namespace
{

std::vector<SbVec3d> const corners = {{1, 0, 0}, {0, 2, 0}, {0.5, 0, 3}};

/// A file with a triangle below matrices, the outermost first.
std::string fileOf(std::vector<SbDPMatrix> const& matrices)
{
    MemoryStream const stream;
    {
        VrmlText text(stream);
        FltVrmlPlace place;
        int nodes = FltVrmlPlace::beginGroup(text, "");
        for (SbDPMatrix const& matrix : matrices)
            nodes += place.begin(text, matrix, "");
        text.begin("Shape");
        text.begin("geometry IndexedFaceSet");
        text.begin("coord Coordinate");
        text.beginList("point");
        for (SbVec3d const& corner : corners) {
            SbVec3d const written = place.written(corner);
            text.item(SbVec3f(static_cast<float>(written[0]), static_cast<float>(written[1]),
                              static_cast<float>(written[2])));
        }
        text.endList();
        text.end();
        text.field("coordIndex", "[ 0 1 2 -1 ]");
        text.end();
        text.end();
        FltVrmlPlace::end(text, nodes);
    }
    return stream.text();
}

DrawnScene drawn(std::string const& file)
{
    SoInput input;
    input.setBuffer(file.data(), file.size());
    SoNodeRef<SoSeparator> const root(SoDB::readAll(&input));
    return DrawnScene(root.get());
}

/// Where the triangle stands is where the matrices bring it.
void expectKept(std::vector<SbDPMatrix> const& matrices, char const* what)
{
    std::string const file = fileOf(matrices);
    DrawnScene const scene = drawn(file);
    ASSERT_EQ(scene.triangles.size(), 1U) << what;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        SbVec3d expected = corners[i];
        for (auto matrix = matrices.rbegin(); matrix != matrices.rend(); ++matrix)
            matrix->multVecMatrix(expected, expected);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(static_cast<double>(scene.triangles[0].points[i][axis]), expected[axis], 1e-4)
                << what << file;
    }
    EXPECT_EQ(file.find("scale -"), std::string::npos) << what << file;
    EXPECT_EQ(file.find("scaleOrientation"), std::string::npos) << what;
}

SbDPMatrix scaled(double x, double y, double z)
{
    SbDPMatrix matrix;
    matrix.setScale(SbVec3d(x, y, z));
    return matrix;
}

SbDPMatrix turned(SbVec3d const& axis, double angle)
{
    SbDPMatrix matrix;
    matrix.setRotate(SbDPRotation(axis, angle));
    return matrix;
}

} // namespace

TEST(FltVrmlPlace, keepsEveryTransformation)
{
    SbVec3d const slanted(1, 2, 3);
    expectKept({moved(1, -2, 30)}, "translation");
    expectKept({moved(1, 2, 3), turned(slanted, 1)}, "rotation");
    expectKept({turned({0, 0, 1}, 3.141592653589793)}, "half a turn");
    expectKept({scaled(2, 2, 2)}, "scale");
    expectKept({turned({1, 0, 0}, 0.5), scaled(1, 2, 5), turned(slanted, 2)}, "scale of one direction");
    SbDPMatrix shear = SbDPMatrix::identity();
    shear[1][0] = 0.7;
    expectKept({shear * turned(slanted, 0.3) * moved(1, 1, 1)}, "shear");
    expectKept({scaled(1, 1, 0)}, "flat");
}

TEST(FltVrmlPlace, takesNoRoundingForAScale)
{
    for (int i = 1; i < 20; ++i) {
        std::string const file = fileOf({turned({1, 2, 0.1 * i}, 0.3 * i) * moved(i, 0, 0)});
        EXPECT_EQ(file.find("scale"), std::string::npos) << file;
        EXPECT_NE(file.find("rotation"), std::string::npos) << file;
    }
    EXPECT_NE(fileOf({scaled(1, 1, 1.000001)}).find("scale "), std::string::npos);
}

TEST(FltVrmlPlace, mirrorsPointsInsteadOfNodes)
{
    SbVec3d const slanted(1, 2, 3);
    SbDPMatrix const mirror = scaled(1, -2, 1) * turned(slanted, 1) * moved(1, 2, 3);
    expectKept({mirror}, "mirror");
    expectKept({mirror, moved(3, 0, 1), turned(slanted, 1)}, "below a mirror");
    expectKept({mirror, moved(3, 0, 1), scaled(-1, 1, 3), turned(slanted, 2)}, "mirrored back");
    FltVrmlPlace place;
    MemoryStream const stream;
    VrmlText text(stream);
    place.begin(text, mirror, "");
    EXPECT_TRUE(place.isMirrored);
    place.begin(text, scaled(1, 1, -1), "");
    EXPECT_FALSE(place.isMirrored);
}

TEST(FltVrmlPlace, knowsHowLongAUnitIs)
{
    FltVrmlPlace place;
    MemoryStream const stream;
    VrmlText text(stream);
    place.begin(text, scaled(0.3048, 0.3048, 0.3048), "");
    place.begin(text, moved(1, 0, 0), "");
    place.begin(text, scaled(2, 2, -2), "");
    EXPECT_NEAR(place.scale, 0.6096, 1e-12);
}

TEST(FltVrmlPlace, keepsAllDigitsOfDistantPlaces)
{
    EXPECT_NE(
        fileOf({moved(4500000.125, 5300000.0625, 12.5)}).find("translation 4500000.125 5300000.0625 12.5\n"),
        std::string::npos);
}

TEST(FltVrmlPlace, writesNothingForWhatChangesNothing)
{
    FltVrmlPlace place;
    MemoryStream const stream;
    VrmlText text(stream);
    EXPECT_EQ(place.begin(text, SbDPMatrix::identity(), ""), 0);
    EXPECT_EQ(place.begin(text, SbDPMatrix::identity(), "named"), 1);
    FltVrmlPlace::end(text, 1);
}

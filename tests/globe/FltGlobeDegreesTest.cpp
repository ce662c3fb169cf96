// Databases whose coordinates are degrees, from their files to places on the globe.

#include "OnEarth.h"
#include "loader/FltLoader.h"
#include "support/DrawnScene.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>

namespace
{

constexpr int geodetic = 5;

/// A place in degrees, and metres above the ellipsoid.
struct Place {
    double longitude, latitude, height;

    SbVec3d onEarth() const { return OnEarth::geocentric(latitude, longitude, height); }
};

/// A strip of land from south to north, in squares.
struct Strip {
    double west, south, side;
    int squares = 7;
    FltWriter::Fields header = {{"projectionType", geodetic}};

    Place corner(int column, int row) const
    {
        return {west + column * side, south + row * side, 100 + 7.3 * row};
    }

    std::vector<Place> corners() const
    {
        std::vector<Place> all;
        for (int row = 0; row <= squares; ++row)
            for (int column = 0; column <= 1; ++column)
                all.push_back(corner(column, row));
        return all;
    }

    /// @param hasObjects whether each square stands in an Object of its own
    FltWriter written(bool hasObjects = false) const
    {
        FltWriter flt(1580, header);
        flt.vertexPalette();
        std::vector<double> vertices;
        for (Place const& place : corners())
            vertices.push_back(flt.vertex("VertexColor", place.longitude, place.latitude, place.height));
        flt.push().add("Object").push();
        for (std::size_t i = 0; i + 3 < vertices.size(); i += 2) {
            if (hasObjects && i != 0)
                flt.pop().add("Object").push();
            flt.face({vertices[i], vertices[i + 1], vertices[i + 3], vertices[i + 2]},
                     {{"texturePatternIndex", -1}, {"materialIndex", -1}});
        }
        return flt.pop();
    }
};

class FltGlobeDegrees : public testing::Test
{
protected:
    std::string save(FltWriter flt, std::string const& name = "a.flt") const
    {
        return folder.write(name, flt.pop().bytes());
    }

    std::vector<OnEarth::Corner> placed(FltWriter const& flt) const
    {
        return OnEarth::cornersOf(FltGlobe::place(loader.loadVisual(save(flt))));
    }

    /// How far the farthest place is from the corner that is nearest to it.
    static double farthest(std::vector<Place> const& places, std::vector<OnEarth::Corner> const& corners)
    {
        double most = 0;
        for (Place const& place : places) {
            double least = std::numeric_limits<double>::infinity();
            for (OnEarth::Corner const& corner : corners)
                least = std::min(least, OnEarth::distance(corner.place, place.onEarth()));
            most = std::max(most, least);
        }
        return most;
    }

    FltLoader loader;
    ScratchFolder folder;
};

constexpr double centimetre = 0.01, millimetres = 0.004;

} // namespace

TEST_F(FltGlobeDegrees, standWithinMillimetresOfTheirPlaces)
{
    Strip const strip{9.0123456789, 47.1234567891, 0.0113};
    EXPECT_LT(farthest(strip.corners(), placed(strip.written())), millimetres);
}

TEST_F(FltGlobeDegrees, haveNeighboursMeet)
{
    Strip const west{-122.4194155, 37.7749295, 0.0123};
    Strip const east{west.west + west.side, west.south, west.side};
    auto const ofWest = placed(west.written()), ofEast = placed(east.written());
    for (int row = 0; row <= west.squares; ++row) {
        Place const common = east.corner(0, row);
        EXPECT_LT(farthest({common}, ofWest), centimetre) << row;
        EXPECT_LT(farthest({common}, ofEast), centimetre) << row;
    }
}

TEST_F(FltGlobeDegrees, areAsFineInMeshesOfAWholeDegree)
{
    Strip const strip{8.7, 9.1, 1.0 / 7};
    EXPECT_LT(farthest(strip.corners(), placed(strip.written())), millimetres)
        << "a millionth of the mesh would be a decimetre";
}

TEST_F(FltGlobeDegrees, areAsFineInAHeaderOfFeet)
{
    Strip strip{9.0123456789, 47.1234567891, 0.0113};
    strip.header.emplace_back("vertexCoordinateUnits", 4);
    std::vector<Place> places = strip.corners();
    for (Place& place : places)
        place.height *= 0.3048;
    EXPECT_LT(farthest(places, placed(strip.written())), millimetres);
}

TEST_F(FltGlobeDegrees, areAsFineWhenMeshesAreJoined)
{
    loader.merge = true;
    Strip const strip{-70.0123456789, -33.1234567891, 0.0213};
    EXPECT_LT(farthest(strip.corners(), placed(strip.written(true))), millimetres);
}

TEST_F(FltGlobeDegrees, placeModelsAsFine)
{
    FltWriter model(1580);
    model.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y, z] : {std::array{-1., 0., 0.}, {1., 0., 0.}, {0., 0., 0.125}})
        corners.push_back(model.vertex("VertexColor", x, y, z));
    model.push().add("Object").push();
    model.face(corners, {{"texturePatternIndex", -1}, {"materialIndex", -1}}).pop();
    save(model, "model.flt");
    Strip const strip{9.0123456789, 47.1234567891, 0.0113};
    Place const foot{9.0171717171, 47.1313131313, 123};
    FltWriter land = strip.written();
    land.add("ExternalReference", {{"asciiPath", "model.flt"}})
        .add("Translate", {{"deltaX", foot.longitude}, {"deltaY", foot.latitude}, {"deltaZ", foot.height}});
    auto const placedCorners = placed(land);
    ASSERT_EQ(placedCorners.size(), strip.corners().size() + 3);
    SbVec3d const middle =
        (placedCorners[placedCorners.size() - 3].place + placedCorners[placedCorners.size() - 2].place) / 2;
    EXPECT_LT(OnEarth::distance(middle, foot.onEarth()), centimetre);
}

TEST_F(FltGlobeDegrees, areDrawnWhereTheyWereStored)
{
    Strip const strip{9.0123456789, 47.1234567891, 0.0113};
    FltScene const scene = loader.load(save(strip.written()));
    DrawnScene const drawn(scene.root());
    ASSERT_EQ(drawn.triangles.size(), 14U);
    for (Place const& place : strip.corners()) {
        double least = 1;
        for (DrawnScene::Primitive const& triangle : drawn.triangles)
            for (SbVec3f const& point : triangle.points) {
                SbVec3d const way = SbVec3d(point) - SbVec3d(place.longitude, place.latitude, place.height);
                least = std::min(least, way.length());
            }
        EXPECT_LT(least, 1e-5) << "as far as floats go";
    }
}

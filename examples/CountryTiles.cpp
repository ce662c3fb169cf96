#include "CountryTiles.h"

#include "CountryPlan.h"
#include "Noise.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

constexpr int cells = 6; ///< Along each side of a tile, at the finest level.
constexpr double cellSize = 200;

/// @name Where the country is
/// 47.5 degrees north and 9 degrees east, on the shore of Lake Constance; on the middle of UTM zone 32.
/// @{
constexpr double latitude = 47.5, longitude = 9;
constexpr int zone = 32;
constexpr double easting = 500000, northing = 5260729.733077;
/// @}

/// @name Numbers of the format
/// @{
constexpr int revision = 1580;
constexpr int flatEarthProjection = 0, utmProjection = 4;
constexpr int litVertexColor = 3;
constexpr int ground = 0;   ///< The texture of the land.
constexpr int haystack = 1; ///< What is defined once and shown in several places.
/// @}

/// A level of detail of the land.
struct Level {
    char const* id;
    int stride; ///< How many cells of the finest level are one.
    double to;  ///< From how near on a finer one shows.
};
constexpr std::array<Level, 3> landLevels{{{"fine", 1, 0}, {"middle", 2, 4000}, {"coarse", cells, 10000}}};
constexpr double farthest = 100000;

/// How high the land is, so many metres from the middle of the country: mountains in the south.
double heightAt(double east, double north)
{
    double const mountain = noise(east + 31, north, 7000);
    return 400 + 160 * noise(east, north, 9100) + 70 * noise(east, north + 17, 2300) +
           24 * noise(east, north, 700) + 1500 * mountain * mountain * smoothStep(4000, 40000, -north);
}

Color colorAt(double height, double steepness, double east, double north)
{
    Color const field = mix({122, 152, 74}, {186, 172, 98}, smoothStep(0.45, 0.6, noise(east, north, 900)));
    Color color = mix(field, {92, 116, 66}, smoothStep(620, 1000, height));
    color = mix(color, {142, 136, 128}, smoothStep(0.35, 0.7, steepness) + smoothStep(1250, 1500, height));
    return mix(color, {244, 246, 250}, smoothStep(1550, 1750, height));
}

/// The records of the land at one level.
/// @param vertices rows of them from the south-west
std::string landRecords(Level const& level, std::vector<double> const& vertices)
{
    FltWriter flt(revision);
    std::size_t const start = flt.bytes().size();
    flt.add("Object", {{"idASCII", level.id}}).push();
    FltWriter::Fields const look = {{"lightMode", litVertexColor}, {"texturePatternIndex", ground}};
    for (int row = 0; row < cells; row += level.stride)
        for (int column = 0; column < cells; column += level.stride) {
            auto const at = [&](int right, int up) {
                int const y = row + up * level.stride, x = column + right * level.stride;
                int const place = y * (cells + 1) + x;
                return vertices[static_cast<std::size_t>(place)];
            };
            flt.face({at(0, 0), at(1, 0), at(1, 1)}, look);
            flt.face({at(0, 0), at(1, 1), at(0, 1)}, look);
        }
    flt.pop();
    return flt.bytes().substr(start);
}

std::string haystackRecords(VertexPalette& palette)
{
    Model stack(palette);
    stack.turned({0, 0, -0.5}, 2.4, 2.6, 2.5, 6, painted({206, 184, 110}));
    stack.turned({0, 0, 2}, 2.6, 0, 2.2, 6, painted({190, 166, 96}));
    FltWriter flt(revision);
    std::size_t const start = flt.bytes().size();
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", haystack}}).push();
    stack.write(flt, "stack");
    flt.pop();
    return flt.bytes().substr(start);
}

} // namespace

/// The land of one tile.
struct CountryTiles::Land {
    /// @param column,row the tile, counted from the middle of the country
    Land(int column, int row, Point shift) : column(column), row(row), shift(shift)
    {
        for (int y = -1; y <= cells + 1; ++y)
            for (int x = -1; x <= cells + 1; ++x)
                heights.push_back(heightAt(east(x), north(y)));
    }

    /// Metres from the middle of the country, for a corner of a cell. Neighbours get the same number.
    double east(int x) const { return (column * cells + x) * cellSize; }
    double north(int y) const { return (row * cells + y) * cellSize; }

    /// Adds the corners of all cells in rows from the south-west. @return their offsets
    std::vector<double> addTo(VertexPalette& palette) const
    {
        std::vector<double> vertices;
        for (int y = 0; y <= cells; ++y)
            for (int x = 0; x <= cells; ++x) {
                Point const place = corner(x, y), up = normal(x, y);
                double const steepness = std::hypot(up.x, up.y) / up.z;
                vertices.push_back(palette.smoothMapped(place, up, 2.0 * x, 2.0 * y,
                                                        colorAt(place.z, steepness, east(x), north(y))));
            }
        return vertices;
    }

    double height(int x, int y) const
    {
        int const place = (y + 1) * (cells + 3) + x + 1;
        return heights[static_cast<std::size_t>(place)];
    }

    Point corner(int x, int y) const { return Point{east(x), north(y), height(x, y)} + shift; }

    Point normal(int x, int y) const
    {
        return normalized(
            {height(x - 1, y) - height(x + 1, y), height(x, y - 1) - height(x, y + 1), 2 * cellSize});
    }

    /// A place on the triangles of the finest level, with x and y in cells. It is moved to a half of a metre,
    /// so that a matrix, which holds floats, has it as it is.
    Point on(double x, double y) const
    {
        Point place = corner(0, 0) + Point{x * cellSize, y * cellSize, 0};
        place = {std::round(2 * place.x) / 2, std::round(2 * place.y) / 2, 0};
        Point const within = place - corner(0, 0);
        x = within.x / cellSize;
        y = within.y / cellSize;
        int const cx = static_cast<int>(x), cy = static_cast<int>(y);
        double const fx = x - cx, fy = y - cy, first = height(cx, cy), last = height(cx + 1, cy + 1);
        place.z = fx > fy ? first + fx * (height(cx + 1, cy) - first) + fy * (last - height(cx + 1, cy))
                          : first + fy * (height(cx, cy + 1) - first) + fx * (last - height(cx, cy + 1));
        return place;
    }

    int column;
    int row;
    Point shift; ///< From the middle of the country to the zero of the coordinates.
    std::vector<double> heights;
};

CountryTiles::CountryTiles(CountryPlan const& plan, Projection projection)
    : plan(plan), wayBack(plan.wayBack()), projection(projection), commonVertices(revision),
      definition(haystackRecords(commonVertices))
{
    VertexPalette palette = commonVertices;
    std::vector<double> const vertices = Land(0, 0, {}).addTo(palette);
    std::transform(landLevels.begin(), landLevels.end(), levels.begin(),
                   [&](Level const& level) { return landRecords(level, vertices); });
}

FltWriter CountryTiles::begin() const
{
    bool const isUtm = projection == Projection::utm;
    return FltWriter(revision, {{"id", "tile"},
                                {"lastRevisionDateTime", "Mon Jan  5 09:00:00 2026"},
                                {"projectionType", isUtm ? utmProjection : flatEarthProjection},
                                {"utmZone", isUtm ? zone : 0},
                                {"originLatitude", latitude},
                                {"originLongitude", longitude}});
}

void CountryTiles::addReference(FltWriter& flt, char const* model, Point place, double degrees) const
{
    flt.add("ExternalReference", {{"asciiPath", wayBack + "models/" + model}});
    flt.add("Matrix", placedAt(place, degrees));
}

void CountryTiles::addModels(FltWriter& flt, Land const& land, int seed) const
{
    constexpr int haystacks = 3, mostOfAKind = 3, aMastEvery = 16;
    auto const chance = [&](int what) { return lattice(seed, what); };
    // Away from the edges, so that nothing reaches into a neighbour.
    auto const place = [&](int what) {
        return land.on(0.5 + (cells - 1) * chance(what), 0.5 + (cells - 1) * chance(what + 1));
    };
    int what = 0;
    for (char const* model : {"farm.flt", "wood.flt"})
        for (int count = static_cast<int>(chance(++what) * (mostOfAKind + 1)); count > 0; --count, what += 3)
            addReference(flt, model, place(what + 1), 360 * chance(what + 3));
    if (seed % aMastEvery == 0)
        addReference(flt, "mast.flt", place(++what), 0);
    for (int i = 0; i < haystacks; ++i, what += 2) {
        flt.add("Group", {{"idASCII", "stack" + std::to_string(i + 1)}}).add("Matrix", placedAt(place(what)));
        flt.push().add("InstanceReference", {{"instanceDefinitionNumber", haystack}}).pop();
    }
}

std::string CountryTiles::make(int tile) const
{
    Point const shift = projection == Projection::utm ? Point{easting, northing, 0} : Point{};
    Land const land(plan.eastward(tile), plan.northward(tile), shift);
    Point const middle = land.corner(cells / 2, cells / 2);
    VertexPalette palette = commonVertices;
    land.addTo(palette);

    FltWriter flt = begin();
    flt.add("TexturePattern", {{"fileName", wayBack + "textures/ground.png"}, {"patternIndex", ground}});
    palette.write(flt);
    flt.push().addBytes(definition);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        flt.add("LOD", {{"idASCII", landLevels[i].id},
                        {"switchInDistance", i + 1 < levels.size() ? landLevels[i + 1].to : farthest},
                        {"switchOutDistance", landLevels[i].to},
                        {"XcenterCoordinate", middle.x},
                        {"YcenterCoordinate", middle.y},
                        {"ZcenterCoordinate", middle.z}});
        flt.push().addBytes(levels[i]);
        if (i == 0)
            addModels(flt, land, tile);
        flt.pop();
    }
    flt.pop();
    return flt.bytes();
}

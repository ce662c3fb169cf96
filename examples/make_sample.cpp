// Writes the sample database: a small airfield between hills.
//
//     make_sample [--force] [airfield.flt]
//
// Beside the database stands a directory of the same name without ".flt", with its textures and with the
// terminal, a database of its own that the airfield refers to. The same bytes come out every time.

#include "ExampleProgram.h"
#include "Model.h"
#include "Noise.h"
#include "Textures.h"
#include "support/ToolError.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

/// @name Palettes
/// Positions in the palettes that faces refer to.
/// @{
enum PaletteColor { red = 1, white, yellow, concrete, steel, rubber, orange };
enum MaterialIndex { glass, water };
enum Pattern { asphalt, corrugation };

void addPalettes(FltWriter& flt, std::string const& directory)
{
    // Words of alpha, blue, green and red.
    std::vector<double> colors(1024, 0xff808080);
    colors[red] = 0xff2a2ac8;
    colors[white] = 0xfff4f6f8;
    colors[yellow] = 0xff2cc0f0;
    colors[concrete] = 0xffb4c0c6;
    colors[steel] = 0xffa09890;
    colors[rubber] = 0xff282828;
    colors[orange] = 0xff1e78f0;
    flt.add("ColorPalette", {{"color", colors}});
    flt.add("Material", {{"index", glass},
                         {"name", "glass"},
                         {"ambient", {0.25, 0.4, 0.45}},
                         {"diffuse", {0.3, 0.5, 0.58}},
                         {"specular", {0.9, 0.9, 0.9}},
                         {"shininess", 96},
                         {"alpha", 0.55}});
    flt.add("Material", {{"index", water},
                         {"name", "water"},
                         {"ambient", {0.10, 0.26, 0.34}},
                         {"diffuse", {0.14, 0.36, 0.46}},
                         {"specular", {0.5, 0.5, 0.5}},
                         {"shininess", 64},
                         {"alpha", 0.8}});
    flt.add("TexturePattern", {{"fileName", directory + "/asphalt.png"}, {"patternIndex", asphalt}});
    flt.add("TexturePattern", {{"fileName", directory + "/corrugation.rgb"}, {"patternIndex", corrugation}});
}
/// @}

/// A level rectangle, seen from above.
std::vector<Point> rectangle(double x0, double y0, double x1, double y1, double z = 0)
{
    return {{x0, y0, z}, {x1, y0, z}, {x1, y1, z}, {x0, y1, z}};
}

/// @name The land
/// @{
constexpr double west = -330, east = 330, south = -230, north = 270, cell = 10;
constexpr int columns = static_cast<int>((east - west) / cell),
              rows = static_cast<int>((north - south) / cell);
constexpr double lakeLevel = -3;

/// How far a place is from the level ground of the airfield.
double distanceFromField(double x, double y)
{
    double const dx = std::max({-285 - x, x - 285, 0.0});
    double const dy = std::max({-125 - y, y - 105, 0.0});
    return std::sqrt(dx * dx + dy * dy);
}

double landHeight(double x, double y)
{
    double const rise = smoothStep(5, 150, distanceFromField(x, y));
    double const rolling = 34 * noise(x + 40, y, 110) + 14 * noise(x, y, 43) + 5 * noise(x, y, 19);
    double const mountains = 95 * smoothStep(110, 300, y) * (0.35 + noise(x + 700, y + 90, 150)) *
                             (1 - 0.45 * smoothStep(0, 330, x));
    double const lake = 34 * std::exp(-((x - 140) * (x - 140) / 8000 + (y + 183) * (y + 183) / 700));
    return rise * (rolling * (y < 0 ? 0.45 : 1.0) + mountains) -
           smoothStep(0, 60, distanceFromField(x, y)) * lake - 0.6;
}

Point land(double x, double y)
{
    return {x, y, landHeight(x, y)};
}

Point landNormal(double x, double y)
{
    constexpr double reach = 4;
    return normalized({landHeight(x - reach, y) - landHeight(x + reach, y),
                       landHeight(x, y - reach) - landHeight(x, y + reach), 2 * reach});
}

/// Sand at the water, grass and heath on the slopes, rock where it is steep or high.
Color landColor(Point place, Point normal)
{
    Color const meadow = mix({104, 140, 66}, {128, 152, 78}, noise(place.x, place.y, 35));
    Color const heath = mix({92, 112, 58}, {122, 112, 70}, noise(place.x, place.y, 28));
    Color const rock = mix({112, 106, 98}, {152, 144, 132}, noise(place.x, place.y, 14));
    Color color = mix(meadow, heath, smoothStep(18, 60, place.z));
    color = mix(color, rock, smoothStep(-0.86, -0.70, -normal.z) + smoothStep(84, 110, place.z));
    color = mix({196, 182, 138}, color, smoothStep(lakeLevel + 0.5, lakeLevel + 2.2, place.z));
    return color * (0.95 + 0.1 * lattice(static_cast<int>(place.x), static_cast<int>(place.y)));
}

/// The land in tiles: neighbouring triangles share their vertices, and so their normals.
std::vector<Model> makeLand(VertexPalette& palette)
{
    constexpr int tile = 22;
    std::vector<std::vector<double>> vertices(static_cast<std::size_t>(rows) + 1);
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column) {
            double const x = west + column * cell, y = south + row * cell;
            vertices[row].push_back(palette.smooth(land(x, y), landNormal(x, y)));
        }

    std::vector<Model> tiles;
    for (int firstRow = 0; firstRow < rows; firstRow += tile)
        for (int firstColumn = 0; firstColumn < columns; firstColumn += tile) {
            Model& model = tiles.emplace_back(palette);
            for (int row = firstRow; row < std::min(firstRow + tile, rows); ++row)
                for (int column = firstColumn; column < std::min(firstColumn + tile, columns); ++column) {
                    double const x = west + column * cell, y = south + row * cell;
                    auto const at = [&](int right, int up) { return vertices[row + up][column + right]; };
                    auto const look = [&](double dx, double dy) {
                        return painted(landColor(land(x + dx, y + dy), landNormal(x + dx, y + dy)));
                    };
                    model.face({at(0, 0), at(1, 0), at(1, 1)}, look(cell * 2 / 3, cell / 3));
                    model.face({at(0, 0), at(1, 1), at(0, 1)}, look(cell / 3, cell * 2 / 3));
                }
        }
    return tiles;
}

/// The cut edge of the land, down to a level base.
Model makeEdge(VertexPalette& palette)
{
    constexpr double base = -22;
    Model edge(palette);
    auto const addWall = [&](Point from, Point to) {
        auto const down = [](Point place) { return Point{place.x, place.y, base}; };
        edge.polygon({down(from), down(to), to, from}, painted({112, 92, 72}));
    };
    for (int column = 0; column < columns; ++column) {
        double const x = west + cell * column;
        addWall(land(x, south), land(x + cell, south));
        addWall(land(x + cell, north), land(x, north));
    }
    for (int row = 0; row < rows; ++row) {
        double const y = south + cell * row;
        addWall(land(east, y), land(east, y + cell));
        addWall(land(west, y + cell), land(west, y));
    }
    return edge;
}

Model makeLake(VertexPalette& palette)
{
    Model lake(palette);
    std::vector<double> shore;
    for (Point const& corner : rectangle(20, -222, 262, -146, lakeLevel))
        shore.push_back(palette.smooth(corner, {0, 0, 1}));
    lake.face(shore, ofMaterial(water));
    return lake;
}
/// @}

/// @name Pavement
/// @{
/// The strokes of "09" and "27", as on a seven-segment display, lying on the runway for pilots on approach.
void addNumber(Model& runway, std::string const& digits, double x, double y, int heading)
{
    // Of each stroke: across and along from the digit's middle, and half its size.
    static constexpr double strokes[7][4] = {{0, 6, 2.5, 0.6},  {2.2, 3, 0.6, 3.4},   {2.2, -3, 0.6, 3.4},
                                             {0, -6, 2.5, 0.6}, {-2.2, -3, 0.6, 3.4}, {-2.2, 3, 0.6, 3.4},
                                             {0, 0, 2.5, 0.6}};
    auto const litStrokes = [](char digit) {
        return digit == '0' ? "012345" : digit == '2' ? "01643" : digit == '7' ? "012" : "012356";
    };
    double across = -3.6;
    for (char digit : digits) {
        for (char const* stroke = litStrokes(digit); *stroke != '\0'; ++stroke) {
            auto const& [a, l, halfA, halfL] = strokes[*stroke - '0'];
            double const cx = x + heading * l, cy = y - heading * (across + a);
            runway.marking(rectangle(cx - halfL, cy - halfA, cx + halfL, cy + halfA), paletteColor(white));
        }
        across += 7.2;
    }
}

Model makeRunway(VertexPalette& palette)
{
    constexpr double middle = -90, half = 17, end = 262;
    Model runway(palette);
    runway.ground(rectangle(-end, middle - half, end, middle + half), 0.08,
                  textured(asphalt, {214, 214, 220}));
    auto const paint = [&](double x0, double y0, double x1, double y1) {
        runway.marking(rectangle(x0, middle + y0, x1, middle + y1), paletteColor(white));
    };
    paint(-end + 4, -half + 1.2, end - 4, -half + 2);
    paint(-end + 4, half - 2, end - 4, half - 1.2);
    for (int dash = 0; dash < 12; ++dash)
        paint(-192 + 32 * dash, -0.6, -174 + 32 * dash, 0.6);
    for (int bar = 0; bar < 7; ++bar) {
        double const y = -13 + 3.8 * bar;
        paint(-end + 8, y, -end + 32, y + 2.2);
        paint(end - 32, y, end - 8, y + 2.2);
    }
    for (double x : {-176.0, 156.0})
        for (double y : {-9.0, 5.0})
            paint(x, y, x + 20, y + 4);
    addNumber(runway, "09", -end + 46, middle, 1);
    addNumber(runway, "27", end - 46, middle, -1);
    return runway;
}

Model makeApron(VertexPalette& palette)
{
    Model apron(palette);
    auto const look = textured(asphalt, {236, 234, 228});
    apron.ground(rectangle(-150, -38, 160, 60), 0.05, look);
    for (double x : {-120.0, 112.0})
        apron.ground(rectangle(x - 9, -73, x + 9, -38), 0.08, look);
    auto const yellowLine = [&](double x0, double y0, double x1, double y1) {
        apron.marking(rectangle(x0, y0, x1, y1), paletteColor(yellow));
    };
    for (double x : {-120.0, 112.0})
        yellowLine(x - 0.5, -73, x + 0.5, -22);
    yellowLine(-120.5, -22.5, 112.5, -21.5);
    for (int place = 0; place < 5; ++place)
        yellowLine(-24.4 + 32 * place, -21.5, -23.6 + 32 * place, 12);
    return apron;
}
/// @}

/// @name Buildings and things, each about its own origin
/// @{
Model makeHangar(VertexPalette& palette, Color color)
{
    constexpr double halfWidth = 17, depth = 32, wall = 7, rise = 7;
    constexpr int arches = 10;
    Model hangar(palette);
    auto const sheet = textured(corrugation, color);
    std::vector<Point> front;
    for (int i = 0; i <= arches; ++i) {
        double const angle = M_PI * i / arches;
        front.push_back({halfWidth * std::cos(angle), 0, wall + rise * std::sin(angle)});
    }
    Point const back{0, depth, 0};
    for (int i = 0; i < arches; ++i)
        hangar.panel({front[i], front[i] + back, front[i + 1] + back, front[i + 1]}, 6, 1, sheet);
    hangar.panel({Point{halfWidth, 0, 0}, Point{halfWidth, depth, 0}, Point{halfWidth, depth, wall},
                  Point{halfWidth, 0, wall}},
                 6, 1, sheet);
    hangar.panel({Point{-halfWidth, depth, 0}, Point{-halfWidth, 0, 0}, Point{-halfWidth, 0, wall},
                  Point{-halfWidth, depth, wall}},
                 6, 1, sheet);

    std::vector<Point> gable{{-halfWidth, 0, 0}, {halfWidth, 0, 0}};
    gable.insert(gable.end(), front.begin(), front.end());
    hangar.polygon(gable, painted(color * 0.92));
    std::vector<Point> rear;
    for (auto corner = gable.rbegin(); corner != gable.rend(); ++corner)
        rear.push_back(*corner + back);
    hangar.polygon(rear, painted(color * 0.92));
    // Doors of four leaves, one of them open.
    for (int leaf = 0; leaf < 4; ++leaf) {
        double const x = -13 + leaf * 6.5;
        hangar.box({x, -0.25 - 0.15 * (leaf % 2), 0}, {x + 6.3, -0.05, 8},
                   leaf == 2 ? painted({58, 60, 64}) : paletteColor(steel, 118 - 8 * (leaf % 2)));
    }
    return hangar;
}

Model makeTower(VertexPalette& palette)
{
    Model tower(palette);
    tower.box({-9, -7, 0}, {9, 7, 6}, paletteColor(concrete, 118));
    tower.turned({0, 0, 6}, 3.6, 3.0, 20, 12, paletteColor(concrete));
    tower.turned({0, 0, 25}, 3.0, 6.4, 2.5, 12, paletteColor(concrete, 112));
    tower.turned({0, 0, 32}, 7.0, 6.2, 0.9, 12, paletteColor(red));
    tower.turned({0, 0, 32.9}, 0.25, 0.1, 7, 5, paletteColor(steel));
    return tower;
}

Model makeTowerGlass(VertexPalette& palette)
{
    Model cab(palette);
    cab.turned({0, 0, 27.5}, 5.4, 6.6, 4.5, 12, ofMaterial(glass));
    return cab;
}

Model makeTank(VertexPalette& palette)
{
    Model tank(palette);
    tank.turned({0, 0, 0}, 7, 7, 9, 18, paletteColor(white, 120));
    tank.turned({0, 0, 9}, 7, 0, 1.6, 18, paletteColor(white, 108));
    tank.turned({0, 0, 6}, 7.06, 7.06, 1.2, 18, paletteColor(orange));
    return tank;
}

Model makeMast(VertexPalette& palette)
{
    Model mast(palette);
    mast.box({-3, -3, 0}, {3, 3, 4}, paletteColor(concrete, 116));
    for (int i = 0; i < 5; ++i)
        mast.turned({0, 0, 4.0 + 3 * i}, 0.9, 0.9, 3, 8, paletteColor(i % 2 == 0 ? red : white));
    return mast;
}

/// Curved, and seen from both sides.
Model makeDish(VertexPalette& palette)
{
    Model dish(palette);
    constexpr int steps = 8;
    for (int side : {1, -1})
        for (int i = 0; i < steps; ++i) {
            auto const edge = [&](int step) {
                double const t = 2.0 * step / steps - 1;
                return Point{7 * t, 2.4 * t * t, 0};
            };
            Point const left = edge(i), right = edge(i + 1), up{0, 0, 4.4};
            std::vector<Point> strip{left, right, right + up, left + up};
            if (side < 0)
                std::reverse(strip.begin(), strip.end());
            dish.polygon(strip, paletteColor(orange, side > 0 ? 127 : 108));
        }
    dish.turned({0, 0.6, -1}, 0.6, 0.6, 3, 6, paletteColor(steel));
    return dish;
}

Model makeBeacon(VertexPalette& palette, PaletteColor color)
{
    Model lamp(palette);
    lamp.turned({0, 0, 39}, 0.7, 1.0, 1.4, 8, paletteColor(color));
    return lamp;
}

/// @param drop how far the sock sinks on a metre of its length
Model makeWindsock(VertexPalette& palette, double drop)
{
    Model sock(palette);
    sock.turned({0, 0, 0}, 0.25, 0.2, 9, 6, paletteColor(steel));
    double const along = std::sqrt(1 - drop * drop);
    auto const at = [&](int i) { return Point{1.6 * along * i, 0, 8.4 - 1.6 * drop * i}; };
    for (int i = 0; i < 4; ++i)
        sock.tube({at(i), at(i + 1)}, {1.3 - 0.18 * i, 1.3 - 0.18 * (i + 1)}, 8,
                  paletteColor(i % 2 == 0 ? orange : white));
    return sock;
}

/// A leaf of a hangar's door, about its lower left corner.
Model makeDoor(VertexPalette& palette)
{
    Model door(palette);
    door.panel({Point{0, 0, 0}, Point{10, 0, 0}, Point{10, 0, 6}, Point{0, 0, 6}}, 3, 1,
               textured(corrugation));
    return door;
}

/// The outline of a bush: a face that isn't convex, and turns to the eye.
Model makeBush(VertexPalette& palette)
{
    Model bush(palette);
    bush.polygon({{-0.2, 0, 0},
                  {0.2, 0, 0},
                  {0.3, 0, 1},
                  {2, 0, 0.8},
                  {1.2, 0, 1.8},
                  {1.8, 0, 2.4},
                  {0.8, 0, 2.6},
                  {0, 0, 4},
                  {-0.8, 0, 2.6},
                  {-1.8, 0, 2.4},
                  {-1.2, 0, 1.8},
                  {-2, 0, 0.8},
                  {-0.3, 0, 1}},
                 turningToTheEye({58, 104, 44}));
    return bush;
}

Model makeLamp(VertexPalette& palette)
{
    Model lamp(palette);
    lamp.turned({0, 0, 0}, 0.5, 0.5, 0.8, 6, paletteColor(yellow));
    lamp.turned({0, 0, 0.8}, 0.9, 0, 0.9, 6, painted({255, 244, 200}));
    return lamp;
}

/// A light aircraft with its nose towards the south.
Model makeAircraft(VertexPalette& palette, Color trim)
{
    Model plane(palette);
    auto const body = paletteColor(white);
    plane.tube({{0, -7.4, 2.2}, {0, -7, 2.25}, {0, -5, 2.4}, {0, -1, 2.6}, {0, 3, 2.6}, {0, 8.6, 3.1}},
               {0.01, 0.5, 1.0, 1.25, 1.0, 0.2}, 12, body);
    plane.tube({{0, -7.8, 2.2}, {0, -7.2, 2.25}}, {0.05, 0.45}, 8, painted(trim));
    plane.box({-9.5, -2.4, 3.55}, {9.5, -0.2, 3.8}, body);
    plane.box({-9.9, -2.4, 3.5}, {-8.6, -0.2, 3.85}, painted(trim));
    plane.box({8.6, -2.4, 3.5}, {9.9, -0.2, 3.85}, painted(trim));
    plane.box({-3.4, 7.2, 3.2}, {3.4, 8.6, 3.4}, body);
    plane.box({-0.14, 6.8, 3.2}, {0.14, 8.8, 5.8}, painted(trim));
    plane.box({-1.26, -3.4, 2.9}, {1.26, -1.6, 3.5}, painted({46, 62, 78}));
    for (double x : {-1.9, 1.9})
        plane.tube({{x - 0.25, -1.2, 0.6}, {x + 0.25, -1.2, 0.6}}, {0.6, 0.6}, 10, paletteColor(rubber));
    for (double x : {-1.9, 1.9})
        plane.box({x - 0.12, -1.35, 0.6}, {x + 0.12, -1.05, 2.2}, paletteColor(steel));
    plane.box({-0.1, -6.1, 0.6}, {0.1, -5.8, 2}, paletteColor(steel));
    plane.tube({{-0.2, -6, 0.5}, {0.2, -6, 0.5}}, {0.5, 0.5}, 10, paletteColor(rubber));
    return plane;
}
/// @}

/// @name Trees
/// @{
Model makeTree(VertexPalette& palette, int sides, Color color)
{
    Model tree(palette);
    if (sides > 4) {
        tree.turned({0, 0, -1}, 0.5, 0.4, 3.5, 5, painted({96, 70, 48}));
        tree.turned({0, 0, 2}, 3.0, 0.9, 3.6, sides, painted(color * 0.86));
        tree.turned({0, 0, 4.6}, 2.3, 0.6, 3.0, sides, painted(color * 0.95));
        tree.turned({0, 0, 6.8}, 1.6, 0, 3.6, sides, painted(color * 1.06));
    } else {
        tree.turned({0, 0, 0}, 2.6, 0, 10, sides, painted(color));
    }
    return tree;
}

struct Wood {
    Point middle;
    double radius;
    int trees;
};

/// A wood near and far: many-sided trees to 1500 m, plain ones beyond.
void addWood(FltWriter& flt, int number, Wood const& wood, std::vector<Model> const& nearTrees,
             std::vector<Model> const& farTrees)
{
    struct Range {
        char const* name;
        double in;
        double out;
        std::vector<Model> const& trees;
    };
    for (Range const& range : {Range{"near", 1500, 0, nearTrees}, Range{"far", 20000, 1500, farTrees}}) {
        Point const middle = land(wood.middle.x, wood.middle.y);
        flt.add("LOD", {{"idASCII", range.name},
                        {"switchInDistance", range.in},
                        {"switchOutDistance", range.out},
                        {"XcenterCoordinate", middle.x},
                        {"YcenterCoordinate", middle.y},
                        {"ZcenterCoordinate", middle.z}});
        flt.add("LongID", {{"idASCII", "wood_" + std::to_string(number) + "_" + range.name}});
        flt.push();
        for (int i = 0; i < wood.trees; ++i) {
            double const angle = 2 * M_PI * lattice(i, number), far = std::sqrt(lattice(i + 50, number));
            double const x = wood.middle.x + wood.radius * far * std::cos(angle);
            double const y = wood.middle.y + wood.radius * far * std::sin(angle);
            if (std::abs(x) > 325 || y < south + 5 || y > north - 5 || landHeight(x, y) < lakeLevel + 2)
                continue;
            std::size_t const kind = static_cast<std::size_t>(i) % range.trees.size();
            range.trees[kind].write(
                flt, "tree" + std::to_string(i),
                placedAt(land(x, y), 90 * lattice(i, 7), 0.9 + 0.8 * lattice(i, number + 90)));
        }
        flt.pop();
    }
}
/// @}

/// @name The hierarchy
/// @{
void openGroup(FltWriter& flt, std::string const& id, std::string const& longID,
               std::string const& comment = "")
{
    flt.add("Group", {{"idASCII", id}});
    flt.add("LongID", {{"idASCII", longID}});
    if (!comment.empty())
        flt.add("Comment", {{"textDescription", comment}});
    flt.push();
}

/// The lamp, and copies of it at equal steps.
void addRowOfLamps(FltWriter& flt, std::string const& id, Model const& lamp, Point first, Point step,
                   int copies)
{
    flt.add("Group", {{"idASCII", id}});
    flt.add("Replicate", {{"numberOfReplications", copies}});
    // A copy takes two matrices, of which the second moves it on from the copy before. The records that a
    // copy passes over are light points: the light of each lamp, as far as other programs are concerned.
    for (int i = 0; i < copies; ++i)
        flt.add("Matrix", placedAt({})).add("Matrix", placedAt(step));
    for (int i = 0; i < copies; ++i)
        flt.add("LightPoint", {{"idASCII", "lp" + std::to_string(i)}});
    flt.push();
    lamp.write(flt, "lamp", placedAt(first));
    flt.pop();
}

/// Another place for what has been defined. The reference stands in a level of its own behind the group's.
void addInstance(FltWriter& flt, std::string const& id, int definition, Point place, double degrees)
{
    flt.add("Group", {{"idASCII", id}}).add("Matrix", placedAt(place, degrees));
    flt.push().pop();
    flt.push().add("InstanceReference", {{"instanceDefinitionNumber", definition}}).pop();
}

/// Two masks: the red lamp of one state, and the white one of the other.
void addBeacon(FltWriter& flt, Point place, Model const& redLamp, Model const& whiteLamp)
{
    flt.add("Switch", {{"idASCII", "beacon"},
                       {"indexOfCurrentMask", 0},
                       {"numberOfMasks", 2},
                       {"numberOf32BitWordsPerMask", 1},
                       {"masks", {1, 2}}});
    flt.push();
    redLamp.write(flt, "red", placedAt(place));
    whiteLamp.write(flt, "white", placedAt(place));
    flt.pop();
}

/// Turns about the mast, a full circle.
void addRadar(FltWriter& flt, Point place, Model const& mast, Model const& dish)
{
    mast.write(flt, "mast", placedAt(place));
    Point const top = place + Point{0, 0, 20};
    flt.add("DOF", {{"idASCII", "radar"},
                    {"XOriginOfDOFLocalCoordinateSystem", top.x},
                    {"YOriginOfDOFLocalCoordinateSystem", top.y},
                    {"ZOriginOfDOFLocalCoordinateSystem", top.z},
                    {"XPointOnXAxisOfDOFLocalCoordinateSystem", top.x + 1},
                    {"YPointOnXAxisOfDOFLocalCoordinateSystem", top.y},
                    {"ZPointOnXAxisOfDOFLocalCoordinateSystem", top.z},
                    {"XPointInXYPlaneOfDOFLocalCoordinateSystem", top.x},
                    {"YPointInXYPlaneOfDOFLocalCoordinateSystem", top.y + 1},
                    {"ZPointInXYPlaneOfDOFLocalCoordinateSystem", top.z},
                    {"minimumYaw", -180},
                    {"maxYaw", 180},
                    {"incrementInYaw", 2}});
    flt.add("Matrix", placedAt(top, 150));
    flt.push();
    dish.write(flt, "dish");
    flt.pop();
}

/// Slack or filled by the wind: a mask for each.
void addWindsock(FltWriter& flt, Point place, Model const& slack, Model const& filled)
{
    flt.add("Switch", {{"idASCII", "windsock"},
                       {"indexOfCurrentMask", 1},
                       {"numberOfMasks", 2},
                       {"numberOf32BitWordsPerMask", 1},
                       {"masks", {1, 2}}});
    flt.push();
    slack.write(flt, "slack", placedAt(place, -20));
    filled.write(flt, "filled", placedAt(place, -20));
    flt.pop();
}

/// Slides along the hangar's front, as far as it is wide.
void addDoor(FltWriter& flt, Point place, Model const& door)
{
    flt.add("DOF", {{"idASCII", "door"},
                    {"XPointOnXAxisOfDOFLocalCoordinateSystem", 1},
                    {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 1},
                    {"XMaxValue", 10},
                    {"XCurrentValue", 4},
                    {"XIncrement", 0.1},
                    {"flags", 0x80000000U}});
    flt.add("Matrix", placedAt(place));
    flt.push();
    door.write(flt, "leaf");
    flt.pop();
}

/// Points of light in the colours of their vertices.
void addLights(FltWriter& flt, std::string const& id, std::vector<double> const& lamps)
{
    flt.add("LightPoint", {{"idASCII", id}, {"actualPixelSize", 4}}).push();
    flt.add("VertexList", {{"offsets", lamps}}).pop();
}

void addSign(FltWriter& flt, Point place)
{
    flt.add("Text", {{"idASCII", "sign"},
                     {"color", yellow << 7 | 127},
                     {"XlowerLeftCorner", place.x},
                     {"YlowerLeftCorner", place.y},
                     {"ZlowerLeftCorner", place.z},
                     {"XupperRightCorner", place.x + 24},
                     {"YupperRightCorner", place.y},
                     {"ZupperRightCorner", place.z + 5}});
    flt.add("Comment", {{"textDescription", "VELLO FIELD"}});
}

/// A fence as a mesh: its vertices stand in a pool of its own, and one strip draws it.
void addFence(FltWriter& flt, Point from, Point to, int posts)
{
    constexpr int bothSides = 1, litFaceColor = 2, triangleStrip = 1;
    constexpr long positions = 0x80000000L;
    std::string const none = FltWriter::big16(-1);
    std::string mesh = "fence" + std::string(75, '\0');
    mesh[18] = bothSides;
    for (std::size_t const at : {26U, 28U, 30U})
        mesh.replace(at, 2, none);
    mesh.replace(44, 4, FltWriter::big32(0x10000000));
    mesh[48] = litFaceColor;
    mesh.replace(56, 4, std::string("\xff\x78\x88\x90", 4));
    flt.addRaw(84, mesh);
    std::string pool = FltWriter::big32(2L * posts) + FltWriter::big32(positions);
    std::string strip = FltWriter::big16(triangleStrip) + FltWriter::big16(2) + FltWriter::big32(2L * posts);
    for (int i = 0; i < 2 * posts; ++i) {
        double const along = (i - i % 2) / (2.0 * (posts - 1));
        Point const place = from + (to - from) * along;
        for (double const part : {place.x, place.y, place.z + (i % 2 == 0 ? 2.2 : 0)})
            pool += FltWriter::bigDouble(part);
        strip += FltWriter::big16(i);
    }
    flt.addRaw(85, pool).push().addRaw(86, strip).pop();
}

std::string makeAirfield(std::string const& directory)
{
    VertexPalette palette;
    std::vector<Model> const tiles = makeLand(palette);
    Model const edge = makeEdge(palette);
    Model const lake = makeLake(palette);
    Model const runway = makeRunway(palette);
    Model const apron = makeApron(palette);
    std::vector<Model> const hangars = {makeHangar(palette, {176, 196, 208}),
                                        makeHangar(palette, {204, 196, 176}),
                                        makeHangar(palette, {172, 190, 164})};
    Model const tower = makeTower(palette);
    Model const towerGlass = makeTowerGlass(palette);
    Model const redLamp = makeBeacon(palette, red);
    Model const whiteLamp = makeBeacon(palette, white);
    Model const tank = makeTank(palette);
    Model const mast = makeMast(palette);
    Model const dish = makeDish(palette);
    Model const slackSock = makeWindsock(palette, 0.95);
    Model const filledSock = makeWindsock(palette, 0.15);
    Model const door = makeDoor(palette);
    Model const bush = makeBush(palette);
    std::vector<double> runwayLights;
    runwayLights.reserve(34);
    for (int pair = 0; pair < 17; ++pair)
        for (double const side : {-109.5, -70.5})
            runwayLights.push_back(palette.lamp({-256.0 + 32 * pair, side, 1.8}, {255, 236, 150}));
    std::vector<double> apronLights;
    apronLights.reserve(32);
    for (int i = 0; i < 32; ++i)
        apronLights.push_back(palette.lamp({-150.0 + 10 * i, 61, 0.4}, {90, 140, 255}));
    Model const lamp = makeLamp(palette);
    Model const aircraft = makeAircraft(palette, {196, 52, 44});
    std::vector<Model> const nearTrees = {makeTree(palette, 7, {52, 92, 46}),
                                          makeTree(palette, 7, {66, 104, 48}),
                                          makeTree(palette, 7, {44, 82, 52})};
    std::vector<Model> const farTrees = {makeTree(palette, 4, {52, 92, 46}),
                                         makeTree(palette, 4, {66, 104, 48})};

    FltWriter flt(1570, {{"id", "airfld"}, {"lastRevisionDateTime", "Mon Jan  5 09:00:00 2026"}});
    flt.add("Comment",
            {{"textDescription", "A small airfield between hills, in metres: x east, y north, z up"}});
    addPalettes(flt, directory);
    palette.write(flt);

    flt.push();
    openGroup(flt, "land", "land_and_water", "Hills in the north, a lake in the south-east");
    for (std::size_t i = 0; i < tiles.size(); ++i)
        tiles[i].write(flt, "tile" + std::to_string(i));
    edge.write(flt, "edge");
    flt.pop();

    openGroup(flt, "pavement", "runway_and_apron");
    runway.write(flt, "runway");
    apron.write(flt, "apron");
    flt.pop();

    openGroup(flt, "lights", "runway_lights");
    for (double y : {-109.5, -70.5})
        addRowOfLamps(flt, y < -90 ? "south" : "north", lamp, {-256, y, 0}, {32, 0, 0}, 16);
    addLights(flt, "apron", apronLights);
    addLights(flt, "runway", runwayLights);
    flt.pop();

    openGroup(flt, "houses", "buildings");
    for (std::size_t i = 0; i < hangars.size(); ++i)
        hangars[i].write(flt, "hangar" + std::to_string(i + 1),
                         placedAt({-124 + 40.0 * static_cast<double>(i), 62, 0}));
    for (int i = 0; i < 3; ++i)
        tank.write(flt, "tank" + std::to_string(i + 1),
                   placedAt({-190 + 17.0 * i, i == 1 ? 36.0 : 22.0, -0.6}));
    addRadar(flt, {-205, 70, -0.6}, mast, dish);
    flt.add("Group", {{"idASCII", "tower"}}).add("LongID", {{"idASCII", "control_tower"}}).push();
    tower.write(flt, "shaft", placedAt({128, 72, 0}));
    addBeacon(flt, {128, 72, 0}, redLamp, whiteLamp);
    towerGlass.write(flt, "cab", placedAt({128, 72, 0}));
    flt.pop();
    addDoor(flt, {-133, 61.7, 0}, door);
    addWindsock(flt, {-60, -56, -0.6}, slackSock, filledSock);
    flt.add("ExternalReference", {{"asciiPath", directory + "/terminal.flt"}});
    flt.pop();

    // What shows definitions in their places draws the first aircraft twice in the same one.
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    flt.push();
    aircraft.write(flt, "aircraft", placedAt({8, 4, 0}));
    flt.pop();
    addInstance(flt, "parked1", 1, {0, 0, 0}, 0);
    addInstance(flt, "parked2", 1, {32, 0, 0}, 0);
    addInstance(flt, "parked3", 1, {64, 0, 0}, 0);
    addInstance(flt, "landing", 1, {-44, -87, 14}, 90);

    openGroup(flt, "garden", "bushes_and_fence");
    for (int i = 0; i < 9; ++i)
        bush.write(flt, "bush" + std::to_string(i),
                   placedAt({-150.0 + 38 * i, -44.0 - 5 * (i % 2), -0.6}, 0, 1.2));
    flt.add("Object", {{"idASCII", "fence"}}).push();
    addFence(flt, {-150, -66, -0.6}, {90, -66, -0.6}, 25);
    flt.pop().pop();

    openGroup(flt, "trees", "woods");
    std::vector<Wood> const woods = {
        {{-240, 150, 0}, 50, 34}, {{-150, 175, 0}, 48, 34},  {{-40, 160, 0}, 46, 30},
        {{60, 150, 0}, 44, 28},   {{160, 165, 0}, 55, 34},   {{260, 130, 0}, 50, 30},
        {{-285, 20, 0}, 40, 16},  {{-250, -170, 0}, 55, 26}, {{-110, -185, 0}, 50, 24},
        {{20, -175, 0}, 30, 12},  {{300, -160, 0}, 30, 14},  {{-20, 118, 0}, 14, 8}};
    for (std::size_t i = 0; i < woods.size(); ++i)
        addWood(flt, static_cast<int>(i) + 1, woods[i], nearTrees, farTrees);
    flt.pop();
    // Last, since what is seen through it must be drawn before.
    openGroup(flt, "lake", "lake");
    lake.write(flt, "water");
    flt.pop();
    addSign(flt, {42, 58, 13});
    flt.pop();
    return flt.bytes();
}

/// A building with a database of its own: two storeys of windows below a flat roof.
std::string makeTerminal()
{
    constexpr double width = 64, depth = 22, height = 11;
    VertexPalette palette;
    Model house(palette);
    Point const corners[4] = {{0, 0, 0}, {width, 0, 0}, {width, depth, 0}, {0, depth, 0}};
    for (int i = 0; i < 4; ++i) {
        Point const a = corners[i], b = corners[(i + 1) % 4], up{0, 0, height};
        house.panel({a, b, b + up, a + up}, i % 2 == 0 ? 12 : 4, 2, textured(0));
    }
    Model roof(palette);
    roof.box({-1.5, -3, height}, {width + 1.5, depth + 1, height + 1}, painted({150, 84, 62}));
    roof.box({20, 6, height + 1}, {44, 16, height + 4}, painted({214, 206, 190}));
    roof.box({24, -7, 5}, {40, 0, 5.5}, painted({70, 90, 110}));
    for (double x : {25.0, 39.0})
        roof.turned({x, -6.4, 0}, 0.3, 0.3, 5, 6, painted({200, 200, 204}));

    FltWriter flt(1570, {{"id", "termnl"}, {"lastRevisionDateTime", "Mon Jan  5 09:00:00 2026"}});
    flt.add("TexturePattern", {{"fileName", "windows.png"}, {"patternIndex", 0}});
    palette.write(flt);
    flt.push();
    flt.add("Group", {{"idASCII", "termnl"}}).add("LongID", {{"idASCII", "terminal"}});
    flt.add("Matrix", placedAt({22, 66, 0})).push();
    house.write(flt, "house");
    roof.write(flt, "roof");
    flt.pop().pop();
    return flt.bytes();
}
/// @}

void makeSample(std::filesystem::path const& database, bool force)
{
    std::filesystem::path const directory = database.parent_path() / database.stem();
    std::filesystem::path const asphalt = directory / "asphalt.png",
                                corrugation = directory / "corrugation.rgb",
                                windows = directory / "windows.png", terminal = directory / "terminal.flt";
    for (std::filesystem::path const& path : {database, asphalt, corrugation, windows, terminal})
        if (!force && std::filesystem::exists(std::filesystem::symlink_status(path)))
            throw ToolError(path.string() + ": this file is there already. Add --force to replace it.",
                            ExitCode::wrongUsage);
    std::filesystem::create_directories(directory);
    writeAsphalt(asphalt);
    writeCorrugation(corrugation);
    writeWindows(windows);
    saveFile(makeTerminal(), terminal);
    saveFile(makeAirfield(database.stem()), database);
}

} // namespace

int main(int argc, char** argv)
{
    std::filesystem::path database = "airfield.flt";
    bool force = false;
    CLI::App app("Writes the sample database and the files that it refers to.", "make_sample");
    app.add_option("OUT.flt", database, "The database to write; the other files go into a folder of its name")
        ->capture_default_str();
    app.add_flag("--force", force, "Replace files that are there already");
    return ExampleProgram::run(app, argc, argv, [&] { makeSample(database, force); });
}

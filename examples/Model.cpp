#include "Model.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr unsigned packedColorFlag = 0x10000000;
constexpr unsigned packedVertexColorFlag = 0x1000;
constexpr unsigned noColorFlag = 0x40000000;

/// The light mode of faces that are lit, in their own colour.
constexpr int litFaceColor = 2;

/// A colour in the order of the format.
FltValue packed(Color color)
{
    return {255, std::floor(color.blue), std::floor(color.green), std::floor(color.red)};
}

} // namespace

Point operator+(Point a, Point b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Point operator-(Point a, Point b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Point operator*(Point a, double factor)
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

Point cross(Point a, Point b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Point normalized(Point a)
{
    double const length = std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
    return length > 0 ? a * (1 / length) : Point{0, 0, 1};
}

Color mix(Color a, Color b, double share)
{
    double const t = std::clamp(share, 0.0, 1.0);
    return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t, a.blue + (b.blue - a.blue) * t};
}

Color operator*(Color color, double factor)
{
    auto const scaled = [&](double value) { return std::clamp(value * factor, 0.0, 255.0); };
    return {scaled(color.red), scaled(color.green), scaled(color.blue)};
}

FltWriter::Fields painted(Color color)
{
    return {{"lightMode", litFaceColor}, {"flags", packedColorFlag}, {"packedColor", packed(color)}};
}

FltWriter::Fields paletteColor(int position, int intensity)
{
    return {{"lightMode", litFaceColor}, {"primaryColorIndex", position << 7 | intensity}};
}

FltWriter::Fields ofMaterial(int index)
{
    return {{"lightMode", litFaceColor}, {"flags", noColorFlag}, {"materialIndex", index}};
}

FltWriter::Fields textured(int pattern, Color color)
{
    FltWriter::Fields look = painted(color);
    look.push_back({"texturePatternIndex", pattern});
    return look;
}

FltWriter::Fields turningToTheEye(Color color)
{
    FltWriter::Fields look = painted(color);
    look.push_back({"templateBillboard", 2});
    return look;
}

VertexPalette::VertexPalette(int revision) : writer(revision)
{
    writer.vertexPalette();
    begin = writer.bytes().size();
}

double VertexPalette::plain(Point place)
{
    return writer.vertex("VertexColor", place.x, place.y, place.z);
}

double VertexPalette::lamp(Point place, Color color)
{
    return writer.vertex("VertexColor", place.x, place.y, place.z,
                         {{"flags", packedVertexColorFlag}, {"packedColor", packed(color)}});
}

double VertexPalette::smooth(Point place, Point normal)
{
    return writer.vertex("VertexColorNormal", place.x, place.y, place.z,
                         {{"vertexNormal", {normal.x, normal.y, normal.z}}});
}

double VertexPalette::mapped(Point place, double u, double v)
{
    return writer.vertex("VertexColorUv", place.x, place.y, place.z, {{"texture", {u, v}}});
}

double VertexPalette::smoothMapped(Point place, Point normal, double u, double v)
{
    return writer.vertex("VertexColorNormalUv", place.x, place.y, place.z,
                         {{"vertexNormal", {normal.x, normal.y, normal.z}}, {"texture", {u, v}}});
}

double VertexPalette::smoothMapped(Point place, Point normal, double u, double v, Color color)
{
    return writer.vertex("VertexColorNormalUv", place.x, place.y, place.z,
                         {{"flags", packedVertexColorFlag},
                          {"packedColor", packed(color)},
                          {"vertexNormal", {normal.x, normal.y, normal.z}},
                          {"texture", {u, v}}});
}

void VertexPalette::write(FltWriter& flt) const
{
    std::string const vertices = writer.bytes().substr(begin);
    flt.vertexPalette(static_cast<unsigned>(8 + vertices.size()));
    flt.addBytes(vertices);
}

void Model::face(std::vector<double> const& vertices, FltWriter::Fields const& look)
{
    faces.push_back({vertices, look});
}

void Model::polygon(std::vector<Point> const& corners, FltWriter::Fields const& look)
{
    std::vector<double> vertices;
    vertices.reserve(corners.size());
    for (Point const& corner : corners)
        vertices.push_back(palette.plain(corner));
    face(vertices, look);
}

void Model::ground(std::vector<Point> const& corners, double repeats, FltWriter::Fields const& look)
{
    std::vector<double> vertices;
    vertices.reserve(corners.size());
    for (Point const& corner : corners)
        vertices.push_back(palette.smoothMapped(corner, {0, 0, 1}, corner.x * repeats, corner.y * repeats));
    face(vertices, look);
}

void Model::marking(std::vector<Point> const& corners, FltWriter::Fields const& look)
{
    std::vector<double> vertices;
    vertices.reserve(corners.size());
    for (Point const& corner : corners)
        vertices.push_back(palette.smoothMapped(corner, {0, 0, 1}, 0, 0));
    markings.push_back({vertices, look});
}

void Model::box(Point low, Point high, FltWriter::Fields const& look)
{
    double v[8];
    for (int i = 0; i < 8; ++i)
        v[i] = palette.plain(
            {(i & 1) != 0 ? high.x : low.x, (i & 2) != 0 ? high.y : low.y, (i & 4) != 0 ? high.z : low.z});
    face({v[4], v[5], v[7], v[6]}, look);
    face({v[0], v[1], v[5], v[4]}, look);
    face({v[1], v[3], v[7], v[5]}, look);
    face({v[3], v[2], v[6], v[7]}, look);
    face({v[2], v[0], v[4], v[6]}, look);
}

void Model::panel(std::array<Point, 4> const& corners, double repeatsAlong, double repeatsUp,
                  FltWriter::Fields const& look)
{
    face({palette.mapped(corners[0], 0, 0), palette.mapped(corners[1], repeatsAlong, 0),
          palette.mapped(corners[2], repeatsAlong, repeatsUp), palette.mapped(corners[3], 0, repeatsUp)},
         look);
}

void Model::turned(Point foot, double lowRadius, double highRadius, double height, int sides,
                   FltWriter::Fields const& look)
{
    std::vector<double> low, high;
    for (int i = 0; i < sides; ++i) {
        double const angle = 2 * M_PI * i / sides;
        Point const out{std::cos(angle), std::sin(angle), 0};
        Point const normal = normalized(out + Point{0, 0, (lowRadius - highRadius) / height});
        low.push_back(palette.smooth(foot + out * lowRadius, normal));
        high.push_back(palette.smooth(foot + out * highRadius + Point{0, 0, height}, normal));
    }
    for (std::size_t i = 0; i < low.size(); ++i) {
        std::size_t const next = (i + 1) % low.size();
        if (highRadius == 0)
            face({low[i], low[next], high[i]}, look);
        else if (lowRadius == 0)
            face({low[i], high[next], high[i]}, look);
        else
            face({low[i], low[next], high[next], high[i]}, look);
    }
    if (highRadius > 0) {
        std::vector<double> lid;
        for (int i = 0; i < sides; ++i) {
            double const angle = 2 * M_PI * i / sides;
            lid.push_back(palette.smooth(
                foot + Point{std::cos(angle) * highRadius, std::sin(angle) * highRadius, height}, {0, 0, 1}));
        }
        face(lid, look);
    }
}

void Model::tube(std::vector<Point> const& line, std::vector<double> const& radii, int sides,
                 FltWriter::Fields const& look)
{
    Point const along = normalized(line.back() - line.front());
    Point const side = normalized(cross(std::abs(along.z) < 0.9 ? Point{0, 0, 1} : Point{1, 0, 0}, along));
    Point const up = cross(along, side);
    std::vector<std::vector<double>> rings(line.size());
    for (std::size_t ring = 0; ring < line.size(); ++ring)
        for (int i = 0; i < sides; ++i) {
            double const angle = 2 * M_PI * i / sides;
            Point const out = side * std::cos(angle) + up * std::sin(angle);
            rings[ring].push_back(palette.smooth(line[ring] + out * radii[ring], out));
        }
    for (std::size_t ring = 0; ring + 1 < rings.size(); ++ring)
        for (std::size_t i = 0; i < rings[ring].size(); ++i) {
            std::size_t const next = (i + 1) % rings[ring].size();
            face({rings[ring][i], rings[ring][next], rings[ring + 1][next], rings[ring + 1][i]}, look);
        }
}

void Model::write(FltWriter& flt, std::string const& id, FltWriter::Fields const& placement) const
{
    flt.add("Object", {{"idASCII", id}});
    if (!placement.empty())
        flt.add("Matrix", placement);
    flt.push();
    for (Face const& base : faces)
        flt.face(base.vertices, base.look);
    if (!markings.empty()) {
        flt.add("PushSubface");
        for (Face const& mark : markings)
            flt.face(mark.vertices, mark.look);
        flt.add("PopSubface");
    }
    flt.pop();
}

FltWriter::Fields placedAt(Point place, double degrees, double size)
{
    double const c = size * std::cos(degrees * M_PI / 180);
    double const s = size * std::sin(degrees * M_PI / 180);
    return {{"matrix", {c, s, 0, 0, -s, c, 0, 0, 0, 0, size, 0, place.x, place.y, place.z, 1}}};
}

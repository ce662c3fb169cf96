#pragma once

#include "writer/FltWriter.h"

#include <array>
#include <string>
#include <vector>

/// A point or a direction, in metres: x east, y north, z up.
struct Point {
    double x = 0;
    double y = 0;
    double z = 0;
};

Point operator+(Point a, Point b);
Point operator-(Point a, Point b);
Point operator*(Point a, double factor);
Point cross(Point a, Point b);
Point normalized(Point a);

/// Red, green and blue from 0 to 255.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
};

Color mix(Color a, Color b, double share);
Color operator*(Color color, double factor);

/// @name How a face looks: fields of its record
/// @{
FltWriter::Fields painted(Color color);                            ///< A colour of its own.
FltWriter::Fields paletteColor(int position, int intensity = 127); ///< A colour of the palette.
FltWriter::Fields ofMaterial(int index);                           ///< A material as it stands.
FltWriter::Fields textured(int pattern, Color color = {255, 255, 255});
FltWriter::Fields turningToTheEye(Color color); ///< A face that turns about its foot.
/// @}

/// The vertices of the whole database. Faces name them by their offsets here.
class VertexPalette
{
public:
    /// @param revision of the database
    explicit VertexPalette(int revision = 1570);

    double plain(Point place);
    double lamp(Point place, Color color); ///< A vertex with a colour of its own.
    double smooth(Point place, Point normal);
    double mapped(Point place, double u, double v);
    double smoothMapped(Point place, Point normal, double u, double v);
    double smoothMapped(Point place, Point normal, double u, double v, Color color);

    /// Adds the palette and its vertices to a database.
    void write(FltWriter& flt) const;

private:
    FltWriter writer;
    std::size_t begin;
};

/// The faces of one Object. Vertices may serve many models and faces.
class Model
{
public:
    explicit Model(VertexPalette& palette) : palette(palette) {}

    /// @name Shapes: their faces are counter-clockwise seen from outside
    /// @{
    void face(std::vector<double> const& vertices, FltWriter::Fields const& look);
    void polygon(std::vector<Point> const& corners, FltWriter::Fields const& look);
    /// A polygon with a texture: a metre of the ground is as many repeats.
    void ground(std::vector<Point> const& corners, double repeats, FltWriter::Fields const& look);
    void box(Point low, Point high, FltWriter::Fields const& look);
    /// A wall or roof with a texture that repeats so often along the first edge and the second.
    void panel(std::array<Point, 4> const& corners, double repeatsAlong, double repeatsUp,
               FltWriter::Fields const& look);
    /// A round body about a line upwards; a radius of 0 makes a point.
    void turned(Point foot, double lowRadius, double highRadius, double height, int sides,
                FltWriter::Fields const& look);
    /// A round body about any line, closed at both ends by the shape alone.
    void tube(std::vector<Point> const& line, std::vector<double> const& radii, int sides,
              FltWriter::Fields const& look);
    /// @}

    /// A flat marking on what has been added so far: a sub-face.
    void marking(std::vector<Point> const& corners, FltWriter::Fields const& look);

    /// Adds an Object with all this to a database.
    void write(FltWriter& flt, std::string const& id, FltWriter::Fields const& placement = {}) const;

private:
    struct Face {
        std::vector<double> vertices;
        FltWriter::Fields look;
    };

    VertexPalette& palette;
    std::vector<Face> faces;
    std::vector<Face> markings;
};

/// The matrix of a place: a turn about the z axis in degrees, a size, and then a shift.
FltWriter::Fields placedAt(Point place, double degrees = 0, double size = 1);

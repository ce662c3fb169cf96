#pragma once

#include "writer/FltWriter.h"

#include <string>
#include <vector>

/// A database for a picture: grey ground with upright panels on it that look south, at the viewer.
///
/// Vertices stand before everything else, so panels are made first; begin() then begins the hierarchy.
class PictureStage
{
public:
    using Fields = FltWriter::Fields;
    using Place = std::vector<double>;

    /// @param at what the coordinates of all vertices count from
    explicit PictureStage(int revision = 1570, Fields const& header = {}, Place at = {0, 0, 0});

    FltWriter flt;

    /// Vertices at some places, each with these fields. @return their offsets
    std::vector<double> vertices(std::vector<Place> const& places, std::string const& form = "VertexColor",
                                 Fields const& fields = {});

    /// The corners of a panel. @param x its left side; panels are two wide and three high
    std::vector<double> panel(double x, std::string const& form = "VertexColor", Fields const& fields = {},
                              double y = 0);

    /// A panel with texture coordinates from 0 to 1.
    std::vector<double> texturedPanel(double x, double y = 0);

    /// Begins the hierarchy with the ground.
    FltWriter& begin();

    /// Adds an Object of one face.
    void object(std::vector<double> const& offsets, Fields const& face, Fields const& fields = {});

    /// The fields of a face of this colour (alpha, blue, green, red), lit, without material and texture.
    static Fields face(std::vector<double> const& color, Fields const& more = {});

    static inline std::vector<double> const white = {255, 255, 255, 255};
    static inline std::vector<double> const red = {255, 40, 40, 220};
    static inline std::vector<double> const green = {255, 60, 170, 50};
    static inline std::vector<double> const blue = {255, 210, 90, 40};
    static inline std::vector<double> const yellow = {255, 40, 200, 230};

private:
    Place at;
    std::vector<double> ground;
};

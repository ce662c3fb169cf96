#pragma once

#include "writer/FltWriter.h"

#include <string>
#include <vector>

/// A database with something of all that the viewer can set by hand:
///
///     Group  base     of one Object, floor
///     DOF    door     at x = 10, turns about z by 0 to 90 degrees; its panel reaches from 10 to 20 in x
///     Switch lamp     of the Objects red and green; mask 0 shows the first, 1 the second, 2 both
///     LOD    far      from 1000 on; the Object hut
///     Object poster   with a texture that isn't there, "nowhere/poster.png"
inline FltWriter viewDatabase()
{
    FltWriter flt(1570, {{"id", "yard"}});
    flt.add("TexturePattern", {{"fileName", "nowhere/poster.png"}, {"patternIndex", 0}});
    flt.vertexPalette();
    auto const square = [&](double x, double y, double size) {
        std::vector<double> corners;
        for (auto const& [dx, dz] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}})
            corners.push_back(flt.vertex("VertexColorNormalUv", x + dx * size, y, dz * size,
                                         {{"vertexNormal", {0, -1, 0}}, {"texture", {dx, dz}}}));
        return corners;
    };
    std::vector<std::vector<double>> const squares = {square(0, 5, 10),  square(10, 0, 10),
                                                      square(25, 0, 5),  square(32, 0, 5),
                                                      square(40, 0, 10), square(-15, 0, 10)};
    auto const object = [&](char const* name, std::size_t which, double red, double green, double blue,
                            int texture = -1) {
        flt.add("Object", {{"idASCII", name}}).push();
        flt.face(squares[which], {{"drawType", 1},
                                  {"packedColor", {255, blue, green, red}},
                                  {"flags", 0x10000000},
                                  {"texturePatternIndex", texture},
                                  {"materialIndex", -1}});
        flt.pop();
    };
    flt.push();
    flt.add("Group", {{"idASCII", "base"}}).push();
    object("floor", 0, 120, 120, 130);
    flt.pop();
    flt.add("DOF", {{"idASCII", "door"},
                    {"XOriginOfDOFLocalCoordinateSystem", 10},
                    {"XPointOnXAxisOfDOFLocalCoordinateSystem", 11},
                    {"XPointInXYPlaneOfDOFLocalCoordinateSystem", 10},
                    {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 1},
                    {"maxYaw", 90},
                    {"incrementInYaw", 5},
                    {"flags", 0x04000000}})
        .push();
    object("panel", 1, 200, 140, 60);
    flt.pop();
    flt.add("Switch", {{"idASCII", "lamp"},
                       {"numberOfMasks", 3},
                       {"numberOf32BitWordsPerMask", 1},
                       {"masks", {1, 2, 3}}})
        .push();
    object("red", 2, 220, 30, 30);
    object("green", 3, 30, 180, 30);
    flt.pop();
    flt.add("LOD", {{"idASCII", "far"}, {"switchInDistance", 1e5}, {"switchOutDistance", 1000}}).push();
    object("hut", 4, 60, 90, 200);
    flt.pop();
    object("poster", 5, 255, 255, 255, 0);
    flt.pop();
    return flt;
}

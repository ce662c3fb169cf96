// Writes a database in feet whose multiplier is 3: a red square of 30 by 30 units that faces upwards.

#include "writer/FltWriter.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: write_feet_database OUT.flt\n", stderr);
        return 2;
    }
    constexpr int feet = 4;
    FltWriter flt(1570, {{"multiplierDiviserUnit", 3}, {"vertexCoordinateUnits", feet}});
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0, 0}, {30, 0}, {30, 30}, {0, 30}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    flt.push().add("Object").push();
    flt.face(corners, {{"packedColor", {255, 0, 0, 255}},
                       {"flags", 0x10000000},
                       {"materialIndex", -1},
                       {"texturePatternIndex", -1}});
    flt.pop().pop().save(argv[1]);
    return 0;
}

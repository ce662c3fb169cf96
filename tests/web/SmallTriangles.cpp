#include "SmallTriangles.h"

#include "pictures/PictureStage.h"
#include "support/SmallPictures.h"

#include <array>

namespace
{

using Place = PictureStage::Place;

constexpr int unlit = 0, unlitVertexColors = 1;

/// Upright and seen from the south: 4 to the east, 3 up.
std::vector<Place> const corners = {{0, 0, 0}, {4, 0, 0}, {0, 0, 3}};

void writeBelowMatrix(ScratchFolder const& folder, std::vector<double> const& matrix)
{
    PictureStage stage;
    std::vector<double> const triangle = stage.vertices(corners);
    stage.flt.push().add("Object", {{"idASCII", "part"}}).add("Matrix", {{"matrix", matrix}}).push();
    stage.flt.face(triangle, stage.face({255, 40, 102, 204}, {{"lightMode", unlit}})).pop();
    stage.flt.save(folder / "model.flt");
}

/// A quarter turn to the left, and a move.
void writeAsymmetric(ScratchFolder const& folder)
{
    writeBelowMatrix(folder, {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1});
}

void writeMirrored(ScratchFolder const& folder)
{
    writeBelowMatrix(folder, {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1});
}

/// What is higher stands farther to the east, by half as much.
void writeSheared(ScratchFolder const& folder)
{
    writeBelowMatrix(folder, {1, 0, 0, 0, 0, 1, 0, 0, 0.5, 0, 1, 0, 0, 0, 0, 1});
}

void writeFeet(ScratchFolder const& folder)
{
    constexpr int feet = 4;
    PictureStage stage(1570, {{"vertexCoordinateUnits", feet}}, {1000, 2000, 0});
    std::vector<double> const triangle = stage.vertices(corners);
    stage.flt.push();
    stage.object(triangle, stage.face(stage.white, {{"lightMode", unlit}}), {{"idASCII", "part"}});
    stage.flt.save(folder / "model.flt");
}

/// The colours of vertices, over a picture.
void writeColored(ScratchFolder const& folder)
{
    constexpr int packedColorFlag = 0x1000, side = 8;
    folder.write("image.rgba", SmallPictures::clearSgi(side, [](int, int) {
                     return std::array<unsigned char, 4>{255, 255, 255, 255};
                 }));
    PictureStage stage;
    std::vector<double> triangle;
    for (auto const& [place, uv, color] : {std::tuple{corners[0], Place{0, 0}, Place{255, 0, 0, 255}},
                                           {corners[1], Place{1, 0}, Place{255, 0, 102, 0}},
                                           {corners[2], Place{0, 0.75}, Place{255, 204, 0, 0}}})
        triangle.push_back(
            stage.vertices({place}, "VertexColorUv",
                           {{"texture", uv}, {"flags", packedColorFlag}, {"packedColor", color}})[0]);
    stage.flt.add("TexturePattern", {{"fileName", "image.rgba"}, {"patternIndex", 0}});
    stage.flt.push();
    stage.object(triangle,
                 stage.face(stage.white, {{"lightMode", unlitVertexColors}, {"texturePatternIndex", 0}}),
                 {{"idASCII", "part"}});
    stage.flt.save(folder / "model.flt");
}

} // namespace

std::vector<PictureDatabase> smallTriangles()
{
    return {{"asymmetric", "", writeAsymmetric},
            {"mirrored", "", writeMirrored},
            {"sheared", "", writeSheared},
            {"feet", "", writeFeet},
            {"colored", "", writeColored}};
}

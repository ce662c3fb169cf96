#include "BenchDatabase.h"
#include "support/Picture.h"
#include "support/PngFile.h"
#include "writer/FltWriter.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <vector>

namespace
{

using Place = std::array<double, 3>;
using Panel = std::array<Place, 4>;

constexpr int revision = 1580;
constexpr int pictureSize = 64;
constexpr int storeys = 3;
constexpr int windowsInRow = 4;
constexpr double windowWidth = 3;
constexpr double storeyHeight = 4;
constexpr double buildingSize = windowsInRow * windowWidth;
constexpr double streetWidth = 8;
constexpr double halfClear = 32'767;

void writePicture(std::filesystem::path const& path, int number)
{
    Picture picture(pictureSize, pictureSize);
    for (int y = 0; y < pictureSize; ++y)
        for (int x = 0; x < pictureSize; ++x) {
            bool const isFrame = x % 32 < 6 || y % 32 < 6;
            unsigned char* const pixel = picture.at(x, y);
            pixel[0] = static_cast<unsigned char>(isFrame ? 90 : 120 + 6 * number);
            pixel[1] = static_cast<unsigned char>(isFrame ? 80 : 200 - 5 * number);
            pixel[2] = static_cast<unsigned char>(isFrame ? 70 : 160);
        }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "wb"), std::fclose);
    if (file == nullptr || !writePng(picture, file.get()).empty())
        throw std::runtime_error("cannot write " + path.string());
}

/// The two parts of a roof, then the windows, of a building whose corner stands at a place.
std::vector<Panel> panelsOf(double x, double y)
{
    constexpr double top = storeys * storeyHeight;
    constexpr double half = buildingSize / 2;
    std::vector<Panel> panels;
    for (double const side : {0.0, half})
        panels.push_back({{{x + side, y, top},
                           {x + side + half, y, top},
                           {x + side + half, y + buildingSize, top},
                           {x + side, y + buildingSize, top}}});
    for (int wall = 0; wall < 4; ++wall)
        for (int window = 0; window < windowsInRow * storeys; ++window) {
            int const storey = window / windowsInRow;
            double const from = window % windowsInRow * windowWidth;
            double const floor = storey * storeyHeight;
            auto const at = [&](double along, double height) {
                bool const isFar = wall == 1 || wall == 2;
                double const way = isFar == (wall % 2 == 0) ? buildingSize - along : along;
                double const across = isFar ? buildingSize : 0;
                return wall % 2 == 0 ? Place{x + way, y + across, height}
                                     : Place{x + across, y + way, height};
            };
            panels.push_back(
                {{at(from, floor), at(from + windowWidth, floor),
                  at(from + windowWidth, floor + storeyHeight), at(from, floor + storeyHeight)}});
        }
    return panels;
}

int sideOf(int buildings)
{
    int side = 1;
    while (side * side < buildings)
        ++side;
    return side;
}

std::vector<Panel> panelsOfNumber(int building, int side)
{
    constexpr double step = buildingSize + streetWidth;
    int const row = building / side;
    return panelsOf(building % side * step, row * step);
}

std::vector<double> addVertices(FltWriter& flt, Panel const& panel)
{
    std::vector<double> offsets;
    for (std::size_t i = 0; i < panel.size(); ++i)
        offsets.push_back(flt.vertex("VertexColorUv", panel[i][0], panel[i][1], panel[i][2],
                                     {{"texture", {i == 1 || i == 2 ? 1.0 : 0.0, i > 1 ? 1.0 : 0.0}}}));
    return offsets;
}

} // namespace

std::size_t BenchDatabase::writeTown(std::string const& path, int buildings, Windows windows)
{
    FltWriter flt(revision);
    for (int i = 0; i < texturesOfTown; ++i) {
        std::string const name = "town" + std::to_string(i) + ".png";
        writePicture(std::filesystem::path(path).parent_path() / name, i);
        flt.add("TexturePattern", {{"fileName", name}, {"patternIndex", i}});
    }
    flt.vertexPalette();
    std::vector<std::vector<double>> offsets;
    int const side = sideOf(buildings);
    for (int i = 0; i < buildings; ++i)
        for (Panel const& panel : panelsOfNumber(i, side))
            offsets.push_back(addVertices(flt, panel));
    flt.endVertexPalette();
    flt.push().add("Group", {{"idASCII", "town"}}).push();
    std::size_t const panels = offsets.size() / static_cast<std::size_t>(buildings);
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        std::size_t const building = i / panels;
        if (i % panels == 0)
            flt.add("Object", {{"idASCII", "b" + std::to_string(building)}}).push();
        bool const isClear = windows == Windows::someTranslucent && i % panels > 1 && i % 3 == 0;
        flt.face(offsets[i], {{"flags", 0x10000000L},
                              {"packedColor", {255, 255, 255, 255}},
                              {"lightMode", 2},
                              {"texturePatternIndex", static_cast<double>(building % texturesOfTown)},
                              {"materialIndex", -1},
                              {"transparency", isClear ? halfClear : 0}});
        if (i % panels == panels - 1)
            flt.pop();
    }
    flt.pop().pop();
    std::ofstream(path, std::ios::binary) << flt.bytes();
    return flt.bytes().size();
}

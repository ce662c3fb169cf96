#include "Textures.h"

#include "ExampleProgram.h"
#include "Noise.h"
#include "support/OutputFile.h"
#include "support/PngFile.h"
#include "support/ToolError.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <cmath>

namespace
{

void setPixel(Picture& picture, int x, int y, double red, double green, double blue)
{
    double const channels[3] = {red, green, blue};
    for (int i = 0; i < 3; ++i)
        picture.at(x, y)[i] = static_cast<unsigned char>(std::clamp(channels[i], 0.0, 255.0));
}

void savePng(Picture const& picture, std::string const& path)
{
    OutputFile output(path);
    if (std::string const problem = writePng(picture, output.stream()); !problem.empty())
        throw ToolError("cannot write " + path + ": " + problem);
    output.commit();
}

/// Writes a picture as a plain SGI image: a head of 512 bytes, then a plane for each channel, rows from the
/// bottom.
void saveSgi(Picture& picture, std::string const& path)
{
    std::string data = FltWriter::big16(474) + std::string("\0\1", 2) + FltWriter::big16(3) +
                       FltWriter::big16(picture.width) + FltWriter::big16(picture.height) +
                       FltWriter::big16(3) + FltWriter::big32(0) + FltWriter::big32(255);
    data.resize(512, '\0');
    for (int channel = 0; channel < 3; ++channel)
        for (int y = picture.height - 1; y >= 0; --y)
            for (int x = 0; x < picture.width; ++x)
                data += static_cast<char>(picture.at(x, y)[channel]);
    saveFile(data, path);
}

} // namespace

void writeAsphalt(std::string const& path)
{
    constexpr int size = 128;
    Picture picture(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            double const seam = x < 1 || y < 1 ? 0.80 : 1;
            double const grey = (112 + 26 * lattice(x, y) + 12 * lattice(x / 8, y / 8)) * seam;
            setPixel(picture, x, y, grey, grey, grey + 4);
        }
    savePng(picture, path);
}

void writeCorrugation(std::string const& path)
{
    constexpr int size = 64;
    Picture picture(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            double const rib = 0.86 + 0.14 * std::sin(2 * M_PI * x / 16);
            double const joint = y < 2 ? 0.75 : 1;
            double const grey = 250 * rib * joint - 8 * lattice(x / 4, y);
            setPixel(picture, x, y, grey, grey, grey);
        }
    saveSgi(picture, path);
}

void writeWindows(std::string const& path)
{
    constexpr int size = 64;
    Picture picture(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            bool const pane = x >= 6 && x < 58 && y >= 14 && y < 50 && x != 31 && x != 32;
            double const sheen = 40.0 * (size - y) / size + 10 * lattice(x / 16, y / 32);
            if (pane)
                setPixel(picture, x, y, 70 + sheen, 110 + sheen, 140 + sheen);
            else
                setPixel(picture, x, y, 222, 214, 198);
        }
    savePng(picture, path);
}

void writeGround(std::string const& path)
{
    constexpr int size = 64;
    Picture picture(size, size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            double const grey = 206 + 30 * lattice(x / 8, y / 8) + 19 * lattice(x, y);
            setPixel(picture, x, y, grey, grey, grey - 6);
        }
    savePng(picture, path);
}

#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// A picture in memory: rows from the top, three or four bytes a pixel (red, green, blue, alpha).
struct Picture {
    Picture(int width, int height, int channels = 3)
        : width(width), height(height), channels(channels),
          pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                 static_cast<std::size_t>(channels))
    {
    }

    unsigned char* at(int x, int y)
    {
        return pixels.data() +
               (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
                   static_cast<std::size_t>(channels);
    }

    int width;
    int height;
    int channels;
    std::vector<unsigned char> pixels;
};

/// Writes a picture as PNG. A stream that takes no more is the caller's to report.
/// @return an empty text, or why the picture can't be written
std::string writePng(Picture const& picture, FILE* file);

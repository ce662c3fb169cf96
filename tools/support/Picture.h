#pragma once

#include <cstddef>
#include <vector>

/// A picture in memory: rows from the top, three or four bytes a pixel (red, green, blue, alpha).
struct Picture {
    Picture(int width, int height, int channels = 3)
        : width(width), height(height), channels(channels),
          pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                 static_cast<std::size_t>(channels))
    {
    }

    unsigned char* at(int x, int y) { return pixels.data() + indexOf(x, y); }
    unsigned char const* at(int x, int y) const { return pixels.data() + indexOf(x, y); }

    int width;
    int height;
    int channels;
    std::vector<unsigned char> pixels;

private:
    std::size_t indexOf(int x, int y) const
    {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
               static_cast<std::size_t>(channels);
    }
};

#pragma once

#include <vector>

/// A decoded picture: the bottom row first, and nothing between the rows.
struct PicturePixels {
    int width = 0;                    ///< At least 1, unless there is no picture.
    int height = 0;                   ///< The same.
    int components = 0;               ///< Bytes of a pixel: 1 grey, 2 grey and alpha, 3 RGB, 4 RGBA.
    std::vector<unsigned char> bytes; ///< As many as width, height and components make.
};

#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <png.h>
#include <set>
#include <string>
#include <vector>

/// A picture as fltshot wrote it; no pixels if the file isn't one.
struct ShotFile {
    unsigned width = 0;
    unsigned height = 0;
    bool hasAlpha = false;
    std::vector<unsigned char> pixels; ///< Four bytes each.

    explicit ShotFile(std::string const& path)
    {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
            return;
        hasAlpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
        image.format = PNG_FORMAT_RGBA;
        pixels.resize(PNG_IMAGE_SIZE(image));
        if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0)
            return;
        width = image.width;
        height = image.height;
    }

    std::array<int, 3> at(unsigned x, unsigned y) const
    {
        std::size_t const i = (std::size_t{y} * width + x) * 4;
        return {pixels[i], pixels[i + 1], pixels[i + 2]};
    }

    int alphaAt(unsigned x, unsigned y) const { return pixels[(std::size_t{y} * width + x) * 4 + 3]; }

    /// The pixels of a face that is all red (channel 0), green or blue, in whatever light.
    struct Patch {
        int pixels = 0;
        double x = 0; ///< Of the middle, from the left.
        double y = 0; ///< From the top.
    };
    Patch patchOf(std::size_t channel) const
    {
        Patch patch;
        for (unsigned y = 0; y < height; ++y)
            for (unsigned x = 0; x < width; ++x) {
                std::array<int, 3> const color = at(x, y);
                if (color[channel] < 60 || color[(channel + 1) % 3] > 20 || color[(channel + 2) % 3] > 20)
                    continue;
                ++patch.pixels;
                patch.x += x;
                patch.y += y;
            }
        patch.x /= std::max(patch.pixels, 1);
        patch.y /= std::max(patch.pixels, 1);
        return patch;
    }

    /// The mean colour of a rectangle.
    std::array<double, 3> meanOf(unsigned left, unsigned top, unsigned wide, unsigned high) const
    {
        std::array<double, 3> sum{};
        for (unsigned y = top; y < top + high; ++y)
            for (unsigned x = left; x < left + wide; ++x)
                for (std::size_t channel = 0; channel < 3; ++channel)
                    sum[channel] += at(x, y)[channel];
        for (double& part : sum)
            part /= wide * high;
        return sum;
    }

    std::size_t countColors() const
    {
        std::set<std::array<int, 3>> colors;
        for (unsigned y = 0; y < height; ++y)
            for (unsigned x = 0; x < width; ++x)
                colors.insert(at(x, y));
        return colors.size();
    }
};

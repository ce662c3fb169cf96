#pragma once

#include <Inventor/SbVec2s.h>
#include <memory>
#include <vector>

/// A decoded picture, as the toolkit's fields of images want it: the bottom row first, and nothing between
/// the rows. It may belong to several nodes.
struct SoSharedPixels {
    SbVec2s size;       ///< In pixels.
    int components = 0; ///< Bytes of a pixel: 1 grey, 2 grey and alpha, 3 RGB, 4 RGBA.
    std::vector<unsigned char> bytes;

    /// @param image an SbImage or an SoSFImage
    /// @return null if it is empty
    template <class Image>
    static std::shared_ptr<SoSharedPixels const> copyOf(Image const& image)
    {
        auto pixels = std::make_shared<SoSharedPixels>();
        unsigned char const* const bytes = image.getValue(pixels->size, pixels->components);
        if (bytes == nullptr)
            return nullptr;
        pixels->bytes.assign(bytes, bytes + static_cast<std::size_t>(pixels->size[0]) *
                                                static_cast<std::size_t>(pixels->size[1]) *
                                                static_cast<std::size_t>(pixels->components));
        return pixels;
    }
};

#pragma once

#include "textures/FltReadableTree.h"
#include "textures/FltTexture.h"

#include <cstdint>
#include <string>

/// The file of a picture as it is written for readers of glTF, which know PNG and JPEG alone.
struct GltfPicture {
    /// Where files may be read from.
    struct Source {
        FltReadableTree readable;
        std::uint64_t largestFile = UINT64_MAX;
    };

    /// The file of a texture as it is, if it is one that every reader shows alike; otherwise its pixels as
    /// PNG.
    /// @param texture  that has pixels
    /// @param isOpaque whether its alpha doesn't count
    GltfPicture(FltTexture const& texture, bool isOpaque, Source const& source);

    std::string bytes; ///< Empty if the memory doesn't suffice.
    bool isJpeg = false;

    char const* mimeType() const { return isJpeg ? "image/jpeg" : "image/png"; }
    char const* ending() const { return isJpeg ? ".jpg" : ".png"; }
};

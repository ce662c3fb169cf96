#pragma once

#include "visual/FltMesh.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

/// What faces must have in common to be drawn by one mesh. Textures and materials are numbers in the palettes
/// of their file.
struct FltAppearance {
    using Kind = FltMesh::Kind;

    static constexpr std::int32_t none = FltMesh::none;

    Kind kind = Kind::faces;
    bool isLit = true;
    bool isTwoSided = false;
    bool isBlended = false;
    bool isTranslucent = false;       ///< By its colours, whatever its texture.
    bool ignoresTextureAlpha = false; ///< The image's alpha doesn't count.
    bool isHidden = false;
    bool isOutlined = false; ///< Lines are drawn over it.
    std::uint8_t level = 0;  ///< How many faces it lies on.
    std::int32_t texture = none;
    std::int32_t material = none; ///< Only where it is lit.
    std::int32_t layers = none;   ///< Number of a list of further textures.
    float size = 0;               ///< Of points or lines in pixels; 0 for the toolkit's.

    bool operator==(FltAppearance const& other) const
    {
        return kind == other.kind && isLit == other.isLit && isTwoSided == other.isTwoSided &&
               isBlended == other.isBlended && isTranslucent == other.isTranslucent &&
               ignoresTextureAlpha == other.ignoresTextureAlpha && isHidden == other.isHidden &&
               isOutlined == other.isOutlined && level == other.level && texture == other.texture &&
               material == other.material && layers == other.layers && size == other.size;
    }

    struct Hash {
        std::size_t operator()(FltAppearance const& appearance) const
        {
            std::size_t const bits = static_cast<std::size_t>(appearance.kind) | appearance.isLit << 2 |
                                     appearance.isTwoSided << 3 | appearance.isBlended << 4 |
                                     appearance.ignoresTextureAlpha << 5 | appearance.isHidden << 6 |
                                     appearance.isOutlined << 7 | appearance.isTranslucent << 8 |
                                     std::size_t(appearance.level) << 9;
            std::size_t hash = bits;
            for (std::int32_t const part : {appearance.texture, appearance.material, appearance.layers})
                hash = hash * 1000003 ^ static_cast<std::uint32_t>(part);
            return hash;
        }
    };
};

#pragma once

#include "visual/FltVisualRecord.h"

#include <Inventor/SbColor.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SbVec3f.h>
#include <cstdint>
#include <vector>

/// Faces, lines or points that look alike, and are drawn together.
///
/// A corner is a vertex as it is drawn: each list of corners is as long as positions, or empty. Colours are
/// as the modeller saw them: what a material and the transparencies of face, Object and material say is
/// worked in.
struct FltMesh {
    /// What is drawn.
    enum class Kind : std::uint8_t { faces, lines, points };

    /// In place of the number of a texture.
    static constexpr std::int32_t none = -1;

    /// Ends each face or line in the list of indices.
    static constexpr std::int32_t end = -1;

    /// A further texture over the first.
    struct Layer {
        int number = 1;              ///< From 1 to 7.
        std::int32_t texture = none; ///< In the list of textures.
        std::vector<SbVec2f> uvs;    ///< Of the corners.
    };

    /// How light is given back, in parts from 0 to 1. Only where the mesh is lit.
    struct Material {
        SbColor ambient{1, 1, 1};  ///< Of all corners, in the mean: their colour is worked in.
        SbColor specular{0, 0, 0}; ///< Of the shine.
        SbColor emissive{0, 0, 0}; ///< Without any light.
        float shininess = 0;       ///< Of an exponent of 128.
        bool isFromPalette =
            false; ///< Otherwise nobody gave a material, and specular and emissive are black.
    };

    /// Faces, lines or points that follow each other, and come from one record.
    struct Part {
        std::int32_t first = 0; ///< The number of the first of them.
        FltVisualRecord record; ///< The nearest one above that has a node of its own.
    };

    Kind kind = Kind::faces; ///< What is drawn.
    bool isLit = true;       ///< Otherwise the colours are what is seen, whatever light there is.
    bool isTwoSided = false; ///< Otherwise faces are seen from where their corners go to the left;
                             ///< in mirrors (FltVisualSenses) to the right.
    bool isBlended = false;  ///< It lets what is behind it through, by its colours or its texture.
    bool isCutOut = false; ///< It is there where the alpha of its texture is above a half; not blended then.
    bool ignoresTextureAlpha = false; ///< The alpha of the picture doesn't count.
    bool isHidden = false;            ///< Not to be seen, unless somebody asks for it.
    bool isOutlined = false;          ///< Lines are drawn over it.
    std::uint8_t level = 0;           ///< How many faces it lies on: it is drawn over them.
    float size = 0;                   ///< Of points or lines in pixels; 0 for the usual one.
    std::int32_t texture = none;      ///< The first texture, in the list of textures.

    Material material;                 ///< Of all corners.
    SbVec3d origin{0, 0, 0};           ///< What positions count from, in the units of the node.
    std::vector<SbVec3f> positions;    ///< In the units of the node.
    std::vector<SbVec3f> normals;      ///< Of length 1; empty unless it is lit.
    std::vector<SbVec2f> uvs;          ///< Of the first texture; empty without one.
    std::vector<std::uint32_t> colors; ///< Red, green, blue and alpha, red highest; one if all are equal.
    std::vector<Layer> layers;         ///< Further textures, in their order.
    std::vector<std::int32_t> indices; ///< Corners of each face (convex and flat) or line, and an end; none
                                       ///< for points.
    std::vector<Part> parts;           ///< Of a mesh that was joined of several, in their order. Otherwise
                                       ///< none: all of it comes from the record of its node.
};

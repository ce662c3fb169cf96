#pragma once

#include "visual/FltMesh.h"

#include <cstdint>
#include <vector>

/// A mesh in parts of one opacity each, for forms in which a transparency is that of a whole shape.
struct FltOpacityParts {
    /// @param mesh is handed on as it is where all of its colours have one opacity
    explicit FltOpacityParts(FltMesh mesh);

    std::vector<FltMesh> parts;    ///< The most opaque first.
    std::uint64_t levelledOut = 0; ///< Faces and lines that have the mean of their corners.

    /// The opacity of a part, from 0 to 255.
    static std::uint32_t of(FltMesh const& part) { return part.colors.empty() ? 255 : part.colors[0] & 0xff; }
};

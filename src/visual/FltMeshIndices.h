#pragma once

#include "toolkit/VelloReaderExport.h"
#include "visual/FltMesh.h"

#include <cstdint>
#include <vector>

/// The faces or lines of a mesh in pieces of equal length, as graphics libraries take them. The numbers are
/// those of corners.
struct VELLOREADER_API FltMeshIndices {
    /// Three numbers for each triangle. Each face gives a fan, which is seen from the same side.
    /// @return empty for lines and points
    static std::vector<std::uint32_t> triangles(FltMesh const& mesh);

    /// Two numbers for each piece of a line.
    /// @return empty for faces and points
    static std::vector<std::uint32_t> lines(FltMesh const& mesh);
};

#pragma once

#include <cstdint>

class SoVertexProperty;

/// Where a vertex of the file's vertex palette went.
struct VertexEntry {
    std::int32_t index = 0; ///< Position in the arrays of its property.
    std::int32_t size = 0;  ///< Length of the vertex record in bytes: its form can be seen from it.
    SoVertexProperty* property = nullptr; ///< Not owned.
};

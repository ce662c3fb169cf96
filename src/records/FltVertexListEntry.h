#pragma once

#include <cstdint>

/// One vertex of a vertex list, by its byte offset in the vertex palette.
struct FltVertexListEntry {
    std::int32_t offset = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("offset", self.offset);
    }
};

/// One vertex of a morph vertex list. FltRecordMorphVertexList pairs other bytes, since the exact conversion
/// does.
struct FltMorphVertexListEntry {
    std::int32_t from = 0;
    std::int32_t offset = 0; ///< What it ends at.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("from", self.from);
        visit("offset", self.offset);
    }
};

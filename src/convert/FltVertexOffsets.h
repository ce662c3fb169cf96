#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

/// The vertices of a file by the byte offsets at which faces name them.
///
/// Vertices come in the order of their offsets, so they stand in one sorted list, and a table of where each
/// piece of the palette begins in it finds any of them in constant time, whatever the order in which faces
/// ask. What doesn't fit in there is rare, and stands in a map: offsets at which no vertex begins, once
/// somebody asked for them.
class FltVertexOffsets
{
public:
    /// Where a vertex went.
    struct Entry {
        std::int32_t index = 0; ///< Position in the arrays of its property.
        std::int32_t size = 0;  ///< Length of its record in bytes.
        std::int32_t id = 0;    ///< Of its property; 0 if no vertex begins at the offset.
    };

    /// Enters a vertex. An earlier entry at its offset is replaced.
    /// @param offset not below that of the vertex before
    void add(unsigned long offset, Entry const& entry);

    /// The entry at an offset. One that nobody knows of is entered.
    Entry find(unsigned long offset)
    {
        std::size_t const piece = offset / pieceSize;
        if (piece < begins.size()) {
            Vertex const* const end = sorted.data() + sorted.size();
            for (Vertex const* i = sorted.data() + begins[piece]; i != end && i->offset <= offset; ++i)
                if (i->offset == offset)
                    return i->entry;
        }
        return others[offset];
    }

    /// Calls an action with every offset and its entry, in their order, until it returns false.
    template <class Action>
    void forEach(Action action) const
    {
        auto other = others.begin();
        for (Vertex const& vertex : sorted) {
            for (; other != others.end() && other->first < vertex.offset; ++other)
                if (!action(other->first, other->second))
                    return;
            if (!action(vertex.offset, vertex.entry))
                return;
        }
        for (; other != others.end(); ++other)
            if (!action(other->first, other->second))
                return;
    }

private:
    struct Vertex {
        unsigned long offset;
        Entry entry;
    };

    /// Bytes of a palette that one entry of the table stands for. The records of vertices are longer, so
    /// there is one vertex in a piece at the most; only broken files have more, up to one for each byte.
    static constexpr unsigned long pieceSize = 32;

    /// No record of a file is longer than this many pieces.
    static constexpr std::size_t mostPieces = 65536 / pieceSize;

    std::vector<Vertex> sorted;
    std::vector<std::uint32_t> begins; ///< For each piece its first vertex, or the first one after it.
    std::map<unsigned long, Entry> others;
};

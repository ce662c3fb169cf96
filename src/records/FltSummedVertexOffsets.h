#pragma once

#include <utility>

/// Where the exact conversion takes the vertices of a palette to begin: the lengths of their records add up
/// from the palette's head on. What else stands between them doesn't count.
class FltSummedVertexOffsets
{
public:
    /// The offset of the next vertex, whose record has so many bytes.
    unsigned long next(unsigned int length) { return std::exchange(offset, offset + length); }

private:
    unsigned long offset = 8; ///< The head's length.
};

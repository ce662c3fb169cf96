#include "convert/FltVertexOffsets.h"

#include "toolkit/LargePages.h"

void FltVertexOffsets::add(unsigned long offset, Entry const& entry)
{
    if (!sorted.empty() && sorted.back().offset == offset) {
        sorted.back().entry = entry;
        return;
    }
    std::size_t const piece = offset / pieceSize;
    if (piece > begins.size() + mostPieces) {
        others[offset] = entry;
        return;
    }
    if (!others.empty())
        others.erase(offset);
    while (begins.size() <= piece)
        LargePages::add(begins, static_cast<std::uint32_t>(sorted.size()));
    LargePages::add(sorted, {offset, entry});
}

#include "model/FltPaletteOffsets.h"

#include <algorithm>

namespace
{

/// Offsets are looked up in runs of so many bytes.
constexpr int bucketBits = 8;

/// Bytes of a palette's head, which a palette without one is taken to have.
constexpr std::size_t paletteHeadSize = 8;

} // namespace

bool FltPaletteOffsets::add(std::size_t recordOffset, std::uint32_t number)
{
    if (!hasVertices && begin == 0)
        begin = recordOffset - std::min(recordOffset, paletteHeadSize);
    hasVertices = true;
    std::size_t const offset = recordOffset - begin;
    if (!starts.empty() && offset <= starts.back().offset)
        return false;
    starts.push_back({static_cast<std::uint32_t>(offset), number});
    buckets.resize((offset >> bucketBits) + 1, static_cast<std::uint32_t>(starts.size() - 1));
    return true;
}

std::uint32_t FltPaletteOffsets::find(std::int64_t offset) const
{
    if (offset < 0 || static_cast<std::size_t>(offset >> bucketBits) >= buckets.size())
        return none;
    for (std::size_t i = buckets[static_cast<std::size_t>(offset >> bucketBits)]; i < starts.size(); ++i)
        if (starts[i].offset >= offset)
            return starts[i].offset == offset ? starts[i].number : none;
    return none;
}

#include "inspect/FltCoincidingFaces.h"

#include <cstring>

namespace
{

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value)
{
    constexpr std::uint64_t factor = 0x9e3779b97f4a7c15;
    hash = (hash ^ value) * factor;
    return hash ^ hash >> 29;
}

/// Both zeros have the same bits.
std::uint64_t bitsOf(double number)
{
    double const positive = number + 0.0;
    std::uint64_t bits;
    std::memcpy(&bits, &positive, sizeof bits);
    return bits;
}

} // namespace

std::optional<std::uint64_t> FltCoincidingFaces::add(Layer const& layer, std::uint64_t offset,
                                                     std::vector<std::uint32_t> const& corners,
                                                     bool isTwoSided)
{
    std::size_t const begin = kept.size();
    kept.insert(kept.end(), corners.begin(), corners.end());
    auto const count = static_cast<std::uint32_t>(corners.size());
    Side side{layer, count, offset, begin, findLeast(begin, count), false};
    std::optional<std::uint64_t> const atFront = addSide(side);
    if (!isTwoSided)
        return atFront;
    side.isBack = true;
    std::optional<std::uint64_t> const atBack = addSide(side);
    return atFront ? atFront : atBack;
}

std::uint32_t FltCoincidingFaces::findLeast(std::size_t begin, std::uint32_t count) const
{
    std::uint32_t least = 0;
    for (std::uint32_t i = 1; i < count; ++i)
        if (positionAt(begin + i) < positionAt(begin + least))
            least = i;
    return least;
}

/// Where another face has the same hash, only the first one is kept.
std::optional<std::uint64_t> FltCoincidingFaces::addSide(Side const& side)
{
    auto const [entry, isNew] = sides.try_emplace(hashOf(side), side);
    if (isNew || !isSame(entry->second, side))
        return std::nullopt;
    return entry->second.offset;
}

std::uint64_t FltCoincidingFaces::hashOf(Side const& side) const
{
    std::uint64_t hash = mixed(side.layer.scope, static_cast<std::uint32_t>(side.layer.level));
    hash = mixed(hash, static_cast<std::uint32_t>(side.layer.priority));
    for (std::size_t i = 0; i < side.count; ++i)
        for (double const coordinate : positionAt(side.place(i)))
            hash = mixed(hash, bitsOf(coordinate));
    return hash;
}

bool FltCoincidingFaces::isSame(Side const& left, Side const& right) const
{
    if (left.layer.scope != right.layer.scope || left.layer.level != right.layer.level ||
        left.layer.priority != right.layer.priority || left.count != right.count)
        return false;
    for (std::size_t i = 0; i < left.count; ++i)
        if (positionAt(left.place(i)) != positionAt(right.place(i)))
            return false;
    return true;
}

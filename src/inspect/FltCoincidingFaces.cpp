#include "inspect/FltCoincidingFaces.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

using Corners = std::vector<SbVec3d>;

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

bool isLess(SbVec3d const& left, SbVec3d const& right)
{
    return std::lexicographical_compare(left.getValue(), left.getValue() + 3, right.getValue(),
                                        right.getValue() + 3);
}

/// The corners of a side of a face, from its least one on.
class SideCorners
{
public:
    SideCorners(Corners const& corners, bool isBack)
        : corners(corners), isBack(isBack),
          least(static_cast<std::size_t>(std::min_element(corners.begin(), corners.end(), isLess) -
                                         corners.begin()))
    {
    }

    std::size_t size() const { return corners.size(); }
    SbVec3d const& operator[](std::size_t i) const
    {
        return corners[(isBack ? least + size() - i : least + i) % size()];
    }

private:
    Corners const& corners;
    bool isBack;
    std::size_t least;
};

std::uint64_t hashOf(FltCoincidingFaces::Layer const& layer, SideCorners const& side)
{
    std::uint64_t hash = mixed(layer.scope, static_cast<std::uint32_t>(layer.level));
    hash = mixed(hash, static_cast<std::uint32_t>(layer.priority));
    for (std::size_t i = 0; i < side.size(); ++i)
        for (int axis = 0; axis < 3; ++axis)
            hash = mixed(hash, bitsOf(side[i][axis]));
    return hash;
}

bool areEqual(SideCorners const& left, SideCorners const& right)
{
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (left[i] != right[i])
            return false;
    return true;
}

} // namespace

bool FltCoincidingFaces::Side::operator<(Side const& other) const
{
    if (hash != other.hash)
        return hash < other.hash;
    if (record != other.record)
        return record < other.record;
    return number != other.number ? number < other.number : isBack < other.isBack;
}

void FltCoincidingFaces::add(Face const& face, Place const& place)
{
    sides.push_back({hashOf(face.layer, SideCorners(face.corners, false)), place.record, place.number, 0});
    if (face.isTwoSided)
        sides.push_back({hashOf(face.layer, SideCorners(face.corners, true)), place.record, place.number, 1});
}

std::vector<FltCoincidingFaces::Pair> FltCoincidingFaces::takePairs()
{
    std::vector<Side> sorted = std::move(sides);
    sides = {};
    std::sort(sorted.begin(), sorted.end());
    std::vector<Pair> pairs;
    for (std::size_t i = 1, first = 0; i < sorted.size(); ++i)
        if (sorted[i].hash != sorted[first].hash)
            first = i;
        else
            pairs.push_back({sorted[i].place(), sorted[first].place(), sorted[i].isBack != 0});
    std::sort(pairs.begin(), pairs.end(), [](Pair const& left, Pair const& right) {
        return std::tie(left.later, left.isAtBack) < std::tie(right.later, right.isAtBack);
    });
    return pairs;
}

bool FltCoincidingFaces::areSame(Face const& left, Face const& right)
{
    if (!(left.layer == right.layer))
        return false;
    for (bool const leftBack : {false, true})
        for (bool const rightBack : {false, true})
            if ((!leftBack || left.isTwoSided) && (!rightBack || right.isTwoSided) &&
                areEqual(SideCorners(left.corners, leftBack), SideCorners(right.corners, rightBack)))
                return true;
    return false;
}

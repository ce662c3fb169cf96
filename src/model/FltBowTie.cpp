#include "model/FltBowTie.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

/// Edges cross if they come nearer to each other than this part of their lengths,
constexpr double flat = 1e-3;

/// and no nearer to their ends than this part.
constexpr double atAnEnd = 1e-6;

/// The square of the sine of an angle below which edges count as parallel.
constexpr double parallel = 1e-12;

/// A triangle has to be larger by more than rounding to decide the side.
constexpr double larger = 1 + 1e-9;

bool isWithin(double along)
{
    return along > atAnEnd && along < 1 - atAnEnd;
}

/// Where two edges cross: the part of each that lies before that place.
std::optional<std::pair<double, double>> crossingOf(SbVec3d const& begin, SbVec3d const& way,
                                                    SbVec3d const& otherBegin, SbVec3d const& otherWay)
{
    SbVec3d const between = begin - otherBegin;
    double const length = way.sqrLength();
    double const otherLength = otherWay.sqrLength();
    double const both = way.dot(otherWay);
    double const area = length * otherLength - both * both;
    if (!(area > parallel * length * otherLength))
        return std::nullopt;
    double const along = (both * otherWay.dot(between) - otherLength * way.dot(between)) / area;
    double const alongOther = (length * otherWay.dot(between) - both * way.dot(between)) / area;
    SbVec3d const gap = between + way * along - otherWay * alongOther;
    if (!isWithin(along) || !isWithin(alongOther) ||
        !(gap.sqrLength() <= flat * flat * std::max(length, otherLength)))
        return std::nullopt;
    return std::pair{along, alongOther};
}

} // namespace

std::optional<FltBowTie> FltBowTie::find(std::array<SbVec3d, 4> const& corners)
{
    for (int const first : {0, 1}) {
        auto const corner = [&](int after) -> SbVec3d const& {
            return corners[static_cast<std::size_t>(first + after) % 4];
        };
        auto const found = crossingOf(corner(0), corner(1) - corner(0), corner(2), corner(3) - corner(2));
        if (!found)
            continue;
        FltBowTie shape;
        shape.first = first;
        shape.alongFirst = found->first;
        shape.alongOther = found->second;
        SbVec3d const middle = corner(0) + (corner(1) - corner(0)) * shape.alongFirst;
        double const area = (corner(1) - middle).cross(corner(2) - middle).length();
        double const otherArea = (corner(3) - middle).cross(corner(0) - middle).length();
        int const a = first + 1, b = first + 2, c = (first + 3) % 4, d = first; // as the outline goes
        bool const isFirstLarger = area > larger * otherArea;
        shape.triangles[0] = {crossing, isFirstLarger ? a : b, isFirstLarger ? b : a};
        shape.triangles[1] = {crossing, isFirstLarger ? d : c, isFirstLarger ? c : d};
        return shape;
    }
    return std::nullopt;
}

#include "visual/FltLocalOrigin.h"

#include "model/FltModel.h"

#include <Inventor/SbBox3d.h>
#include <Inventor/SbVec3f.h>
#include <algorithm>
#include <cmath>

namespace
{

constexpr double allowedMetres = 1e-4;
constexpr double metresInDegree = 111320; // on the equator, where it is longest

/// A number of floats is so far off, in parts of itself.
constexpr double floatError = 1.0 / (1 << 24);

double largestOf(SbVec3d const& sizes)
{
    return std::max({std::abs(sizes[0]), std::abs(sizes[1]), std::abs(sizes[2])});
}

} // namespace

double FltLocalOrigin::unitOf(FltModel const& model)
{
    bool const isInDegrees =
        model.header != nullptr && model.header->projectionType == FltRecordHeader::geodetic;
    return isInDegrees ? degrees : model.metresPerUnit;
}

double FltLocalOrigin::allowedError(double extent, double metresPerUnit)
{
    if (metresPerUnit == degrees)
        return allowedMetres / metresInDegree;
    return std::max(allowedPartOfExtent * extent, allowedMetres / metresPerUnit);
}

double FltLocalOrigin::errorOf(SbVec3d const& place)
{
    SbVec3d const error = place - roundedToFloats(place);
    return largestOf(error);
}

SbVec3d FltLocalOrigin::roundedToFloats(SbVec3d const& place)
{
    return SbVec3d(SbVec3f(place));
}

bool FltLocalOrigin::mayMove(std::vector<SbVec3f> const& positions, SbVec3d const& way)
{
    SbBox3f box;
    double error = 0;
    for (SbVec3f const& position : positions) {
        box.extendBy(position);
        error = std::max(error, errorOf(SbVec3d(position) + way));
    }
    SbVec3f const size = box.isEmpty() ? SbVec3f(0, 0, 0) : box.getSize();
    return error <= allowedPartOfExtent * static_cast<double>(std::max({size[0], size[1], size[2]}));
}

bool FltLocalOrigin::mayCountTogether(double extent, double smallest, double metresPerUnit)
{
    return extent / 2 * floatError <= allowedError(smallest, metresPerUnit);
}

SbVec3d FltLocalOrigin::of(std::vector<SbVec3d> const& corners, double metresPerUnit)
{
    double error = 0;
    for (SbVec3d const& corner : corners)
        error = std::max(error, errorOf(corner));
    if (error <= allowedError(0, metresPerUnit))
        return {0, 0, 0};
    SbBox3d box;
    for (SbVec3d const& corner : corners)
        box.extendBy(corner);
    if (error <= allowedError(largestOf(box.getSize()), metresPerUnit))
        return {0, 0, 0};
    return roundedToFloats(box.getCenter());
}

SbVec3d FltLocalOrigin::of(SbBox3f const& box, double metresPerUnit)
{
    if (box.isEmpty())
        return {0, 0, 0};
    SbBox3d const exact(box);
    SbVec3d const center = roundedToFloats(exact.getCenter());
    double const distance = largestOf(center);
    bool const isFar =
        distance > largestOf(exact.getSize()) && distance * floatError > allowedError(0, metresPerUnit);
    return isFar ? center : SbVec3d(0, 0, 0);
}

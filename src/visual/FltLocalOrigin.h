#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3d.h>
#include <limits>
#include <vector>

struct FltModel;

/// Where places count from that floats can't hold as they are stored.
namespace FltLocalOrigin
{

/// How far rounding may move a corner, in parts of its mesh's extent.
constexpr double allowedPartOfExtent = 1e-6;

/// What stands for the length of a unit where places are degrees, which have none. Rounding may move them by
/// a tenth of a millimetre on the ground, however wide their mesh is, so that neighbours meet on a globe.
constexpr double degrees = std::numeric_limits<double>::infinity();

/// The length of the unit of a database's places, as it is taken here.
double unitOf(FltModel const& model);

/// How far rounding may move a corner, in the units of the mesh: a millionth of the mesh's extent, or a tenth
/// of a millimetre, whichever is more; of degrees a tenth of a millimetre.
double allowedError(double extent, double metresPerUnit);

/// How far rounding to floats moves a place, along the worst of its axes.
double errorOf(SbVec3d const& place);

/// The nearest place that floats hold.
SbVec3d roundedToFloats(SbVec3d const& place);

/// Whether floats hold positions well enough where they are moved to, in doubles.
bool mayMove(std::vector<SbVec3f> const& positions, SbVec3d const& way);

/// Whether floats hold the corners of meshes as well when all of them count from one place in their middle.
/// @param extent   of all meshes together
/// @param smallest the extent of the smallest of them
bool mayCountTogether(double extent, double smallest, double metresPerUnit);

/// What corners count from: zero, unless rounding them would move one too far; then a place in their middle,
/// which floats hold.
SbVec3d of(std::vector<SbVec3d> const& corners, double metresPerUnit);

/// The middle of a box, as floats hold it, if it is farther away than the box is wide, and so far that floats
/// don't hold what stands there; otherwise zero.
SbVec3d of(SbBox3f const& box, double metresPerUnit);

} // namespace FltLocalOrigin

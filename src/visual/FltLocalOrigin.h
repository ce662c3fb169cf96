#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3d.h>
#include <vector>

/// Where places count from that floats can't hold as they are stored.
namespace FltLocalOrigin
{

/// How far rounding may move a corner, in parts of its mesh's extent.
constexpr double allowedPartOfExtent = 1e-6;

/// How far rounding may move a corner, in the units of the mesh: a millionth of the mesh's extent, or a tenth
/// of a millimetre, whichever is more.
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

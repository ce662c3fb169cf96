#pragma once

#include <Inventor/SbVec3f.h>
#include <vector>

class SbRotation;
class SoPerspectiveCamera;

/// Where the camera of a picture stands. The z axis points up, the y axis north.
namespace CameraPlace
{

/// The turn of a camera that looks from a compass direction and a height above the horizon.
/// @param azimuth   degrees, clockwise from north
/// @param elevation degrees
SbRotation lookingFrom(float azimuth, float elevation);

/// Moves a camera, without turning it, as near as all points still allow.
/// @param aspect width of the picture by its height
/// @param zoom   how many times nearer it comes
void fit(SoPerspectiveCamera& camera, std::vector<SbVec3f> const& points, float aspect, float zoom);

/// The same, and then moves the camera sideways and in depth until a place is in the middle of the picture,
/// as far away as the middle of the points was.
void fitAround(SoPerspectiveCamera& camera, SbVec3f const& target, std::vector<SbVec3f> const& points,
               float aspect, float zoom);

/// Puts a camera at a place and has it look at another.
/// @param zoom how many times larger the picture shows things
/// @return false if the two places are one
bool stand(SoPerspectiveCamera& camera, SbVec3f const& eye, SbVec3f const& target, float zoom);

/// Sets what is too near and too far to be drawn, so that all points are drawn.
void includeDepth(SoPerspectiveCamera& camera, std::vector<SbVec3f> const& points);

/// The middle of the box around points. There has to be one.
SbVec3f middleOf(std::vector<SbVec3f> const& points);

} // namespace CameraPlace

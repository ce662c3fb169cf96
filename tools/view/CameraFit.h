#pragma once

class SbBox3f;
class SoCamera;

namespace CameraFit
{

/// Moves a camera, without turning it, as near to a box as the whole box allows.
/// @param aspect width of the picture by its height
void fit(SoCamera& camera, SbBox3f const& box, float aspect);

} // namespace CameraFit

#include "view/CameraFit.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <algorithm>
#include <cmath>

namespace
{

constexpr float margin = 1.08f;

/// The corners of a box from its middle, along the axes of a camera.
struct Corners {
    Corners(SbBox3f const& box, SbRotation const& turn)
    {
        SbVec3f const half = (box.getMax() - box.getMin()) / 2;
        for (int i = 0; i < 8; ++i)
            turn.inverse().multVec(SbVec3f((i & 1) != 0 ? half[0] : -half[0],
                                           (i & 2) != 0 ? half[1] : -half[1],
                                           (i & 4) != 0 ? half[2] : -half[2]),
                                   points[i]);
    }

    SbVec3f points[8];
};

/// How far before the middle a camera stands that just sees all corners.
float distanceOf(Corners const& corners, float heightAngle, float aspect)
{
    float const up = std::tan(heightAngle / 2) / margin;
    float const across = up * aspect;
    float distance = 0;
    for (SbVec3f const& point : corners.points)
        distance =
            std::max({distance, point[2] + std::abs(point[0]) / across, point[2] + std::abs(point[1]) / up});
    return distance;
}

float heightOf(Corners const& corners, float aspect)
{
    float height = 0;
    for (SbVec3f const& point : corners.points)
        height = std::max({height, 2 * std::abs(point[1]), 2 * std::abs(point[0]) / aspect});
    return height * margin;
}

} // namespace

void CameraFit::fit(SoCamera& camera, SbBox3f const& box, float aspect)
{
    SbRotation const turn = camera.orientation.getValue();
    Corners const corners(box, turn);
    float const size = std::max((box.getMax() - box.getMin()).length(), 1e-6f);
    // The picture of a camera whose window is narrower than high is fitted by the toolkit to its width.
    float distance = size;
    if (camera.isOfType(SoPerspectiveCamera::getClassTypeId()))
        distance = distanceOf(corners, static_cast<SoPerspectiveCamera&>(camera).heightAngle.getValue(),
                              aspect < 1 ? 1 : aspect);
    else if (camera.isOfType(SoOrthographicCamera::getClassTypeId()))
        static_cast<SoOrthographicCamera&>(camera).height = heightOf(corners, aspect < 1 ? 1 : aspect);
    distance = std::max(distance, size * 0.01f);

    SbVec3f forward;
    turn.multVec(SbVec3f(0, 0, -1), forward);
    camera.position = box.getCenter() - forward * distance;
    camera.focalDistance = distance;
    camera.nearDistance = std::max(distance - size, size * 1e-4f);
    camera.farDistance = distance + size;
}

#include "shot/CameraPlace.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/SbRotation.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <algorithm>
#include <cmath>

namespace
{

/// A picture looks best when it nearly touches its edges.
constexpr float margin = 1.03f;

float radians(float degrees)
{
    return degrees * static_cast<float>(M_PI / 180);
}

SbVec3f forwardOf(SoPerspectiveCamera const& camera)
{
    SbVec3f forward;
    camera.orientation.getValue().multVec(SbVec3f(0, 0, -1), forward);
    return forward;
}

} // namespace

SbRotation CameraPlace::lookingFrom(float azimuth, float elevation)
{
    // A camera looks along -z with y up: raise it to the horizon, then turn it about the z axis.
    return SbRotation(SbVec3f(1, 0, 0), radians(90 - elevation)) *
           SbRotation(SbVec3f(0, 0, 1), radians(180 - azimuth));
}

void CameraPlace::fit(SoPerspectiveCamera& camera, std::vector<SbVec3f> const& points, float aspect,
                      float zoom)
{
    SbMatrix turn;
    turn.setRotate(camera.orientation.getValue());
    SbMatrix const turnBack = turn.inverse();
    // The toolkit gives the camera's angle to the shorter side of the picture.
    float const slope = std::tan(camera.heightAngle.getValue() / 2);
    float const slopes[2] = {slope * std::max(aspect, 1.0f), slope / std::min(aspect, 1.0f)};

    // In each axis of the picture: how far the points reach to both sides, brought to the camera's depth 0.
    float above[2] = {-HUGE_VALF, -HUGE_VALF};
    float below[2] = {-HUGE_VALF, -HUGE_VALF};
    float nearest = -HUGE_VALF;
    float farthest = HUGE_VALF;
    for (SbVec3f const& place : points) {
        SbVec3f point;
        turnBack.multVecMatrix(place, point);
        for (int axis = 0; axis < 2; ++axis) {
            above[axis] = std::max(above[axis], point[axis] + slopes[axis] * point[2]);
            below[axis] = std::max(below[axis], -point[axis] + slopes[axis] * point[2]);
        }
        nearest = std::max(nearest, point[2]);
        farthest = std::min(farthest, point[2]);
    }
    float const tight =
        std::max((above[0] + below[0]) / (2 * slopes[0]), (above[1] + below[1]) / (2 * slopes[1]));
    float const middle = (nearest + farthest) / 2;
    float const distance = std::max((tight - middle) * margin / zoom, 1e-6f);
    SbVec3f place((above[0] - below[0]) / 2, (above[1] - below[1]) / 2, middle + distance);
    turn.multVecMatrix(place, place);
    camera.position = place;
    camera.focalDistance = distance;
}

void CameraPlace::fitAround(SoPerspectiveCamera& camera, SbVec3f const& target,
                            std::vector<SbVec3f> const& points, float aspect, float zoom)
{
    fit(camera, points, aspect, zoom);
    camera.position = target - forwardOf(camera) * camera.focalDistance.getValue();
}

bool CameraPlace::stand(SoPerspectiveCamera& camera, SbVec3f const& eye, SbVec3f const& target, float zoom)
{
    SbVec3f const way = target - eye;
    float const distance = way.length();
    if (!(distance > 0) || !std::isfinite(distance))
        return false;
    // Straight up or down has no upright of its own: north is at the top.
    constexpr float nearlyVertical = 0.9999f;
    bool const isVertical = std::abs(way[2]) > nearlyVertical * distance;
    camera.position = eye;
    camera.pointAt(target, isVertical ? SbVec3f(0, 1, 0) : SbVec3f(0, 0, 1));
    camera.focalDistance = distance;
    camera.heightAngle = 2 * std::atan(std::tan(camera.heightAngle.getValue() / 2) / zoom);
    return true;
}

void CameraPlace::includeDepth(SoPerspectiveCamera& camera, std::vector<SbVec3f> const& points)
{
    SbVec3f const forward = forwardOf(camera);
    SbVec3f const eye = camera.position.getValue();
    float nearest = HUGE_VALF;
    float farthest = -HUGE_VALF;
    for (SbVec3f const& point : points) {
        float const depth = (point - eye).dot(forward);
        nearest = std::min(nearest, depth);
        farthest = std::max(farthest, depth);
    }
    // Nearer planes would leave too few steps for the depth of what is far away.
    float const distance = camera.focalDistance.getValue();
    float const reach = std::max((farthest - nearest) / 2, distance / 1000);
    float const middle = (nearest + farthest) / 2;
    camera.nearDistance = std::max((middle - reach) * 0.9f, distance / 200);
    camera.farDistance = std::max(middle + reach * 1.1f, camera.nearDistance.getValue() * 2);
}

SbVec3f CameraPlace::middleOf(std::vector<SbVec3f> const& points)
{
    SbBox3f box;
    for (SbVec3f const& point : points)
        box.extendBy(point);
    return box.getCenter();
}

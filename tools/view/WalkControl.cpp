#include "view/WalkControl.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoCamera.h>
#include <QKeyEvent>
#include <algorithm>

namespace
{

constexpr float stepOfSize = 0.01f; ///< Of the model's size, a key.
constexpr float faster = 5;
constexpr float radiansOfPixel = 0.004f;
constexpr float steepest = 0.98f; ///< Sine of the largest angle between the view and the ground.

SbVec3f turned(SoCamera const& camera, SbVec3f const& direction)
{
    SbVec3f result;
    camera.orientation.getValue().multVec(direction, result);
    return result;
}

/// Along the ground. @return the direction as it is if it points straight up or down
SbVec3f level(SbVec3f direction)
{
    SbVec3f flat(direction[0], direction[1], 0);
    return flat.normalize() > 0 ? flat : direction;
}

} // namespace

bool WalkControl::takeKey(QKeyEvent const& event, SoCamera& camera, float size)
{
    SbVec3f const ahead = level(turned(camera, SbVec3f(0, 0, -1)));
    SbVec3f const right = level(turned(camera, SbVec3f(1, 0, 0)));
    SbVec3f const up(0, 0, 1);
    SbVec3f way(0, 0, 0);
    switch (event.key()) {
    case Qt::Key_W:
        way = ahead;
        break;
    case Qt::Key_S:
        way = -ahead;
        break;
    case Qt::Key_A:
        way = -right;
        break;
    case Qt::Key_D:
        way = right;
        break;
    case Qt::Key_Q:
        way = -up;
        break;
    case Qt::Key_E:
        way = up;
        break;
    default:
        return false;
    }
    float const step = size * stepOfSize * ((event.modifiers() & Qt::ShiftModifier) != 0 ? faster : 1);
    camera.position = camera.position.getValue() + way * step;
    return true;
}

void WalkControl::look(QPoint const& way, SoCamera& camera)
{
    SbRotation const before = camera.orientation.getValue();
    SbRotation const about(SbVec3f(0, 0, 1), -static_cast<float>(way.x()) * radiansOfPixel);
    SbRotation const nod(SbVec3f(1, 0, 0), -static_cast<float>(way.y()) * radiansOfPixel);
    SbRotation const after = nod * before * about;
    SbVec3f ahead;
    after.multVec(SbVec3f(0, 0, -1), ahead);
    camera.orientation = std::abs(ahead[2]) < steepest ? after : before * about;
}

#include "view/SectionPlane.h"

#include <Inventor/SbPlane.h>
#include <Inventor/nodes/SoClipPlane.h>
#include <Inventor/nodes/SoGroup.h>

SectionPlane::SectionPlane(SoGroup& content) : plane(new SoClipPlane)
{
    plane->ref();
    content.insertChild(plane, 0);
    release();
}

SectionPlane::~SectionPlane()
{
    plane->unref();
}

void SectionPlane::setBox(SbBox3f const& newBox)
{
    box = newBox;
}

void SectionPlane::cut(Axis axis, double part, bool isTurned)
{
    if (box.isEmpty())
        return;
    int const which = static_cast<int>(axis);
    SbVec3f direction(0, 0, 0);
    direction[which] = isTurned ? 1.0f : -1.0f;
    SbVec3f place = box.getCenter();
    place[which] =
        box.getMin()[which] + static_cast<float>(part) * (box.getMax()[which] - box.getMin()[which]);
    plane->plane = SbPlane(direction, place);
    plane->on = TRUE;
}

void SectionPlane::release()
{
    plane->on = FALSE;
}

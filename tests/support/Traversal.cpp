#include "support/Traversal.h"

#include "support/SceneText.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoShape.h>

namespace
{

void countTriangle(void* count, SoCallbackAction* /*action*/, SoPrimitiveVertex const* /*first*/,
                   SoPrimitiveVertex const* /*second*/, SoPrimitiveVertex const* /*third*/)
{
    ++*static_cast<int*>(count);
}

} // namespace

int traverse(SoNode* root)
{
    SoGetBoundingBoxAction measure{SbViewportRegion()};
    measure.apply(root);
    int triangles = 0;
    SoCallbackAction count;
    count.addTriangleCallback(SoShape::getClassTypeId(), countTriangle, &triangles);
    count.apply(root);
    sceneText(root);
    return triangles;
}

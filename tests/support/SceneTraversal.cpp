#include "support/SceneTraversal.h"

#include "support/SceneText.h"

#include <Inventor/SbName.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoShape.h>

namespace
{

void countTriangle(void* count, SoCallbackAction* /*action*/, SoPrimitiveVertex const* /*first*/,
                   SoPrimitiveVertex const* /*second*/, SoPrimitiveVertex const* /*third*/)
{
    ++*static_cast<int*>(count);
}

} // namespace

std::size_t traverseScene(SoNode* root)
{
    SoGetBoundingBoxAction box{SbViewportRegion()};
    box.apply(root);
    SoSearchAction search;
    search.setName(SbName("no_node_bears_this_name"));
    search.setSearchingAll(TRUE);
    search.apply(root);
    return writtenScene(root, true).size(); // text would be mostly the indentation of a deep scene
}

int countTriangles(SoNode* root)
{
    int triangles = 0;
    SoCallbackAction action;
    action.addTriangleCallback(SoShape::getClassTypeId(), countTriangle, &triangles);
    action.apply(root);
    return triangles;
}

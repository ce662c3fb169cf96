#include "support/SceneTraversal.h"

#include <Inventor/SbName.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOutput.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoShape.h>
#include <cstdlib>

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
    SoOutput output;
    std::size_t const firstGuess = 64 * 1024;
    output.setBuffer(std::malloc(firstGuess), firstGuess, std::realloc);
    output.setBinary(TRUE); // without the indentation, which is most of the text of a deep scene
    SoWriteAction(&output).apply(root);
    void* buffer = nullptr;
    std::size_t size = 0;
    output.getBuffer(buffer, size);
    std::free(buffer);
    return size;
}

int countTriangles(SoNode* root)
{
    int triangles = 0;
    SoCallbackAction action;
    action.addTriangleCallback(SoShape::getClassTypeId(), countTriangle, &triangles);
    action.apply(root);
    return triangles;
}

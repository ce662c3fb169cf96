#include "support/SceneTraversal.h"

#include "support/SceneText.h"

#include "toolkit/SceneWriter.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbName.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShape.h>
#include <string>

namespace
{

void countTriangle(void* count, SoCallbackAction* /*action*/, SoPrimitiveVertex const* /*first*/,
                   SoPrimitiveVertex const* /*second*/, SoPrimitiveVertex const* /*third*/)
{
    ++*static_cast<int*>(count);
}

void sendRay(SoNode* root)
{
    SoRayPickAction pick{SbViewportRegion(100, 100)};
    pick.setRay(SbVec3f(0.3F, 0.4F, 100), SbVec3f(0, 0, -1));
    pick.setPickAll(TRUE);
    pick.apply(root);
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

void useWritten(std::string const& written)
{
    SoInput input;
    input.setBuffer(written.data(), written.size());
    SoNodeRef<SoSeparator> const again(SoDB::readAll(&input));
    if (again.get() == nullptr) // what a broken file names may be no text that the toolkit reads
        return;
    countTriangles(again.get());
    sendRay(again.get());
}

void useScene(SoNode* root)
{
    sendRay(root);
    {
        SoNodeRef<SoNode> const copy(root->copy());
        countTriangles(copy.get());
        sendRay(copy.get());
    }
    SceneWriter::makePlain(root);
    useWritten(writtenScene(root, true));
    useWritten(writtenScene(root, false));
}

#include "support/ScenePrimitives.h"

#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoTextureUnitElement.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoTexture2.h>

/// What the toolkit calls.
struct ScenePrimitives::Callbacks {
    using Response = SoCallbackAction::Response;

    static ScenePrimitives& of(void* data) { return *static_cast<ScenePrimitives*>(data); }

    static void triangle(void* data, SoCallbackAction* action, Vertex const* a, Vertex const* b,
                         Vertex const* c)
    {
        if (!action->getCurPathTail()->isOfType(SoAsciiText::getClassTypeId()))
            of(data).takeTriangle(*action, *a, *b, *c);
    }

    static void line(void* data, SoCallbackAction* action, Vertex const* a, Vertex const* b)
    {
        of(data).takeLine(*action, *a, *b);
    }

    static void point(void* data, SoCallbackAction* action, Vertex const* vertex)
    {
        of(data).takePoint(*action, *vertex);
    }

    template <int change>
    static Response passBillboard(void* data, SoCallbackAction*, SoNode const*)
    {
        of(data).billboards += change;
        return SoCallbackAction::CONTINUE;
    }

    static Response beginSeparator(void* data, SoCallbackAction*, SoNode const* node)
    {
        auto& separators = of(data).separators;
        separators.push_back(separators.back());
        // The writer of files calls nodes without a name "_" that stand in several places.
        std::string const name = node->getName().getString();
        if (!name.empty() && name != "_")
            separators.back().name = name;
        return SoCallbackAction::CONTINUE;
    }

    static Response endSeparator(void* data, SoCallbackAction*, SoNode const*)
    {
        of(data).separators.pop_back();
        return SoCallbackAction::CONTINUE;
    }

    static Response takePicture(void* data, SoCallbackAction* action, SoNode const* node)
    {
        if (SoTextureUnitElement::get(action->getState()) == 0)
            of(data).separators.back().picture =
                static_cast<SoTexture2 const*>(node)->filename.getValue().getString();
        return SoCallbackAction::CONTINUE;
    }
};

void ScenePrimitives::goOver(SoNode* root)
{
    SoCallbackAction action;
    SoType const shape = SoShape::getClassTypeId(), separator = SoSeparator::getClassTypeId(),
                 billboard = SoVRMLBillboard::getClassTypeId();
    action.addPreCallback(billboard, Callbacks::passBillboard<1>, this);
    action.addPostCallback(billboard, Callbacks::passBillboard<-1>, this);
    action.addPreCallback(separator, Callbacks::beginSeparator, this);
    action.addPostCallback(separator, Callbacks::endSeparator, this);
    action.addPreCallback(SoTexture2::getClassTypeId(), Callbacks::takePicture, this);
    action.addTriangleCallback(shape, Callbacks::triangle, this);
    action.addLineSegmentCallback(shape, Callbacks::line, this);
    action.addPointCallback(shape, Callbacks::point, this);
    action.apply(root);
}

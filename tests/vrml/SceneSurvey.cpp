#include "vrml/SceneSurvey.h"

#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoTextureUnitElement.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoTexture2.h>
#include <vector>

namespace
{

/// A survey while the toolkit goes through the scene.
struct Traversal {
    SceneSurvey& survey;
    int billboards = 0;                       ///< Above the present node.
    std::vector<std::string> pictures = {""}; ///< The present one, in each separator above the present node.
};

bool isText(SoCallbackAction& action)
{
    return action.getCurPathTail()->isOfType(SoAsciiText::getClassTypeId());
}

void extend(SbBox3f& box, SoCallbackAction& action, SoPrimitiveVertex const* vertex)
{
    SbVec3f point;
    action.getModelMatrix().multVecMatrix(vertex->getPoint(), point);
    box.extendBy(point);
}

void takeTriangle(void* data, SoCallbackAction* action, SoPrimitiveVertex const* a,
                  SoPrimitiveVertex const* b, SoPrimitiveVertex const* c)
{
    auto const& [survey, billboards, pictures] = *static_cast<Traversal*>(data);
    if (isText(*action))
        return;
    if (billboards == 0)
        for (SoPrimitiveVertex const* vertex : {a, b, c})
            extend(survey.box, *action, vertex);
    std::string const& picture = pictures.back();
    ++survey.triangles;
    survey.unlit += action->getLightModel() == SoLightModel::BASE_COLOR ? 1 : 0;
    survey.textured += picture.empty() ? 0 : 1;
    survey.turning += billboards > 0 ? 1 : 0;
    if (!picture.empty())
        survey.pictures.insert(picture);
}

void takeLine(void* data, SoCallbackAction* action, SoPrimitiveVertex const* a, SoPrimitiveVertex const* b)
{
    SceneSurvey& survey = static_cast<Traversal*>(data)->survey;
    for (SoPrimitiveVertex const* vertex : {a, b})
        extend(survey.box, *action, vertex);
    ++survey.lines;
}

void takePoint(void* data, SoCallbackAction* action, SoPrimitiveVertex const* vertex)
{
    SceneSurvey& survey = static_cast<Traversal*>(data)->survey;
    extend(survey.box, *action, vertex);
    ++survey.points;
}

template <int change>
SoCallbackAction::Response passBillboard(void* data, SoCallbackAction*, SoNode const*)
{
    static_cast<Traversal*>(data)->billboards += change;
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response beginSeparator(void* data, SoCallbackAction*, SoNode const*)
{
    auto& pictures = static_cast<Traversal*>(data)->pictures;
    pictures.push_back(pictures.back());
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response endSeparator(void* data, SoCallbackAction*, SoNode const*)
{
    static_cast<Traversal*>(data)->pictures.pop_back();
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response takePicture(void* data, SoCallbackAction* action, SoNode const* node)
{
    if (SoTextureUnitElement::get(action->getState()) == 0)
        static_cast<Traversal*>(data)->pictures.back() =
            static_cast<SoTexture2 const*>(node)->filename.getValue().getString();
    return SoCallbackAction::CONTINUE;
}

} // namespace

SceneSurvey::SceneSurvey(SoNode* root)
{
    Traversal traversal{*this};
    SoCallbackAction action;
    SoType const shape = SoShape::getClassTypeId();
    SoType const billboard = SoVRMLBillboard::getClassTypeId();
    action.addPreCallback(billboard, passBillboard<1>, &traversal);
    action.addPostCallback(billboard, passBillboard<-1>, &traversal);
    action.addPreCallback(SoSeparator::getClassTypeId(), beginSeparator, &traversal);
    action.addPostCallback(SoSeparator::getClassTypeId(), endSeparator, &traversal);
    action.addPreCallback(SoTexture2::getClassTypeId(), takePicture, &traversal);
    action.addTriangleCallback(shape, takeTriangle, &traversal);
    action.addLineSegmentCallback(shape, takeLine, &traversal);
    action.addPointCallback(shape, takePoint, &traversal);
    action.apply(root);
}

#include "shot/DrawnPoints.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <Inventor/nodes/SoVertexShape.h>
#include <cmath>
#include <utility>

namespace
{

class PointCollector
{
public:
    template <class Applied>
    explicit PointCollector(Applied* applied)
    {
        SoCallbackAction action;
        action.addPreCallback(SoShape::getClassTypeId(), takeShape, this);
        action.addPreCallback(SoLOD::getClassTypeId(), takeLevels, this);
        action.apply(applied);
    }

    std::vector<SbVec3f> points;

private:
    /// The toolkit would go on with one of the levels.
    static SoCallbackAction::Response takeLevels(void*, SoCallbackAction* action, SoNode const* node)
    {
        if (action->getCurPathCode() == SoAction::IN_PATH)
            return SoCallbackAction::CONTINUE;
        auto const* const levels = static_cast<SoLOD const*>(node);
        for (int i = 0; i < levels->getNumChildren(); ++i) {
            action->getState()->push();
            action->traverse(levels->getChild(i));
            action->getState()->pop();
        }
        return SoCallbackAction::PRUNE;
    }

    static SoCallbackAction::Response takeShape(void* self, SoCallbackAction* action, SoNode const* node)
    {
        auto& collector = *static_cast<PointCollector*>(self);
        SbMatrix const& model = action->getModelMatrix();
        auto const* const shape = node->isOfType(SoVertexShape::getClassTypeId())
                                      ? static_cast<SoVertexShape const*>(node)
                                      : nullptr;
        SoNode const* const property = shape != nullptr ? shape->vertexProperty.getValue() : nullptr;
        if (property == nullptr || !property->isOfType(SoVertexProperty::getClassTypeId()))
            collector.addBox(*action);
        else if (auto const& places = static_cast<SoVertexProperty const&>(*property).vertex;
                 node->isOfType(SoIndexedShape::getClassTypeId()))
            collector.addIndexed(model, places, static_cast<SoIndexedShape const&>(*shape).coordIndex);
        else
            collector.addAll(model, places);
        // No triangles are wanted, and the toolkit can't make them of faces without materials.
        return SoCallbackAction::PRUNE;
    }

    void addIndexed(SbMatrix const& model, SoMFVec3f const& places, SoMFInt32 const& indices)
    {
        for (int i = 0; i < indices.getNum(); ++i)
            if (indices[i] >= 0 && indices[i] < places.getNum())
                add(model, places[indices[i]]);
    }

    void addAll(SbMatrix const& model, SoMFVec3f const& places)
    {
        for (int i = 0; i < places.getNum(); ++i)
            add(model, places[i]);
    }

    /// Of a text: the corners of its box.
    void addBox(SoCallbackAction& action)
    {
        SoPath* const path = action.getCurPath()->copy();
        path->ref();
        SoGetBoundingBoxAction measure(action.getViewportRegion());
        measure.apply(path);
        path->unref();
        SbBox3f const box = measure.getBoundingBox();
        if (box.isEmpty())
            return;
        for (int corner = 0; corner < 8; ++corner)
            add(SbMatrix::identity(), SbVec3f((corner & 1) != 0 ? box.getMax()[0] : box.getMin()[0],
                                              (corner & 2) != 0 ? box.getMax()[1] : box.getMin()[1],
                                              (corner & 4) != 0 ? box.getMax()[2] : box.getMin()[2]));
    }

    void add(SbMatrix const& model, SbVec3f const& place)
    {
        SbVec3f point;
        model.multVecMatrix(place, point);
        if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]))
            points.push_back(point);
    }
};

} // namespace

std::vector<SbVec3f> DrawnPoints::of(SoNode* scene)
{
    return std::move(PointCollector(scene).points);
}

std::vector<SbVec3f> DrawnPoints::of(SoPath* path)
{
    return std::move(PointCollector(path).points);
}

#include "view/DrawnBox.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoVertexProperty.h>

namespace
{

/// Takes in the points of the shapes that a traversal meets.
class PointCollector
{
public:
    SbBox3f box;

    static SoCallbackAction::Response take(void* self, SoCallbackAction* action, SoNode const* node)
    {
        auto& collector = *static_cast<PointCollector*>(self);
        auto const* const shape = node->isOfType(SoIndexedShape::getClassTypeId())
                                      ? static_cast<SoIndexedShape const*>(node)
                                      : nullptr;
        SoNode const* const property = shape != nullptr ? shape->vertexProperty.getValue() : nullptr;
        if (property != nullptr && property->isOfType(SoVertexProperty::getClassTypeId()))
            collector.addPoints(*action, *shape, static_cast<SoVertexProperty const&>(*property));
        else
            collector.addBox(*action);
        return SoCallbackAction::PRUNE; // no triangles are wanted
    }

private:
    void addPoints(SoCallbackAction& action, SoIndexedShape const& shape, SoVertexProperty const& property)
    {
        SbMatrix const& model = action.getModelMatrix();
        int const count = property.vertex.getNum();
        SbVec3f const* const points = property.vertex.getValues(0);
        for (int i = 0; i < shape.coordIndex.getNum(); ++i) {
            int const place = shape.coordIndex[i];
            if (place < 0 || place >= count)
                continue;
            SbVec3f point;
            model.multVecMatrix(points[place], point);
            box.extendBy(point);
        }
    }

    void addBox(SoCallbackAction& action)
    {
        SoPath* const path = action.getCurPath()->copy();
        path->ref();
        SoGetBoundingBoxAction measure(action.getViewportRegion());
        measure.apply(path);
        if (!measure.getBoundingBox().isEmpty())
            box.extendBy(measure.getBoundingBox());
        path->unref();
    }
};

template <class Applied>
SbBox3f boxOf(Applied* applied, SbViewportRegion const& region)
{
    PointCollector collector;
    SoCallbackAction action(region);
    action.addPreCallback(SoShape::getClassTypeId(), PointCollector::take, &collector);
    action.apply(applied);
    return collector.box;
}

} // namespace

SbBox3f DrawnBox::of(SoNode* scene, SbViewportRegion const& region)
{
    return boxOf(scene, region);
}

SbBox3f DrawnBox::of(SoPath* path, SbViewportRegion const& region)
{
    return boxOf(path, region);
}

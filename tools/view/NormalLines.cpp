#include "view/NormalLines.h"

#include "view/OverlayLines.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <cstdint>
#include <vector>

namespace
{

constexpr std::size_t mostLines = 500000;
constexpr float partOfScene = 0.02f; ///< The length of a line, of the scene's diagonal.

/// Collects the lines of the face sets that a traversal meets.
class NormalCollector
{
public:
    explicit NormalCollector(float length) : length(length) {}

    std::vector<SbVec3f> ends;

    static SoCallbackAction::Response take(void* self, SoCallbackAction* action, SoNode const* node)
    {
        static_cast<NormalCollector*>(self)->add(*action, *static_cast<SoIndexedFaceSet const*>(node));
        return SoCallbackAction::PRUNE;
    }

private:
    void add(SoCallbackAction const& action, SoIndexedFaceSet const& faces)
    {
        auto const* const property = static_cast<SoVertexProperty const*>(faces.vertexProperty.getValue());
        if (property == nullptr || !property->isOfType(SoVertexProperty::getClassTypeId()))
            return;
        model = const_cast<SoCallbackAction&>(action).getModelMatrix(); // it only lacks the const
        turn = model.inverse().transpose();
        int const count = faces.coordIndex.getNum();
        int begin = 0;
        for (int i = 0; i <= count; ++i)
            if (i == count || faces.coordIndex[i] < 0) {
                addFace(faces, *property, begin, i);
                begin = i + 1;
            }
    }

    void addFace(SoIndexedFaceSet const& faces, SoVertexProperty const& property, int begin, int end)
    {
        if (property.normal.getNum() > 0 &&
            property.normalBinding.getValue() == SoVertexProperty::PER_VERTEX_INDEXED)
            for (int i = begin; i < end; ++i)
                addCorner(faces, property, i);
        else
            addMiddle(faces, property, begin, end);
    }

    void addCorner(SoIndexedFaceSet const& faces, SoVertexProperty const& property, int i)
    {
        int const place = faces.coordIndex[i];
        // A normalIndex that isn't set holds a single -1: the points' own indices count then.
        bool const hasOwnIndex = i < faces.normalIndex.getNum() && faces.normalIndex[0] >= 0;
        int const normal = hasOwnIndex ? faces.normalIndex[i] : place;
        if (place < property.vertex.getNum() && normal >= 0 && normal < property.normal.getNum())
            addLine(property.vertex[place], property.normal[normal]);
    }

    void addMiddle(SoIndexedFaceSet const& faces, SoVertexProperty const& property, int begin, int end)
    {
        SbVec3f middle(0, 0, 0);
        SbVec3f normal(0, 0, 0);
        for (int i = begin; i < end; ++i) {
            int const place = faces.coordIndex[i];
            int const next = faces.coordIndex[i + 1 < end ? i + 1 : begin];
            if (place >= property.vertex.getNum() || next >= property.vertex.getNum())
                return;
            middle += property.vertex[place];
            normal += property.vertex[place].cross(property.vertex[next]);
        }
        if (end - begin > 2)
            addLine(middle / static_cast<float>(end - begin), normal);
    }

    void addLine(SbVec3f const& place, SbVec3f const& normal)
    {
        if (ends.size() >= 2 * mostLines)
            return;
        SbVec3f from;
        SbVec3f along;
        model.multVecMatrix(place, from);
        turn.multDirMatrix(normal, along);
        if (along.normalize() == 0)
            return;
        ends.push_back(from);
        ends.push_back(from + along * length);
    }

    float length;
    SbMatrix model;
    SbMatrix turn;
};

} // namespace

SoSeparator* NormalLines::make(SoNode* scene, SbViewportRegion const& region)
{
    SoGetBoundingBoxAction box(region);
    box.apply(scene);
    SbBox3f const bounds = box.getBoundingBox();
    float const diagonal = bounds.isEmpty() ? 1 : (bounds.getMax() - bounds.getMin()).length();
    NormalCollector collector(diagonal * partOfScene);
    SoCallbackAction action;
    action.addPreCallback(SoIndexedFaceSet::getClassTypeId(), NormalCollector::take, &collector);
    action.apply(scene);
    return OverlayLines::make(collector.ends, SbColor(0.1f, 0.2f, 0.9f), 1);
}

#include "visual/FltVisualBounds.h"

#include "visual/FltNodeMatrix.h"

#include <Inventor/SbBox3f.h>
#include <cmath>

namespace
{

void add(SbBox3d const& box, SbDPMatrix const& matrix, SbBox3d& all)
{
    if (box.isEmpty())
        return;
    for (unsigned i = 0; i < 8; ++i) {
        SbVec3d corner;
        for (int axis = 0; axis < 3; ++axis)
            corner[axis] = ((i >> axis & 1U) != 0 ? box.getMax() : box.getMin())[axis];
        matrix.multVecMatrix(corner, corner);
        all.extendBy(corner);
    }
}

} // namespace

double FltVisualBounds::radiusOf(FltVisualNode const& node)
{
    SbBox3d const box = boxOf(node);
    double const radius = box.isEmpty() ? 0 : box.getSize().length() / 2;
    return std::isfinite(radius) ? radius : 0;
}

SbBox3d FltVisualBounds::boxOf(FltVisualNode const& node)
{
    SbBox3d const inside = insideOf(node);
    SbDPMatrix const matrix = FltNodeMatrix::of(node);
    SbBox3d box;
    if (auto const* const copies = node.as<FltVisualCopies>())
        for (SbDPMatrix const& place : copies->places)
            add(inside, place * matrix, box);
    else
        add(inside, matrix, box);
    return box;
}

SbBox3d const& FltVisualBounds::insideOf(FltVisualNode const& node)
{
    if (auto const known = insides.find(&node); known != insides.end())
        return known->second;
    SbBox3d all;
    for (FltMesh const& mesh : node.meshes) {
        SbBox3f box;
        for (SbVec3f const& position : mesh.positions)
            box.extendBy(position);
        if (!box.isEmpty())
            add({SbVec3d(box.getMin()), SbVec3d(box.getMax())}, FltNodeMatrix::by(mesh.origin), all);
    }
    for (std::shared_ptr<FltVisualNode> const& child : node.children)
        if (child != nullptr && !child->isHidden)
            add(boxOf(*child), SbDPMatrix::identity(), all);
    return insides[&node] = all;
}

#include "complete/FltGroupBuilder.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "toolkit/StackSpace.h"

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <algorithm>

FltGroupBuilder::FltGroupBuilder(SoGroup* group) : group(group)
{
    part.node = SoNodeRef<SoNode>(group);
    part.visits = 1;
    part.depth = 1;
}

bool FltGroupBuilder::add(FltScenePart const& added)
{
    if (added.node.get() == nullptr)
        return false;
    if (added.depth + 1 > FltLimits::sceneDepth ||
        !StackSpace::holds(static_cast<std::size_t>(added.depth) * FltLimits::stackForANode)) {
        FltWarningMessageConsole::notifyGuard(
            "A part of the database is left out, because the scene would become too deep");
        return false;
    }
    group->addChild(added.node.get());
    part.visits += added.visits;
    part.depth = std::max(part.depth, added.depth + 1);
    if (!added.box.isEmpty()) {
        SbBox3f box = added.box;
        box.transform(placement);
        part.box.extendBy(box);
    }
    return true;
}

bool FltGroupBuilder::addCopies(FltScenePart const& part, std::vector<SbMatrix> const& places)
{
    auto* const node = new SoMultipleCopy;
    node->matrix.setValues(0, static_cast<int>(places.size()), places.data());
    FltGroupBuilder copies(node);
    if (!copies.add(part))
        return false;
    copies.part.visits += (static_cast<std::int64_t>(places.size()) - 1) * (part.visits + 1);
    copies.part.box.makeEmpty();
    for (SbMatrix const& place : places) {
        if (part.box.isEmpty())
            break;
        SbBox3f box = part.box;
        box.transform(place);
        copies.part.box.extendBy(box);
    }
    return add(copies.part);
}

void FltGroupBuilder::addProperty(SoNode* node)
{
    group->addChild(node);
    ++part.visits;
    part.depth = std::max(part.depth, 2);
}

void FltGroupBuilder::addMatrix(SbMatrix const& matrix)
{
    auto* const transform = new SoMatrixTransform;
    transform->matrix = matrix;
    addProperty(transform);
    stackMatrix(matrix);
}

#include "visual/FltNodeBuilder.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "toolkit/StackSpace.h"
#include "visual/FltMirrors.h"

#include <algorithm>

namespace
{

/// Nodes of the toolkit that a mesh becomes, and those on its longest way down.
constexpr int nodesOfAMesh = 10;
constexpr int depthOfAMesh = 4;

} // namespace

FltNodeBuilder::FltNodeBuilder()
{
    part.node = std::make_shared<FltVisualNode>();
    part.visits = 1;
    part.depth = 1;
}

bool FltNodeBuilder::add(FltVisualPart const& added)
{
    if (added.node == nullptr)
        return false;
    if (added.depth + 1 > FltLimits::sceneDepth ||
        !StackSpace::holds(static_cast<std::size_t>(added.depth) * FltLimits::stackForANode)) {
        FltWarningMessageConsole::notifyGuard(
            "A part of the database is left out, because the scene would become too deep");
        return false;
    }
    part.node->children.push_back(added.node);
    part.visits += added.visits;
    part.depth = std::max(part.depth, added.depth + 1);
    addBox(added.box);
    return true;
}

void FltNodeBuilder::addPlace(FltVisualPart const& added)
{
    FltVisualPart inPlace = added;
    ++inPlace.visits;
    ++inPlace.depth;
    if (!add(inPlace))
        part.node->children.emplace_back();
}

void FltNodeBuilder::addCopies(FltVisualPart const& copied, std::vector<SbDPMatrix> const& places)
{
    FltNodeBuilder copies;
    copies->become<FltVisualCopies>({places});
    if (!copies.add(copied))
        return;
    if (FltVisualSenses const senses = FltMirrors::sensesOf(places); senses.isStraight && senses.isMirrored) {
        ++copies.part.visits; // two lists of copies in a group
        ++copies.part.depth;
    }
    copies.part.visits += (static_cast<std::int64_t>(places.size()) - 1) * (copied.visits + 1);
    copies.part.box.makeEmpty();
    for (SbDPMatrix const& place : places) {
        if (copied.box.isEmpty())
            break;
        SbBox3f box = copied.box;
        box.transform(SbMatrix(place));
        copies.part.box.extendBy(box);
    }
    add(copies.part);
}

void FltNodeBuilder::addMesh(FltMesh&& mesh)
{
    part.visits += nodesOfAMesh + 2 * static_cast<std::int64_t>(mesh.layers.size());
    part.depth = std::max(part.depth, 1 + depthOfAMesh);
    if (!mesh.isHidden) {
        SbBox3f box;
        for (SbVec3f const& position : mesh.positions)
            box.extendBy(SbVec3f(mesh.origin + SbVec3d(position)));
        addBox(box);
    }
    part.node->meshes.push_back(std::move(mesh));
}

void FltNodeBuilder::addMatrix(SbDPMatrix const& matrix)
{
    part.node->transform.push_back(matrix);
    stackMatrix(matrix);
}

void FltNodeBuilder::stackMatrix(SbDPMatrix const& matrix)
{
    placement.multLeft(SbMatrix(matrix));
    ++part.visits;
    part.depth = std::max(part.depth, 2);
}

FltVisualPart FltNodeBuilder::hidden(FltVisualPart part)
{
    if (part.node == nullptr)
        return part;
    part.node->isHidden = true;
    part.box.makeEmpty();
    ++part.visits;
    ++part.depth;
    return part;
}

void FltNodeBuilder::addBox(SbBox3f const& box)
{
    if (box.isEmpty())
        return;
    SbBox3f placed = box;
    placed.transform(placement);
    part.box.extendBy(placed);
}

#include "visual/FltMirrors.h"

#include "visual/FltJointMotion.h"

bool FltMirrors::isMirror(SbDPMatrix const& matrix)
{
    return matrix.det4() < 0;
}

bool FltMirrors::isMirror(FltVisualNode const& node)
{
    bool isTurned = false;
    for (SbDPMatrix const& matrix : node.transform)
        isTurned = isTurned != isMirror(matrix);
    if (auto const* const joint = node.as<FltVisualJoint>())
        isTurned = isTurned != isMirror(SbDPMatrix(FltJointMotion(*joint).matrix()));
    if (auto const* const scale = node.as<FltVisualScale>())
        isTurned = isTurned != (scale->factor < 0);
    return isTurned;
}

FltVisualSenses FltMirrors::sensesOf(std::vector<SbDPMatrix> const& places)
{
    FltVisualSenses senses;
    for (SbDPMatrix const& place : places)
        senses.in(isMirror(place)) = true;
    return senses;
}

void FltMirrors::find(FltVisualNode& root)
{
    struct Place {
        FltVisualNode* node;
        bool isMirrored;
    };
    std::vector<Place> open = {{&root, false}};
    while (!open.empty()) {
        auto const [node, isMirrored] = open.back();
        open.pop_back();
        bool& isKnown = node->senses.in(isMirrored);
        if (isKnown)
            continue;
        isKnown = true;
        bool const isTurned = isMirrored != isMirror(*node);
        FltVisualSenses inside{!isTurned, isTurned};
        if (auto const* const copies = node->as<FltVisualCopies>()) {
            FltVisualSenses const senses = sensesOf(copies->places);
            inside = {senses.in(isTurned), senses.in(!isTurned)};
        }
        for (std::shared_ptr<FltVisualNode> const& child : node->children)
            for (bool const mirrored : {false, true})
                if (child != nullptr && inside.in(mirrored))
                    open.push_back({child.get(), mirrored});
    }
}

#include "shot/BothSides.h"

#include "support/SceneNodes.h"

BothSides::BothSides(SoNode* scene)
{
    SceneNodes::forEach(scene, [this](SoNode& node) {
        if (!node.isOfType(SoShapeHints::getClassTypeId()))
            return;
        auto& hints = static_cast<SoShapeHints&>(node);
        before.emplace_back(&hints, hints.shapeType.getValue());
        hints.shapeType = SoShapeHints::UNKNOWN_SHAPE_TYPE;
    });
}

BothSides::~BothSides()
{
    for (auto const& [hints, shapeType] : before)
        hints->shapeType = shapeType;
}

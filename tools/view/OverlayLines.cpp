#include "view/OverlayLines.h"

#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoPickStyle.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstdint>

SoSeparator* OverlayLines::make(std::vector<SbVec3f> const& ends, SbColor const& color, float width)
{
    auto* const pick = new SoPickStyle;
    pick->style = SoPickStyle::UNPICKABLE;
    auto* const light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    auto* const base = new SoBaseColor;
    base->rgb = color;
    auto* const style = new SoDrawStyle;
    style->lineWidth = width;
    auto* const points = new SoCoordinate3;
    points->point.setValues(0, static_cast<int>(ends.size()), ends.data());
    auto* const lines = new SoLineSet;
    std::vector<std::int32_t> const two(ends.size() / 2, 2);
    lines->numVertices.setValues(0, static_cast<int>(two.size()), two.data());

    auto* const separator = new SoSeparator;
    for (SoNode* node :
         {static_cast<SoNode*>(pick), static_cast<SoNode*>(light), static_cast<SoNode*>(base),
          static_cast<SoNode*>(style), static_cast<SoNode*>(points), static_cast<SoNode*>(lines)})
        separator->addChild(node);
    return separator;
}

#include "scene/FltTextNodes.h"

#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoTransform.h>

namespace
{

constexpr float quarterTurn = 1.5707963F;

/// The first line stands at the origin of the toolkit's text, and the others below it.
SoTransform* placeOf(FltVisualText const& text, SbVec3d const& zero)
{
    auto* const transform = new SoTransform;
    SbVec3f place(text.place - zero);
    place[text.isLying ? 1 : 2] += text.size * static_cast<float>(text.lines.size() - 1);
    transform->translation = place;
    if (!text.isLying)
        transform->rotation.setValue(SbVec3f(1, 0, 0), quarterTurn);
    return transform;
}

SoFont* fontOf(FltVisualText const& text)
{
    auto* const font = new SoFont;
    font->size = text.size;
    return font;
}

SoLightModel* unlit()
{
    auto* const light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    return light;
}

SoMaterial* materialOf(FltVisualText const& text)
{
    auto* const material = new SoMaterial;
    SbColor color;
    float transparency;
    color.setPackedValue(text.color, transparency);
    material->diffuseColor = color;
    return material;
}

SoAsciiText* lettersOf(FltVisualText const& text)
{
    using Alignment = FltVisualText::Alignment;
    auto* const node = new SoAsciiText;
    for (std::size_t i = 0; i < text.lines.size(); ++i)
        node->string.set1Value(static_cast<int>(i), text.lines[i].c_str());
    node->justification = text.alignment == Alignment::right    ? SoAsciiText::RIGHT
                          : text.alignment == Alignment::center ? SoAsciiText::CENTER
                                                                : SoAsciiText::LEFT;
    return node;
}

} // namespace

SoSeparator* FltTextNodes::make(FltVisualText const& text, SbVec3d const& zero)
{
    auto* const group = new SoSeparator;
    group->addChild(placeOf(text, zero));
    group->addChild(fontOf(text));
    group->addChild(unlit());
    group->addChild(materialOf(text));
    group->addChild(lettersOf(text));
    return group;
}

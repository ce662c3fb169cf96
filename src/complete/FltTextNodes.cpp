#include "complete/FltTextNodes.h"

#include "messages/FltText.h"
#include "records/FltRecordText.h"

#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTransform.h>
#include <algorithm>
#include <cmath>

namespace
{

/// Widths of a letter in parts of its height: text whose height isn't known takes it from its width.
constexpr float letterWidth = 0.6F;

std::vector<std::string> linesOf(std::string const& text)
{
    std::vector<std::string> lines(1);
    for (char const character : text) {
        if (character == '\n')
            lines.emplace_back();
        else if (character != '\r')
            lines.back() += character;
    }
    return lines;
}

std::size_t longestOf(std::vector<std::string> const& lines)
{
    std::size_t longest = 1;
    for (std::string const& line : lines)
        longest = std::max(longest, line.size());
    return longest;
}

/// The letters stand upright between the corners, or lie if the corners do.
struct Layout {
    Layout(FltRecordText const& text, std::vector<std::string> const& lines)
        : place(static_cast<float>(text.XlowerLeftCorner), static_cast<float>(text.YlowerLeftCorner),
                static_cast<float>(text.ZlowerLeftCorner))
    {
        float const width = static_cast<float>(std::abs(text.XupperRightCorner - text.XlowerLeftCorner));
        float const depth = static_cast<float>(std::abs(text.YupperRightCorner - text.YlowerLeftCorner));
        float const upright = static_cast<float>(std::abs(text.ZupperRightCorner - text.ZlowerLeftCorner));
        isLying = !(upright > 0) && depth > 0;
        float const height = isLying ? depth : upright;
        size = height > 0 ? height / static_cast<float>(lines.size())
                          : width / (letterWidth * static_cast<float>(longestOf(lines)));
        if (!std::isfinite(size) || !(size > 0))
            size = 1;
        if (!std::isfinite(place.sqrLength()))
            place = SbVec3f(0, 0, 0);
        box = SbBox3f(place,
                      place + SbVec3f(width, isLying ? depth : 0, isLying ? 0 : std::max(size, upright)));
    }

    SbVec3f place;
    float size = 1;
    bool isLying = false;
    SbBox3f box;
};

SoTransform* placeOf(Layout const& layout, std::size_t lineCount)
{
    auto* const transform = new SoTransform;
    SbVec3f place = layout.place;
    // The first line stands at the origin of the toolkit's text, and the others below it.
    place[layout.isLying ? 1 : 2] += layout.size * static_cast<float>(lineCount - 1);
    transform->translation = place;
    if (!layout.isLying)
        transform->rotation.setValue(SbVec3f(1, 0, 0), 1.5707963F);
    return transform;
}

SoMaterial* materialOf(FltRecordText const& text, FltPaletteSet const& palettes)
{
    auto* const material = new SoMaterial;
    SbColor color;
    float transparency;
    color.setPackedValue(palettes.colors->atIndex(text.color), transparency);
    material->diffuseColor = color;
    return material;
}

} // namespace

void FltTextNodes::addTo(FltGroupBuilder& group, FltRecordView const& record, std::string const& text,
                         FltPaletteSet const& palettes)
{
    if (text.empty())
        return;
    FltRecordText values(record.classLength());
    record.decodeTo(values);
    std::vector<std::string> const lines = linesOf(text);
    Layout const layout(values, lines);
    FltGroupBuilder builder(new SoSeparator);
    builder.addProperty(placeOf(layout, lines.size()));
    auto* const font = new SoFont;
    font->size = layout.size;
    builder.addProperty(font);
    auto* const light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    builder.addProperty(light);
    builder.addProperty(materialOf(values, palettes));
    auto* const node = new SoAsciiText;
    for (std::size_t i = 0; i < lines.size(); ++i)
        node->string.set1Value(static_cast<int>(i), FltText::utf8(lines[i]).c_str());
    node->justification = values.justification == 1   ? SoAsciiText::RIGHT
                          : values.justification == 2 ? SoAsciiText::CENTER
                                                      : SoAsciiText::LEFT;
    builder.addProperty(node);
    FltScenePart part = builder.finish();
    part.box = layout.box;
    group.add(part);
}

#include "visual/FltTextReader.h"

#include "messages/FltText.h"
#include "records/FltRecordText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

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

using Alignment = FltVisualText::Alignment;

Alignment alignmentOf(std::int32_t justification)
{
    return justification == 1 ? Alignment::right : justification == 2 ? Alignment::center : Alignment::left;
}

/// What lines are aligned to, in a box that begins at the left: its end, its middle or its begin.
double anchorBetween(double left, float width, std::int32_t justification)
{
    if (!std::isfinite(left + width))
        return left;
    switch (alignmentOf(justification)) {
    case Alignment::right:
        return left + width;
    case Alignment::center:
        return left + width / 2;
    case Alignment::left:
        break;
    }
    return left;
}

/// The letters stand upright between the corners, or lie if the corners do.
struct Layout {
    Layout(FltRecordText const& text, std::vector<std::string> const& lines)
        : place(text.XlowerLeftCorner, text.YlowerLeftCorner, text.ZlowerLeftCorner)
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
        if (!std::isfinite(SbVec3f(place).sqrLength()))
            place = SbVec3d(0, 0, 0);
        SbVec3f const corner(place);
        box = SbBox3f(corner,
                      corner + SbVec3f(width, isLying ? depth : 0, isLying ? 0 : std::max(size, upright)));
        place[0] = anchorBetween(place[0], width, text.justification);
    }

    SbVec3d place;
    float size = 1;
    bool isLying = false;
    SbBox3f box;
};

} // namespace

void FltTextReader::addTo(FltNodeBuilder& node, FltRecordView const& record, std::string const& text,
                          FltPaletteSet const& palettes)
{
    if (text.empty())
        return;
    FltRecordText values(record.classLength());
    record.decodeTo(values);
    std::vector<std::string> const lines = linesOf(text);
    Layout const layout(values, lines);
    FltVisualText& written = node->become<FltVisualText>();
    for (std::string const& line : lines)
        written.lines.push_back(FltText::utf8(line));
    written.place = layout.place;
    written.size = layout.size;
    written.isLying = layout.isLying;
    written.alignment = alignmentOf(values.justification);
    written.color = palettes.colors->atIndex(values.color);
    node.addBox(layout.box);
}

#include "shot/FinerSizes.h"

#include "support/SceneNodes.h"

namespace
{

/// A size of 0 stands for the toolkit's usual one.
float finer(float size, int fineness)
{
    return static_cast<float>(fineness) * (size > 0 ? size : 1);
}

} // namespace

FinerSizes::FinerSizes(SoNode* scene, int fineness)
{
    SceneNodes::forEach(scene, [&](SoNode& node) {
        if (!node.isOfType(SoDrawStyle::getClassTypeId()))
            return;
        auto& style = static_cast<SoDrawStyle&>(node);
        all.push_back(
            {SoNodeRef<SoDrawStyle>(&style), style.pointSize.getValue(), style.lineWidth.getValue()});
        style.pointSize = finer(style.pointSize.getValue(), fineness);
        style.lineWidth = finer(style.lineWidth.getValue(), fineness);
    });
}

FinerSizes::~FinerSizes()
{
    for (Changed const& changed : all) {
        changed.style->pointSize = changed.pointSize;
        changed.style->lineWidth = changed.lineWidth;
    }
}

SoDrawStyle* FinerSizes::makeUsual(int fineness)
{
    auto* const style = new SoDrawStyle;
    style->pointSize = finer(0, fineness);
    style->lineWidth = finer(0, fineness);
    return style;
}

#include "shot/BlankShapes.h"

#include "support/SceneNodes.h"

#include <Inventor/SbColor.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <cstdint>

namespace
{

bool isWhite(SbColor const& color)
{
    constexpr float darkestWhite = 0.9F;
    return std::min({color[0], color[1], color[2]}) >= darkestWhite;
}

bool isUnlit(SoNode const& node)
{
    return node.isOfType(SoLightModel::getClassTypeId()) &&
           static_cast<SoLightModel const&>(node).model.getValue() == SoLightModel::BASE_COLOR;
}

bool isMissingTexture(SoNode const& node)
{
    if (!node.isOfType(SoTexture2::getClassTypeId()))
        return false;
    auto const& texture = static_cast<SoTexture2 const&>(node);
    SbVec2s size;
    int components = 0;
    return texture.image.getValue(size, components) == nullptr && texture.filename.getValue().getLength() > 0;
}

bool isWhiteMaterial(SoNode const& node)
{
    if (!node.isOfType(SoMaterial::getClassTypeId()))
        return false;
    auto const& colors = static_cast<SoMaterial const&>(node).diffuseColor;
    return colors.getNum() > 0 && isWhite(colors[0]);
}

/// Whether no corner of a shape of faces has another colour.
bool areWhiteFaces(SoNode const& node)
{
    if (!node.isOfType(SoIndexedFaceSet::getClassTypeId()))
        return false;
    SoNode const* const property = static_cast<SoIndexedFaceSet const&>(node).vertexProperty.getValue();
    if (property == nullptr || !property->isOfType(SoVertexProperty::getClassTypeId()))
        return true;
    auto const& colors = static_cast<SoVertexProperty const&>(*property).orderedRGBA;
    return std::all_of(colors.getValues(0), colors.getValues(0) + colors.getNum(), [](std::uint32_t packed) {
        SbColor color;
        float transparency;
        color.setPackedValue(packed, transparency);
        return isWhite(color);
    });
}

/// All nodes of a shape stand in a separator of its own.
bool isBlank(SoSeparator const& group)
{
    auto const holds = [&group](bool (*isIt)(SoNode const& node)) {
        for (int i = 0; i < group.getNumChildren(); ++i)
            if (isIt(*group.getChild(i)))
                return true;
        return false;
    };
    return holds(isUnlit) && holds(isMissingTexture) && holds(isWhiteMaterial) && holds(areWhiteFaces);
}

} // namespace

std::size_t BlankShapes::countIn(SoNode* scene)
{
    std::size_t count = 0;
    SceneNodes::forEach(scene, [&count](SoNode& node) {
        if (node.isOfType(SoSeparator::getClassTypeId()) && isBlank(static_cast<SoSeparator&>(node)))
            ++count;
    });
    return count;
}

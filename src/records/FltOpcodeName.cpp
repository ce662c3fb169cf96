#include "records/FltOpcodeName.h"

#include "records/FltOpcode.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace
{

struct Row {
    int opcode;
    std::string_view name;
};

constexpr Row rows[] = {
    {FltOpcode::header, "header"},
    {FltOpcode::group, "group"},
    {FltOpcode::oldLOD, "old level of detail"},
    {FltOpcode::object, "object"},
    {FltOpcode::face, "face"},
    {FltOpcode::oldVertex, "old vertex"},
    {FltOpcode::oldVertexColor, "old vertex with colour"},
    {FltOpcode::oldVertexColorNormal, "old vertex with colour and normal"},
    {FltOpcode::pushLevel, "push level"},
    {FltOpcode::popLevel, "pop level"},
    {FltOpcode::dof, "degree of freedom"},
    {FltOpcode::pushSubface, "push subface"},
    {FltOpcode::popSubface, "pop subface"},
    {FltOpcode::pushExtension, "push extension"},
    {FltOpcode::popExtension, "pop extension"},
    {FltOpcode::continuation, "continuation"},
    {FltOpcode::comment, "comment"},
    {FltOpcode::colorPalette, "colour palette"},
    {FltOpcode::longID, "long id"},
    {FltOpcode::matrix, "matrix"},
    {FltOpcode::vector, "vector"},
    {FltOpcode::oldBoundingBox, "old bounding box"},
    {FltOpcode::multitexture, "multitexture"},
    {FltOpcode::uvList, "uv list"},
    {FltOpcode::separatingPlane, "separating plane"},
    {FltOpcode::replicate, "replicate"},
    {FltOpcode::instanceReference, "instance reference"},
    {FltOpcode::instanceDefinition, "instance definition"},
    {FltOpcode::externalReference, "external reference"},
    {FltOpcode::texturePattern, "texture pattern"},
    {FltOpcode::oldMaterialPalette, "old material palette"},
    {FltOpcode::vertexPalette, "vertex palette"},
    {FltOpcode::vertexColor, "vertex with colour"},
    {FltOpcode::vertexColorNormal, "vertex with colour and normal"},
    {FltOpcode::vertexColorNormalUv, "vertex with colour, normal and uv"},
    {FltOpcode::vertexColorUv, "vertex with colour and uv"},
    {FltOpcode::vertexList, "vertex list"},
    {FltOpcode::lod, "level of detail"},
    {FltOpcode::boundingBox, "bounding box"},
    {FltOpcode::rotateAboutEdge, "rotate about edge"},
    {FltOpcode::translate, "translate"},
    {FltOpcode::scaleNonUniform, "scale"},
    {FltOpcode::rotateAboutPoint, "rotate about point"},
    {FltOpcode::rotateScaleToPoint, "rotate and scale to point"},
    {FltOpcode::putTransform, "put transform"},
    {FltOpcode::eyePointTrackPlane, "eyepoint and trackplane palette"},
    {FltOpcode::mesh, "mesh"},
    {FltOpcode::localVertexPool, "local vertex pool"},
    {FltOpcode::meshPrimitive, "mesh primitive"},
    {FltOpcode::roadSegment, "road segment"},
    {FltOpcode::roadZone, "road zone"},
    {FltOpcode::morphVertexList, "morph vertex list"},
    {FltOpcode::linkagePalette, "linkage palette"},
    {FltOpcode::sound, "sound"},
    {FltOpcode::roadPath, "road path"},
    {FltOpcode::soundPalette, "sound palette"},
    {FltOpcode::generalMatrix, "general matrix"},
    {FltOpcode::text, "text"},
    {FltOpcode::switchNode, "switch"},
    {FltOpcode::lineStylePalette, "line style palette"},
    {FltOpcode::clipRegion, "clip region"},
    {FltOpcode::extensionAttribute, "extension attribute"},
    {FltOpcode::lightSource, "light source"},
    {FltOpcode::lightSourcePalette, "light source palette"},
    {FltOpcode::boundingVolumeSphere, "bounding sphere"},
    {FltOpcode::boundingVolumeCylinder, "bounding cylinder"},
    {FltOpcode::boundingConvexHull, "bounding convex hull"},
    {FltOpcode::boundingVolumeCenter, "bounding volume centre"},
    {FltOpcode::boundingVolumeOrientation, "bounding volume orientation"},
    {FltOpcode::lightPoint, "light point"},
    {FltOpcode::textureMappingPalette, "texture mapping palette"},
    {FltOpcode::material, "material"},
    {FltOpcode::namePalette, "name palette"},
    {FltOpcode::cat, "continuously adaptive terrain"},
    {FltOpcode::catData, "adaptive terrain data"},
    {FltOpcode::boundingHistogram, "bounding histogram"},
    {FltOpcode::pushAttribute, "push attribute"},
    {FltOpcode::popAttribute, "pop attribute"},
    {FltOpcode::curve, "curve"},
    {FltOpcode::roadConstruction, "road construction"},
    {FltOpcode::lightPointAppearancePalette, "light point appearance palette"},
    {FltOpcode::lightPointAnimationPalette, "light point animation palette"},
    {FltOpcode::indexedLightPoint, "indexed light point"},
    {FltOpcode::lightPointSystem, "light point system"},
    {FltOpcode::indexedString, "indexed string"},
    {FltOpcode::shaderPalette, "shader palette"},
};

Row const* find(int opcode)
{
    auto const* const row = std::lower_bound(std::begin(rows), std::end(rows), opcode,
                                             [](Row const& one, int wanted) { return one.opcode < wanted; });
    return row != std::end(rows) && row->opcode == opcode ? row : nullptr;
}

} // namespace

std::string FltOpcodeName::of(int opcode)
{
    Row const* const row = find(opcode);
    return row != nullptr ? std::string(row->name) : "record " + std::to_string(opcode);
}

bool FltOpcodeName::isKnown(int opcode)
{
    return find(opcode) != nullptr;
}

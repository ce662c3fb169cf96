#include "complete/FltCompleteOpcode.h"

#include <algorithm>
#include <iterator>

namespace
{

using FltCompleteOpcode::Role;

struct Row {
    int opcode;
    Role role;
    unsigned int shortest;
    unsigned int longest;
};

constexpr unsigned int any = 65535;

/// In the order of the opcodes.
constexpr Row rows[] = {
    {FltOpcode::header, Role::palette, 128, 1024},
    {FltOpcode::group, Role::node, 24, 64},
    {FltOpcode::oldLOD, Role::node, 24, 80},
    {FltOpcode::object, Role::node, 16, 64},
    {FltOpcode::face, Role::node, 24, 128},
    {FltOpcode::oldVertex, Role::node, 16, 24},
    {FltOpcode::oldVertexColor, Role::node, 20, 28},
    {FltOpcode::oldVertexColorNormal, Role::node, 32, 40},
    {FltOpcode::pushLevel, Role::push, 4, 4},
    {FltOpcode::popLevel, Role::pop, 4, 4},
    {FltOpcode::dof, Role::node, 100, 512},
    {FltOpcode::pushSubface, Role::push, 4, 4},
    {FltOpcode::popSubface, Role::pop, 4, 4},
    {FltOpcode::pushExtension, Role::pushExtension, 4, 32},
    {FltOpcode::popExtension, Role::popExtension, 4, 32},
    {FltOpcode::continuation, Role::ancillary, 4, any},
    {FltOpcode::comment, Role::ancillary, 4, any},
    {FltOpcode::colorPalette, Role::palette, 4, any},
    {FltOpcode::longID, Role::ancillary, 4, any},
    {FltOpcode::matrix, Role::ancillary, 68, 68},
    {FltOpcode::vector, Role::ancillary, 16, 16},
    {FltOpcode::oldBoundingBox, Role::ancillary, 4, 64},
    {FltOpcode::multitexture, Role::ancillary, 8, 72},
    {FltOpcode::uvList, Role::ancillary, 8, any},
    {FltOpcode::separatingPlane, Role::node, 4, any},
    {FltOpcode::replicate, Role::ancillary, 8, 12},
    {FltOpcode::instanceReference, Role::node, 8, 8},
    {FltOpcode::instanceDefinition, Role::node, 8, 8},
    {FltOpcode::externalReference, Role::node, 84, 256},
    {FltOpcode::texturePattern, Role::palette, 96, 256},
    {65, Role::palette, 4, any},
    {FltOpcode::oldMaterialPalette, Role::palette, 4, any},
    {FltOpcode::vertexPalette, Role::palette, 8, 8},
    {FltOpcode::vertexColor, Role::vertex, 36, 40},
    {FltOpcode::vertexColorNormal, Role::vertex, 52, 56},
    {FltOpcode::vertexColorNormalUv, Role::vertex, 60, 64},
    {FltOpcode::vertexColorUv, Role::vertex, 44, 48},
    {FltOpcode::vertexList, Role::node, 4, any},
    {FltOpcode::lod, Role::node, 64, 128},
    {FltOpcode::boundingBox, Role::ancillary, 4, 64},
    {FltOpcode::rotateAboutEdge, Role::ancillary, 32, 64},
    {FltOpcode::translate, Role::ancillary, 32, 56},
    {FltOpcode::scaleNonUniform, Role::ancillary, 32, 48},
    {FltOpcode::rotateAboutPoint, Role::ancillary, 32, 48},
    {FltOpcode::rotateScaleToPoint, Role::ancillary, 32, 64},
    {FltOpcode::putTransform, Role::ancillary, 64, 152},
    {FltOpcode::eyePointTrackPlane, Role::palette, 4, any},
    {FltOpcode::mesh, Role::node, 80, 128},
    {FltOpcode::localVertexPool, Role::ancillary, 12, any},
    {FltOpcode::meshPrimitive, Role::node, 12, any},
    {FltOpcode::roadSegment, Role::node, 4, any},
    {FltOpcode::roadZone, Role::ancillary, 4, any},
    {FltOpcode::morphVertexList, Role::node, 4, any},
    {FltOpcode::linkagePalette, Role::palette, 4, any},
    {FltOpcode::sound, Role::node, 4, 128},
    {FltOpcode::roadPath, Role::node, 4, any},
    {FltOpcode::soundPalette, Role::palette, 4, any},
    {FltOpcode::generalMatrix, Role::ancillary, 68, 68},
    {FltOpcode::text, Role::node, 64, 512},
    {FltOpcode::switchNode, Role::node, 24, any},
    {FltOpcode::lineStylePalette, Role::palette, 8, 16},
    {FltOpcode::clipRegion, Role::node, 64, 512},
    {FltOpcode::extensionAttribute, Role::ancillary, 4, any},
    {FltOpcode::lightSource, Role::node, 48, 128},
    {FltOpcode::lightSourcePalette, Role::palette, 128, 512},
    {103, Role::palette, 4, any},
    {104, Role::palette, 4, any},
    {FltOpcode::boundingVolumeSphere, Role::ancillary, 4, 64},
    {FltOpcode::boundingVolumeCylinder, Role::ancillary, 4, 64},
    {FltOpcode::boundingConvexHull, Role::ancillary, 4, 64},
    {FltOpcode::boundingVolumeCenter, Role::ancillary, 4, 64},
    {FltOpcode::boundingVolumeOrientation, Role::ancillary, 4, 64},
    {110, Role::ancillary, 4, 64},
    {FltOpcode::lightPoint, Role::node, 32, 256},
    {FltOpcode::textureMappingPalette, Role::palette, 32, any},
    {FltOpcode::material, Role::palette, 64, 128},
    {FltOpcode::namePalette, Role::palette, 4, any},
    {FltOpcode::cat, Role::node, 4, any},
    {FltOpcode::catData, Role::node, 4, any},
    {FltOpcode::boundingHistogram, Role::ancillary, 4, any},
    {FltOpcode::pushAttribute, Role::ancillary, 4, any},
    {FltOpcode::popAttribute, Role::ancillary, 4, any},
    {FltOpcode::curve, Role::node, 4, any},
    {FltOpcode::roadConstruction, Role::node, 4, any},
    {FltOpcode::lightPointAppearancePalette, Role::palette, 4, any},
    {FltOpcode::lightPointAnimationPalette, Role::palette, 4, any},
    {FltOpcode::indexedLightPoint, Role::node, 16, 64},
    {FltOpcode::lightPointSystem, Role::node, 16, 64},
    {FltOpcode::indexedString, Role::ancillary, 8, any},
    {FltOpcode::shaderPalette, Role::palette, 4, any},
};

Row const* find(int opcode)
{
    Row const* const row = std::lower_bound(std::begin(rows), std::end(rows), opcode,
                                            [](Row const& left, int right) { return left.opcode < right; });
    return row != std::end(rows) && row->opcode == opcode ? row : nullptr;
}

} // namespace

FltCompleteOpcode::Role FltCompleteOpcode::roleOf(int opcode)
{
    Row const* const row = find(opcode);
    return row != nullptr ? row->role : Role::unknown;
}

bool FltCompleteOpcode::isPlausible(int opcode, unsigned int length)
{
    Row const* const row = find(opcode);
    return row != nullptr && length >= row->shortest && length <= row->longest;
}

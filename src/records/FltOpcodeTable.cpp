#include "records/FltOpcodeTable.h"

#include "messages/FltFindingNumber.h"
#include "records/FltRowIndex.h"

#include <iterator>

namespace Finding = FltFindingNumber;

namespace
{

using Part = FltOpcodeRow::Part;

constexpr unsigned int head = 4; ///< Opcode and length.
constexpr unsigned int any = 65535;
constexpr bool silent = true;
constexpr int none = 0;
constexpr std::string_view nothing;
constexpr std::string_view byOpcode = FltOpcodeTable::recordsOfOpcode;

constexpr FltOpcodeRow rows[] = {
    {FltOpcode::header, "header", Part::palette, {128, 1024, 16}, nothing, none, silent},
    {FltOpcode::group, "group", Part::node, {24, 64}, nothing, none, silent},
    {FltOpcode::oldLOD, "old level of detail", Part::node, {24, 80}, nothing, none, silent},
    {FltOpcode::object, "object", Part::node, {16, 64}, nothing, none, silent},
    {FltOpcode::face, "face", Part::component, {24, 128}, nothing},
    {FltOpcode::oldVertex, "old vertex", Part::corners, {16, 24}, nothing},
    {FltOpcode::oldVertexColor, "old vertex with colour", Part::corners, {20, 28}, nothing},
    {FltOpcode::oldVertexColorNormal, "old vertex with colour and normal", Part::corners, {32, 40}, nothing},
    {FltOpcode::pushLevel, "push level", Part::push, {4, 4}, nothing},
    {FltOpcode::popLevel, "pop level", Part::pop, {4, 4}, nothing},
    {FltOpcode::dof, "degree of freedom", Part::node, {100, 512}, nothing, Finding::jointAtZero, silent},
    {FltOpcode::pushSubface, "push subface", Part::push, {4, 4}, nothing},
    {FltOpcode::popSubface, "pop subface", Part::pop, {4, 4}, nothing},
    {FltOpcode::pushExtension, "push extension", Part::pushExtension, {4, 32}, nothing},
    {FltOpcode::popExtension, "pop extension", Part::popExtension, {4, 32}, nothing},
    {FltOpcode::continuation, "continuation", Part::ancillary, {4, any}, "continuations"},
    {FltOpcode::comment, "comment", Part::ancillary, {4, any}, nothing},
    {FltOpcode::colorPalette, "colour palette", Part::palette, {4, any}, nothing},
    {FltOpcode::longID, "long id", Part::ancillary, {4, any}, nothing},
    {FltOpcode::matrix, "matrix", Part::ancillary, {68, 68}, nothing},
    {FltOpcode::vector, "vector", Part::ancillary, {16, 16}, nothing},
    {FltOpcode::oldBoundingBox, "old bounding box", Part::ancillary, {4, 64}, nothing},
    {FltOpcode::multitexture, "multitexture", Part::ancillary, {8, 72, head}, "further texture layers"},
    {FltOpcode::uvList, "uv list", Part::ancillary, {8, any}, "coordinates of further texture layers"},
    {FltOpcode::separatingPlane, "separating plane", Part::node, {4, any}, "binary separating planes"},
    {FltOpcode::replicate, "replicate", Part::ancillary, {8, 12}, nothing, Finding::lostCopies},
    {FltOpcode::instanceReference, "instance reference", Part::node, {8, 8}, nothing},
    {FltOpcode::instanceDefinition, "instance definition", Part::node, {8, 8}, nothing, none, silent},
    {FltOpcode::externalReference, "external reference", Part::node, {84, 256}, nothing},
    {FltOpcode::texturePattern, "texture pattern", Part::palette, {96, 256, 96}, nothing},
    {65, "", Part::palette, {4, any}, byOpcode},
    {FltOpcode::oldMaterialPalette, "old material palette", Part::palette, {4, any}, nothing},
    {FltOpcode::vertexPalette, "vertex palette", Part::palette, {8, 8}, nothing, none, silent},
    {FltOpcode::vertexColor, "vertex with colour", Part::vertex, {36, 40}, nothing},
    {FltOpcode::vertexColorNormal, "vertex with colour and normal", Part::vertex, {52, 56}, nothing},
    {FltOpcode::vertexColorNormalUv, "vertex with colour, normal and uv", Part::vertex, {60, 64}, nothing},
    {FltOpcode::vertexColorUv, "vertex with colour and uv", Part::vertex, {44, 48}, nothing},
    {FltOpcode::vertexList, "vertex list", Part::corners, {4, any}, nothing},
    {FltOpcode::lod, "level of detail", Part::node, {64, 128}, nothing, none, silent},
    {FltOpcode::boundingBox, "bounding box", Part::ancillary, {4, 64}, nothing},
    {FltOpcode::rotateAboutEdge,
     "rotate about edge",
     Part::ancillary,
     {32, 64},
     nothing,
     Finding::lostTransformation},
    {FltOpcode::translate, "translate", Part::ancillary, {32, 56}, nothing, Finding::lostTransformation},
    {FltOpcode::scaleNonUniform, "scale", Part::ancillary, {32, 48}, nothing, Finding::lostTransformation},
    {FltOpcode::rotateAboutPoint,
     "rotate about point",
     Part::ancillary,
     {32, 48},
     nothing,
     Finding::lostTransformation},
    {FltOpcode::rotateScaleToPoint, "rotate and scale to point", Part::ancillary, {32, 64}, byOpcode},
    {FltOpcode::putTransform, "put transform", Part::ancillary, {64, 152}, nothing},
    {FltOpcode::eyePointTrackPlane,
     "eyepoint and trackplane palette",
     Part::palette,
     {4, any},
     "eye points and track planes",
     none,
     silent},
    {FltOpcode::mesh, "mesh", Part::component, {80, 128}, "meshes"},
    {FltOpcode::localVertexPool, "local vertex pool", Part::ancillary, {12, any}, nothing},
    {FltOpcode::meshPrimitive, "mesh primitive", Part::corners, {12, any}, nothing},
    {FltOpcode::roadSegment, "road segment", Part::node, {4, any}, "roads"},
    {FltOpcode::roadZone, "road zone", Part::ancillary, {4, any}, byOpcode},
    {FltOpcode::morphVertexList, "morph vertex list", Part::corners, {4, any, head}, "morph vertex lists"},
    {FltOpcode::linkagePalette, "linkage palette", Part::palette, {4, any}, byOpcode},
    {FltOpcode::sound, "sound", Part::node, {4, 128}, "sounds"},
    {FltOpcode::roadPath, "road path", Part::node, {4, any}, byOpcode},
    {FltOpcode::soundPalette, "sound palette", Part::palette, {4, any, head}, nothing},
    {FltOpcode::generalMatrix, "general matrix", Part::ancillary, {68, 68}, nothing},
    {FltOpcode::text, "text", Part::node, {64, 512}, "texts", Finding::lostPointOrText, silent},
    {FltOpcode::switchNode, "switch", Part::node, {24, any}, nothing},
    {FltOpcode::lineStylePalette, "line style palette", Part::palette, {8, 16}, nothing},
    {FltOpcode::clipRegion, "clip region", Part::node, {64, 512}, nothing},
    {FltOpcode::extensionAttribute, "extension attribute", Part::ancillary, {4, any}, "extension attributes"},
    {FltOpcode::lightSource,
     "light source",
     Part::node,
     {48, 128},
     "light sources",
     Finding::lostLightSource},
    {FltOpcode::lightSourcePalette, "light source palette", Part::palette, {128, 512}, nothing},
    {103, "", Part::palette, {4, any}, byOpcode},
    {104, "", Part::palette, {4, any}, byOpcode},
    {FltOpcode::boundingVolumeSphere, "bounding sphere", Part::ancillary, {4, 64}, nothing},
    {FltOpcode::boundingVolumeCylinder, "bounding cylinder", Part::ancillary, {4, 64}, nothing},
    {FltOpcode::boundingConvexHull, "bounding convex hull", Part::ancillary, {4, 64}, byOpcode},
    {FltOpcode::boundingVolumeCenter, "bounding volume centre", Part::ancillary, {4, 64}, nothing},
    {FltOpcode::boundingVolumeOrientation, "bounding volume orientation", Part::ancillary, {4, 64}, nothing},
    {110, "", Part::ancillary, {4, 64}, byOpcode},
    {FltOpcode::lightPoint, "light point", Part::node, {32, 256}, "light points", Finding::lostPointOrText},
    {FltOpcode::textureMappingPalette,
     "texture mapping palette",
     Part::palette,
     {32, any, head},
     nothing,
     none,
     silent},
    {FltOpcode::material, "material", Part::palette, {64, 128}, nothing},
    {FltOpcode::namePalette, "name palette", Part::palette, {4, any}, nothing, none, silent},
    {FltOpcode::cat, "continuously adaptive terrain", Part::node, {4, any}, "CATs"},
    {FltOpcode::catData, "adaptive terrain data", Part::component, {4, any}, byOpcode},
    {FltOpcode::boundingHistogram, "bounding histogram", Part::ancillary, {4, any}, byOpcode},
    {FltOpcode::pushAttribute, "push attribute", Part::ancillary, {4, any}, byOpcode},
    {FltOpcode::popAttribute, "pop attribute", Part::ancillary, {4, any}, byOpcode},
    {FltOpcode::curve, "curve", Part::node, {4, any}, byOpcode},
    {FltOpcode::roadConstruction, "road construction", Part::node, {4, any}, "roads"},
    {FltOpcode::lightPointAppearancePalette,
     "light point appearance palette",
     Part::palette,
     {4, any},
     byOpcode},
    {FltOpcode::lightPointAnimationPalette,
     "light point animation palette",
     Part::palette,
     {4, any},
     byOpcode},
    {FltOpcode::indexedLightPoint, "indexed light point", Part::node, {16, 64}, "indexed light points"},
    {FltOpcode::lightPointSystem,
     "light point system",
     Part::node,
     {16, 64},
     "light point systems",
     none,
     silent},
    {FltOpcode::indexedString, "indexed string", Part::ancillary, {8, any}, byOpcode},
    {FltOpcode::shaderPalette, "shader palette", Part::palette, {4, any}, "shaders"},
};

constexpr int highest = rows[std::size(rows) - 1].opcode;
using Index = FltRowIndex<highest, FltOpcodeRow, std::size(rows)>;
static_assert(Index::isInOrder(rows), "the rows stand in the order of their opcodes, each once");
constexpr Index rowIndex(rows);

constexpr bool hasSoundLengths()
{
    for (FltOpcodeRow const& row : rows)
        if (row.lengths.shortest < head || row.lengths.longest < row.lengths.shortest ||
            row.lengths.longest > any || row.lengths.least > row.lengths.longest)
            return false;
    return true;
}
static_assert(hasSoundLengths(),
              "a record holds its opcode and its length, and its longest form its shortest");

constexpr bool hasParts()
{
    for (FltOpcodeRow const& row : rows)
        if (row.part == Part::unknown)
            return false;
    return true;
}
static_assert(hasParts(), "every opcode that occurs plays a part");

} // namespace

FltOpcodeRow const* FltOpcodeTable::find(int opcode)
{
    return rowIndex.find(opcode);
}

FltOpcodeRow::Part FltOpcodeTable::partOf(int opcode)
{
    FltOpcodeRow const* const row = find(opcode);
    return row != nullptr ? row->part : Part::unknown;
}

bool FltOpcodeTable::isPlausible(int opcode, unsigned int length)
{
    FltOpcodeRow const* const row = find(opcode);
    return row != nullptr && length >= row->lengths.shortest && length <= row->lengths.longest;
}

bool FltOpcodeTable::isSilent(int opcode)
{
    FltOpcodeRow const* const row = find(opcode);
    return row != nullptr && row->isSilent;
}

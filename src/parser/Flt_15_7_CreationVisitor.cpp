#include "parser/Flt_15_7_CreationVisitor.h"

#include "parser/FltRawData.h"
#include "records/FltOpcode.h"
#include "records/FltRecordBoundingVolume.h"
#include "records/FltRecordClipRegion.h"
#include "records/FltRecordColorPalette.h"
#include "records/FltRecordComment.h"
#include "records/FltRecordControl.h"
#include "records/FltRecordDOF.h"
#include "records/FltRecordExtensionAttribute.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordEyePointTrackPlane.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordLOD.h"
#include "records/FltRecordLightSource.h"
#include "records/FltRecordLineStyle.h"
#include "records/FltRecordLongID.h"
#include "records/FltRecordMaterial.h"
#include "records/FltRecordMultitexture.h"
#include "records/FltRecordNamePalette.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordSound.h"
#include "records/FltRecordSwitch.h"
#include "records/FltRecordText.h"
#include "records/FltRecordTextureMapping.h"
#include "records/FltRecordTexturePattern.h"
#include "records/FltRecordTransformations.h"
#include "records/FltRecordUnknown.h"
#include "records/FltRecordVertex.h"

#include <array>
#include <cstdint>
#include <iostream>
#include <memory>
#include <type_traits>

namespace
{

using Maker = FltRecord* (*)(unsigned int length, int revision);

/// A class whose layout depends on the revision needs it before it decodes.
template <class Record>
FltRecord* make(unsigned int length, [[maybe_unused]] int revision)
{
    auto* const record = new Record(length);
    if constexpr (std::is_base_of_v<FltVersion, Record>)
        record->revision = revision;
    return record;
}

/// How one opcode is read.
struct Row {
    int opcode;
    Maker make;
    int reach; ///< Most bytes that the decoder reads, whatever the record's length says.
};

constexpr Row rows[] = {
    {FltOpcode::header, make<FltRecordHeader>, 324},
    {FltOpcode::group, make<FltRecordGroup>, 32},
    {FltOpcode::oldLOD, make<FltRecordOLDLOD>, 40},
    {FltOpcode::object, make<FltRecordObject>, 28},
    {FltOpcode::face, make<FltRecordFace>, 80},
    {FltOpcode::oldVertex, make<FltRecordOldVertex>, 16},
    {FltOpcode::oldVertexColor, make<FltRecordOldVertexColor>, 20},
    {FltOpcode::oldVertexColorNormal, make<FltRecordOldVertexColorNormal>, 32},
    {FltOpcode::pushLevel, make<FltRecordPushLevel>, 4},
    {FltOpcode::popLevel, make<FltRecordPopLevel>, 4},
    {FltOpcode::dof, make<FltRecordDOF>, 380},
    {FltOpcode::pushSubface, make<FltRecordPushSubface>, 4},
    {FltOpcode::popSubface, make<FltRecordPopSubface>, 4},
    {FltOpcode::pushExtension, make<FltRecordPushExtension>, 24},
    {FltOpcode::popExtension, make<FltRecordPopExtension>, 24},
    {FltOpcode::comment, make<FltRecordComment>, 4},
    {FltOpcode::colorPalette, make<FltRecordColorPalette>, 4232},
    {FltOpcode::longID, make<FltRecordLongID>, 4},
    {FltOpcode::matrix, make<FltRecordMatrix>, 68},
    {FltOpcode::vector, make<FltRecordVector>, 16},
    {FltOpcode::oldBoundingBox, make<FltRecordOldBoundingBox>, 28},
    {FltOpcode::multitexture, make<FltRecordMultitexture>, 72},
    {FltOpcode::replicate, make<FltRecordReplicate>, 12},
    {FltOpcode::instanceReference, make<FltRecordInstanceReference>, 8},
    {FltOpcode::instanceDefinition, make<FltRecordInstanceDefinition>, 8},
    {FltOpcode::externalReference, make<FltRecordExternalReference>, 216},
    {FltOpcode::texturePattern, make<FltRecordTexturePattern>, 216},
    {FltOpcode::oldMaterialPalette, make<FltRecordOLDMaterialPalette>, 11780},
    {FltOpcode::vertexPalette, make<FltRecordVertexPalette>, 8},
    {FltOpcode::vertexColor, make<FltRecordVertexColor>, 40},
    {FltOpcode::vertexColorNormal, make<FltRecordVertexColorNormal>, 56},
    {FltOpcode::vertexColorNormalUv, make<FltRecordVertexColorNormalUv>, 64},
    {FltOpcode::vertexColorUv, make<FltRecordVertexColorUv>, 48},
    {FltOpcode::vertexList, make<FltRecordVertexList>, 4},
    {FltOpcode::lod, make<FltRecordLOD>, 72},
    {FltOpcode::boundingBox, make<FltRecordBoundingBox>, 56},
    {FltOpcode::rotateAboutEdge, make<FltRecordRotateAboutEdge>, 60},
    {FltOpcode::translate, make<FltRecordTranslate>, 56},
    {FltOpcode::scaleNonUniform, make<FltRecordScaleNonUniform>, 44},
    {FltOpcode::rotateAboutPoint, make<FltRecordRotateAboutPoint>, 48},
    {FltOpcode::putTransform, make<FltRecordRotateAboutEdge>, 60},
    {FltOpcode::eyePointTrackPlane, make<FltRecordEyePointTrackPlane>, 280},
    {FltOpcode::morphVertexList, make<FltRecordMorphVertexList>, 4},
    {FltOpcode::sound, make<FltRecordSound>, 88},
    {FltOpcode::soundPalette, make<FltRecordSoundPalette>, 32},
    {FltOpcode::generalMatrix, make<FltRecordGeneralMatrix>, 68},
    {FltOpcode::text, make<FltRecordText>, 320},
    {FltOpcode::switchNode, make<FltRecordSwitch>, 28},
    {FltOpcode::lineStylePalette, make<FltRecordLineStylePalette>, 12},
    {FltOpcode::clipRegion, make<FltRecordClipRegion>, 280},
    {FltOpcode::extensionAttribute, make<FltRecordExtensionAttribute>, 24},
    {FltOpcode::lightSource, make<FltRecordLightSource>, 64},
    {FltOpcode::lightSourcePalette, make<FltRecordLightSourcePalette>, 210},
    {FltOpcode::boundingVolumeSphere, make<FltRecordBoundingVolumeSphere>, 16},
    {FltOpcode::boundingVolumeCylinder, make<FltRecordBoundingVolumeCylinder>, 24},
    {FltOpcode::boundingVolumeCenter, make<FltRecordBoundingVolumeCenter>, 32},
    {FltOpcode::boundingVolumeOrientation, make<FltRecordBoundingVolumeOrientation>, 32},
    {FltOpcode::lightPoint, make<FltRecordLightPoint>, 156},
    {FltOpcode::textureMappingPalette, make<FltRecordTextureMappingPalette>, 580},
    {FltOpcode::material, make<FltRecordMaterial>, 84},
    {FltOpcode::namePalette, make<FltRecordNamePalette>, 10},
};

constexpr bool isAscending()
{
    int before = 0;
    for (Row const& row : rows) {
        if (row.opcode <= before || row.opcode > FltOpcode::last || row.reach < 4)
            return false;
        before = row.opcode;
    }
    return true;
}
static_assert(isAscending(), "the rows are in the order of their opcodes, each once, none above the last");

/// The row of each opcode, or -1.
constexpr std::array<std::int8_t, FltOpcode::last + 1> makeIndex()
{
    std::array<std::int8_t, FltOpcode::last + 1> index{};
    for (std::int8_t& entry : index)
        entry = -1;
    std::int8_t position = 0;
    for (Row const& row : rows)
        index[static_cast<std::size_t>(row.opcode)] = position++;
    return index;
}
constexpr auto index = makeIndex();

Row const* findRow(int opcode)
{
    if (opcode < 0 || opcode > FltOpcode::last || index[static_cast<std::size_t>(opcode)] < 0)
        return nullptr;
    return &rows[index[static_cast<std::size_t>(opcode)]];
}

} // namespace

FltRecord* Flt_15_7_CreationVisitor::previous = nullptr;

void Flt_15_7_CreationVisitor::visitFltRawData(FltRecord*& result, FltRawData const* raw)
{
    Row const* const row = findRow(raw->opcode);
    std::unique_ptr<FltRecord> made; // a decoder may throw
    if (row == nullptr)
        made.reset(new FltRecordUnknown(static_cast<std::int16_t>(raw->opcode), raw->length));
    else if (row->opcode != FltOpcode::soundPalette || previous == nullptr ||
             previous->getOpcode() != FltOpcode::soundPalette)
        made.reset(row->make(raw->length, revision));
    FltRecord* const record = made != nullptr ? made.get() : previous;
    record->getPropertiesFromData(raw->data);
    static_cast<void>(made.release());
    result = record;
    previous = result;
    result->properties(std::cout);
}

std::size_t Flt_15_7_CreationVisitor::getReach(int opcode, unsigned int length) const
{
    Row const* const row = findRow(opcode);
    if (row == nullptr)
        return length;
    if (row->opcode == FltOpcode::morphVertexList)
        return FltRecordMorphVertexList::getReach(length);
    return static_cast<std::size_t>(row->reach);
}

void Flt_15_7_CreationVisitor::forgetPrevious()
{
    previous = nullptr;
}

#include "records/FltRecordTable.h"

#include "records/FltFieldColumns.h"
#include "records/FltFieldLister.h"
#include "records/FltFields.h"
#include "records/FltJsonText.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeTable.h"
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
#include "records/FltRowIndex.h"

#include <array>
#include <iterator>
#include <type_traits>
#include <typeinfo>

namespace
{

/// A class whose layout depends on the revision needs it before it decodes.
template <class Record>
FltRecord* make(unsigned int length, [[maybe_unused]] int revision)
{
    auto* const record = new Record(length);
    if constexpr (std::is_base_of_v<FltVersion, Record>)
        record->revision = revision;
    return record;
}

/// Bytes of the shortest record that holds its class's layout.
template <class Record>
std::size_t least([[maybe_unused]] int revision)
{
    Record record(FltFieldReach::head);
    if constexpr (std::is_base_of_v<FltVersion, Record>)
        record.revision = revision;
    FltFieldPlace place(nullptr, std::is_base_of_v<FltVersion, Record>);
    Record::fields(record, place);
    return place.getReach();
}

/// What a receiver does with a value becomes a part of the one function.
template <class Record, class Receiver>
[[gnu::flatten]] void list(FltRecord const& record, Receiver& receiver)
{
    if (typeid(record) != typeid(Record))
        return;
    FltFieldLister<Receiver> fields(receiver);
    Record::fields(static_cast<Record const&>(record), fields);
}

template <class Record>
constexpr FltRecordRow row(int opcode, std::string_view className)
{
    return {opcode,
            className,
            make<Record>,
            FltFields::reachOf<Record>,
            least<Record>,
            sizeof(Record),
            list<Record, FltFieldReceiver>,
            list<Record, FltJsonText>,
            list<Record, FltFieldColumns>};
}

constexpr FltRecordRow rows[] = {
    row<FltRecordHeader>(FltOpcode::header, "FltRecordHeader"),
    row<FltRecordGroup>(FltOpcode::group, "FltRecordGroup"),
    row<FltRecordOLDLOD>(FltOpcode::oldLOD, "FltRecordOLDLOD"),
    row<FltRecordObject>(FltOpcode::object, "FltRecordObject"),
    row<FltRecordFace>(FltOpcode::face, "FltRecordFace"),
    row<FltRecordOldVertex>(FltOpcode::oldVertex, "FltRecordOldVertex"),
    row<FltRecordOldVertexColor>(FltOpcode::oldVertexColor, "FltRecordOldVertexColor"),
    row<FltRecordOldVertexColorNormal>(FltOpcode::oldVertexColorNormal, "FltRecordOldVertexColorNormal"),
    row<FltRecordPushLevel>(FltOpcode::pushLevel, "FltRecordPushLevel"),
    row<FltRecordPopLevel>(FltOpcode::popLevel, "FltRecordPopLevel"),
    row<FltRecordDOF>(FltOpcode::dof, "FltRecordDOF"),
    row<FltRecordPushSubface>(FltOpcode::pushSubface, "FltRecordPushSubface"),
    row<FltRecordPopSubface>(FltOpcode::popSubface, "FltRecordPopSubface"),
    row<FltRecordPushExtension>(FltOpcode::pushExtension, "FltRecordPushExtension"),
    row<FltRecordPopExtension>(FltOpcode::popExtension, "FltRecordPopExtension"),
    row<FltRecordComment>(FltOpcode::comment, "FltRecordComment"),
    row<FltRecordColorPalette>(FltOpcode::colorPalette, "FltRecordColorPalette"),
    row<FltRecordLongID>(FltOpcode::longID, "FltRecordLongID"),
    row<FltRecordMatrix>(FltOpcode::matrix, "FltRecordMatrix"),
    row<FltRecordVector>(FltOpcode::vector, "FltRecordVector"),
    row<FltRecordOldBoundingBox>(FltOpcode::oldBoundingBox, "FltRecordOldBoundingBox"),
    row<FltRecordMultitexture>(FltOpcode::multitexture, "FltRecordMultitexture"),
    row<FltRecordReplicate>(FltOpcode::replicate, "FltRecordReplicate"),
    row<FltRecordInstanceReference>(FltOpcode::instanceReference, "FltRecordInstanceReference"),
    row<FltRecordInstanceDefinition>(FltOpcode::instanceDefinition, "FltRecordInstanceDefinition"),
    row<FltRecordExternalReference>(FltOpcode::externalReference, "FltRecordExternalReference"),
    row<FltRecordTexturePattern>(FltOpcode::texturePattern, "FltRecordTexturePattern"),
    row<FltRecordOLDMaterialPalette>(FltOpcode::oldMaterialPalette, "FltRecordOLDMaterialPalette"),
    row<FltRecordVertexPalette>(FltOpcode::vertexPalette, "FltRecordVertexPalette"),
    row<FltRecordVertexColor>(FltOpcode::vertexColor, "FltRecordVertexColor"),
    row<FltRecordVertexColorNormal>(FltOpcode::vertexColorNormal, "FltRecordVertexColorNormal"),
    row<FltRecordVertexColorNormalUv>(FltOpcode::vertexColorNormalUv, "FltRecordVertexColorNormalUv"),
    row<FltRecordVertexColorUv>(FltOpcode::vertexColorUv, "FltRecordVertexColorUv"),
    row<FltRecordVertexList>(FltOpcode::vertexList, "FltRecordVertexList"),
    row<FltRecordLOD>(FltOpcode::lod, "FltRecordLOD"),
    row<FltRecordBoundingBox>(FltOpcode::boundingBox, "FltRecordBoundingBox"),
    row<FltRecordRotateAboutEdge>(FltOpcode::rotateAboutEdge, "FltRecordRotateAboutEdge"),
    row<FltRecordTranslate>(FltOpcode::translate, "FltRecordTranslate"),
    row<FltRecordScaleNonUniform>(FltOpcode::scaleNonUniform, "FltRecordScaleNonUniform"),
    row<FltRecordRotateAboutPoint>(FltOpcode::rotateAboutPoint, "FltRecordRotateAboutPoint"),
    row<FltRecordRotateAboutEdge>(FltOpcode::putTransform, "FltRecordRotateAboutEdge"),
    row<FltRecordEyePointTrackPlane>(FltOpcode::eyePointTrackPlane, "FltRecordEyePointTrackPlane"),
    row<FltRecordMorphVertexList>(FltOpcode::morphVertexList, "FltRecordMorphVertexList"),
    row<FltRecordSound>(FltOpcode::sound, "FltRecordSound"),
    row<FltRecordSoundPalette>(FltOpcode::soundPalette, "FltRecordSoundPalette"),
    row<FltRecordGeneralMatrix>(FltOpcode::generalMatrix, "FltRecordGeneralMatrix"),
    row<FltRecordText>(FltOpcode::text, "FltRecordText"),
    row<FltRecordSwitch>(FltOpcode::switchNode, "FltRecordSwitch"),
    row<FltRecordLineStylePalette>(FltOpcode::lineStylePalette, "FltRecordLineStylePalette"),
    row<FltRecordClipRegion>(FltOpcode::clipRegion, "FltRecordClipRegion"),
    row<FltRecordExtensionAttribute>(FltOpcode::extensionAttribute, "FltRecordExtensionAttribute"),
    row<FltRecordLightSource>(FltOpcode::lightSource, "FltRecordLightSource"),
    row<FltRecordLightSourcePalette>(FltOpcode::lightSourcePalette, "FltRecordLightSourcePalette"),
    row<FltRecordBoundingVolumeSphere>(FltOpcode::boundingVolumeSphere, "FltRecordBoundingVolumeSphere"),
    row<FltRecordBoundingVolumeCylinder>(FltOpcode::boundingVolumeCylinder,
                                         "FltRecordBoundingVolumeCylinder"),
    row<FltRecordBoundingVolumeCenter>(FltOpcode::boundingVolumeCenter, "FltRecordBoundingVolumeCenter"),
    row<FltRecordBoundingVolumeOrientation>(FltOpcode::boundingVolumeOrientation,
                                            "FltRecordBoundingVolumeOrientation"),
    row<FltRecordLightPoint>(FltOpcode::lightPoint, "FltRecordLightPoint"),
    row<FltRecordTextureMappingPalette>(FltOpcode::textureMappingPalette, "FltRecordTextureMappingPalette"),
    row<FltRecordMaterial>(FltOpcode::material, "FltRecordMaterial"),
    row<FltRecordNamePalette>(FltOpcode::namePalette, "FltRecordNamePalette"),
};

using Index = FltRowIndex<FltOpcode::last, FltRecordRow, std::size(rows)>;
static_assert(Index::isInOrder(rows),
              "the rows stand in the order of their opcodes, each once, none above the last");
constexpr Index rowIndex(rows);

/// What all rows reach and need at one revision. It is worked out anew for a file of another revision than
/// that of the file before.
class Extents
{
public:
    struct Extent {
        std::size_t reach;
        std::size_t least;
    };

    Extent const& at(int position, int ofRevision)
    {
        if (ofRevision != revision || !known)
            workOut(ofRevision);
        return extents[static_cast<std::size_t>(position)];
    }

private:
    [[gnu::noinline]] void workOut(int ofRevision)
    {
        for (std::size_t i = 0; i < std::size(rows); ++i)
            extents[i] = {rows[i].reach(ofRevision), rows[i].least(ofRevision)};
        revision = ofRevision;
        known = true;
    }

    int revision = 0;
    bool known = false;
    std::array<Extent, std::size(rows)> extents{};
};

Extents extents;

} // namespace

FltRecordRow const* FltRecordTable::find(int opcode)
{
    return rowIndex.find(opcode);
}

std::size_t FltRecordTable::reachOf(int opcode, unsigned int length, int revision)
{
    int const position = rowIndex.positionOf(opcode);
    if (position < 0)
        return length;
    if (opcode == FltOpcode::morphVertexList)
        return FltRecordMorphVertexList::getReach(length);
    return extents.at(position, revision).reach;
}

std::size_t FltRecordTable::leastOf(int opcode, int revision)
{
    FltOpcodeRow const* const facts = FltOpcodeTable::find(opcode);
    if (facts != nullptr && facts->lengths.least != 0)
        return facts->lengths.least;
    int const position = rowIndex.positionOf(opcode);
    return position >= 0 ? extents.at(position, revision).least : FltFieldReach::head;
}

std::size_t FltRecordTable::objectSizeOf(int opcode)
{
    FltRecordRow const* const row = find(opcode);
    return row != nullptr ? row->objectSize : 0;
}

#include "parser/Flt_15_7_CreationVisitor.h"

#include "parser/FltRawData.h"
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

namespace
{

using Maker = FltRecord* (*)(unsigned int length, int revision);

template <class Record>
FltRecord* plain(unsigned int length, int /*revision*/)
{
    return new Record(length);
}

/// For the classes whose layout depends on the revision: they need it before they decode.
template <class Record>
FltRecord* revised(unsigned int length, int revision)
{
    auto* const record = new Record(length);
    record->revision = revision;
    return record;
}

/// How one opcode is read.
struct Row {
    int opcode;
    Maker make;
    int reach; ///< Bytes that the decoder reads at its longest whatever the record's length says.
};

constexpr int lastOpcode = 114;
constexpr int morphVertexListOpcode = 89;
constexpr int soundPaletteOpcode = 93;

constexpr Row rows[] = {
    {1, plain<FltRecordHeader>, 324},
    {2, revised<FltRecordGroup>, 32},
    {3, plain<FltRecordOLDLOD>, 40},
    {4, plain<FltRecordObject>, 28},
    {5, revised<FltRecordFace>, 80},
    {7, plain<FltRecordOldVertex>, 16},
    {8, plain<FltRecordOldVertexColor>, 20},
    {9, plain<FltRecordOldVertexColorNormal>, 32},
    {10, plain<FltRecordPushLevel>, 4},
    {11, plain<FltRecordPopLevel>, 4},
    {14, plain<FltRecordDOF>, 380},
    {19, plain<FltRecordPushSubface>, 4},
    {20, plain<FltRecordPopSubface>, 4},
    {21, plain<FltRecordPushExtension>, 24},
    {22, plain<FltRecordPopExtension>, 24},
    {31, plain<FltRecordComment>, 4},
    {32, revised<FltRecordColorPalette>, 4232},
    {33, plain<FltRecordLongID>, 4},
    {49, plain<FltRecordMatrix>, 68},
    {50, plain<FltRecordVector>, 16},
    {51, plain<FltRecordOldBoundingBox>, 28},
    {52, plain<FltRecordMultitexture>, 72},
    {60, plain<FltRecordReplicate>, 12},
    {61, plain<FltRecordInstanceReference>, 8},
    {62, plain<FltRecordInstanceDefinition>, 8},
    {63, plain<FltRecordExternalReference>, 216},
    {64, plain<FltRecordTexturePattern>, 216},
    {66, revised<FltRecordOLDMaterialPalette>, 11780},
    {67, plain<FltRecordVertexPalette>, 8},
    {68, revised<FltRecordVertexColor>, 40},
    {69, revised<FltRecordVertexColorNormal>, 56},
    {70, revised<FltRecordVertexColorNormalUv>, 64},
    {71, revised<FltRecordVertexColorUv>, 48},
    {72, plain<FltRecordVertexList>, 4},
    {73, plain<FltRecordLOD>, 72},
    {74, plain<FltRecordBoundingBox>, 56},
    {76, plain<FltRecordRotateAboutEdge>, 60},
    {78, plain<FltRecordTranslate>, 56},
    {79, plain<FltRecordScaleNonUniform>, 44},
    {80, plain<FltRecordRotateAboutPoint>, 48},
    {82, plain<FltRecordRotateAboutEdge>, 60},
    {83, plain<FltRecordEyePointTrackPlane>, 280},
    {89, plain<FltRecordMorphVertexList>, 4},
    {91, plain<FltRecordSound>, 88},
    {93, plain<FltRecordSoundPalette>, 32},
    {94, plain<FltRecordGeneralMatrix>, 68},
    {95, plain<FltRecordText>, 320},
    {96, plain<FltRecordSwitch>, 28},
    {97, plain<FltRecordLineStylePalette>, 12},
    {98, plain<FltRecordClipRegion>, 280},
    {100, plain<FltRecordExtensionAttribute>, 24},
    {101, plain<FltRecordLightSource>, 64},
    {102, plain<FltRecordLightSourcePalette>, 210},
    {105, plain<FltRecordBoundingVolumeSphere>, 16},
    {106, plain<FltRecordBoundingVolumeCylinder>, 24},
    {108, plain<FltRecordBoundingVolumeCenter>, 32},
    {109, plain<FltRecordBoundingVolumeOrientation>, 32},
    {111, plain<FltRecordLightPoint>, 156},
    {112, plain<FltRecordTextureMappingPalette>, 580},
    {113, plain<FltRecordMaterial>, 84},
    {114, plain<FltRecordNamePalette>, 10},
};

constexpr bool isAscending()
{
    int before = 0;
    for (Row const& row : rows) {
        if (row.opcode <= before || row.opcode > lastOpcode || row.reach < 4)
            return false;
        before = row.opcode;
    }
    return true;
}
static_assert(isAscending(), "the rows stand in the order of their opcodes, each once, none above the last");

/// The row of each opcode, or -1.
constexpr std::array<std::int8_t, lastOpcode + 1> makeIndex()
{
    std::array<std::int8_t, lastOpcode + 1> index{};
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
    if (opcode < 0 || opcode > lastOpcode || index[static_cast<std::size_t>(opcode)] < 0)
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
    else if (row->opcode != soundPaletteOpcode || previous == nullptr ||
             previous->getOpcode() != soundPaletteOpcode)
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
    if (row->opcode == morphVertexListOpcode)
        return FltRecordMorphVertexList::getReach(length);
    return static_cast<std::size_t>(row->reach);
}

void Flt_15_7_CreationVisitor::forgetPrevious()
{
    previous = nullptr;
}

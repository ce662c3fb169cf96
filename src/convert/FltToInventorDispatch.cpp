// The record dispatch, the stack of open levels, and the header.

#include "convert/FltToInventorState.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltParser.h"
#include "records/FltOpcode.h"
#include "records/FltRecordBoundingVolume.h"
#include "records/FltRecordClipRegion.h"
#include "records/FltRecordColorPalette.h"
#include "records/FltRecordComment.h"
#include "records/FltRecordControl.h"
#include "records/FltRecordDOF.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordLOD.h"
#include "records/FltRecordLightSource.h"
#include "records/FltRecordLineStyle.h"
#include "records/FltRecordLongID.h"
#include "records/FltRecordMaterial.h"
#include "records/FltRecordNamePalette.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordSwitch.h"
#include "records/FltRecordText.h"
#include "records/FltRecordTextureMapping.h"
#include "records/FltRecordTexturePattern.h"
#include "records/FltRecordTransformations.h"
#include "records/FltRecordVertex.h"

#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>
#include <cstdlib>

namespace
{

constexpr int faceOpcode = 5;
constexpr int pushOpcode = 10;
constexpr int popOpcode = 11;

/// Metres in each unit of the header.
constexpr double unitScales[] = {1.0, 1000.0, 1.0, 1.0, 0.3048, 0.0254, 1.0, 1.0, 1852.0};

/// Oldest revision that takes its units without the header's multiplier.
constexpr int revisionWithoutMultiplier = 13;

double scaleOf(FltRecordHeader const& header)
{
    double scale =
        header.vertexCoordinateUnits < std::size(unitScales) ? unitScales[header.vertexCoordinateUnits] : 1.0;
    int const multiplier = header.multiplierDiviserUnit;
    if (header.formatRevisionLevel < revisionWithoutMultiplier)
        scale = multiplier < 0 ? scale / std::abs(multiplier) : scale * multiplier;
    return scale;
}

/// Calls a handler with a record as its class; a record of another class is passed over.
template <class Record, class... Arguments>
void hand(FltToInventor& converter, void (FltToInventor::*handler)(Record const*, Arguments...),
          FltRecord* record, Arguments... arguments)
{
    if (auto const* const found = dynamic_cast<Record const*>(record))
        (converter.*handler)(found, arguments...);
}

/// Leaves out what stands below a node that lies too deep: its level, up to the Pop that closes it. The
/// records after a node without a level are its siblings then.
void passOverLevel(FltToInventor::RecordIterator& iterator)
{
    if (*iterator == nullptr)
        return;
    if ((*iterator)->getOpcode() != FltOpcode::pushLevel) {
        --iterator;
        return;
    }
    for (int level = 0; *iterator != nullptr; ++iterator) {
        int const opcode = (*iterator)->getOpcode();
        level += opcode == FltOpcode::pushLevel ? 1 : opcode == FltOpcode::popLevel ? -1 : 0;
        if (level == 0)
            return;
    }
}

} // namespace

void FltToInventor::visitPrimaryRecord(RecordIterator& iterator)
{
    FltRecord* const record = *iterator;
    if (record == nullptr)
        return;
    using I = RecordIterator&;
    switch (record->getOpcode()) {
    case 1:
        return hand(*this, &FltToInventor::visitHeader, record);
    case 2:
        return hand<FltRecordGroup, I>(*this, &FltToInventor::visitGroup, record, iterator);
    case 3:
        return hand<FltRecordOLDLOD, I>(*this, &FltToInventor::visitOLDLOD, record, iterator);
    case 4:
        return hand<FltRecordObject, I>(*this, &FltToInventor::visitObject, record, iterator);
    case faceOpcode:
        return visitNextSuccessiveFaces(iterator);
    case 14:
        return hand<FltRecordDOF, I>(*this, &FltToInventor::visitDOF, record, iterator);
    case 63:
        return hand<FltRecordExternalReference, I>(*this, &FltToInventor::visitExternalReference, record,
                                                   iterator);
    case 73:
        return hand<FltRecordLOD, I>(*this, &FltToInventor::visitLOD, record, iterator);
    case 95:
        return hand<FltRecordText, I>(*this, &FltToInventor::visitText, record, iterator);
    case 96:
        return hand<FltRecordSwitch, I>(*this, &FltToInventor::visitSwitch, record, iterator);
    case 98:
        return hand<FltRecordClipRegion, I>(*this, &FltToInventor::visitClipRegion, record, iterator);
    default:
        return;
    }
}

void FltToInventor::visitAncillaryRecord(FltRecord* /*record*/) {}

void FltToInventor::visitUnknownCategoryFltRecord(FltRecord* /*record*/) {}

void FltToInventor::visitControlRecord(FltRecord* record)
{
    switch (record->getOpcode()) {
    case pushOpcode:
        return visitPushLevel();
    case popOpcode:
        return visitPopLevel();
    case 61:
        return hand(*this, &FltToInventor::visitInstanceReference, record);
    case 62:
        return hand(*this, &FltToInventor::visitInstanceDefinition, record);
    default:
        return;
    }
}

void FltToInventor::visitPaletteRecord(FltRecord* record)
{
    switch (record->getOpcode()) {
    case 32:
        return hand(*this, &FltToInventor::visitColorPalette, record);
    case 64:
        return hand(*this, &FltToInventor::visitTexturePattern, record);
    case 66:
        return hand(*this, &FltToInventor::visitOLDMaterialPalette, record);
    case 67:
        return hand(*this, &FltToInventor::visitVertexPalette, record);
    case 68:
        return hand(*this, &FltToInventor::visitVertexColor, record);
    case 69:
        return hand(*this, &FltToInventor::visitVertexColorNormal, record);
    case 70:
        return hand(*this, &FltToInventor::visitVertexColorNormalUV, record);
    case 71:
        return hand(*this, &FltToInventor::visitVertexColorUV, record);
    case 97:
        return hand(*this, &FltToInventor::visitLineStylePalette, record);
    case 102:
        return hand(*this, &FltToInventor::visitLightSourcePalette, record);
    case 112:
        return hand(*this, &FltToInventor::visitTextureMapping, record);
    case 113:
        return hand(*this, &FltToInventor::visitMaterial, record);
    case 114:
        return hand(*this, &FltToInventor::visitNamePalette, record);
    default:
        return;
    }
}

void FltToInventor::visitPushLevel()
{
    if (!state->vertices.isCut())
        state->vertices.cut(state->result);
    state->nodesStack.push(state->current);
}

void FltToInventor::visitPopLevel()
{
    if (state->nodesStack.empty())
        FltWarningMessageConsole::notifyMessage(
            "WARNING ! trying a pop() but stack is empty! (File corrupted ?)", 2, true);
    else
        state->nodesStack.pop();
}

void FltToInventor::iterator2VectorOfAncillaryElements(std::vector<FltRecord*>& out, RecordIterator& iterator)
{
    while (*iterator != nullptr && (*iterator)->getRecordCategory() == "ANCILLARY_RECORD")
        out.push_back(*iterator++);
}

void FltToInventor::visitAncillaryRecords(RecordIterator& iterator, SoGroup* group)
{
    std::vector<FltRecord*> elements;
    iterator2VectorOfAncillaryElements(elements, iterator);
    for (auto element = elements.begin(); element != elements.end();) {
        FltRecord* const record = *element;
        switch (record->getOpcode()) {
        case 31:
            hand(*this, &FltToInventor::visitComment, record, group);
            break;
        case 33:
            hand<FltRecordLongID, SoNode*>(*this, &FltToInventor::visitLongID, record, group);
            break;
        case 49:
            hand(*this, &FltToInventor::visitMatrix, record, group);
            break;
        case 51:
            hand<FltRecordOldBoundingBox>(*this, &FltToInventor::visitBoundingBox, record);
            break;
        case 60:
            if (auto const* const replicate = dynamic_cast<FltRecordReplicate const*>(record))
                visitReplicate(replicate, group, element, elements, iterator);
            break;
        case 74:
            hand<FltRecordBoundingBox>(*this, &FltToInventor::visitBoundingBox, record);
            break;
        case 78:
            hand(*this, &FltToInventor::visitTranslate, record, group);
            break;
        case 79:
            hand(*this, &FltToInventor::visitScaleNonUniform, record, group);
            break;
        case 80:
            hand(*this, &FltToInventor::visitRotateAboutPoint, record, group);
            break;
        case 105:
            hand(*this, &FltToInventor::visitBoundingVolumeSphere, record);
            break;
        case 106:
            hand(*this, &FltToInventor::visitBoundingVolumeCylinder, record);
            break;
        case 108:
            hand(*this, &FltToInventor::visitBoundingVolumeCenter, record);
            break;
        case 109:
            hand(*this, &FltToInventor::visitBoundingVolumeOrientation, record);
            break;
        default:
            break;
        }
        if (element != elements.end()) // a replication may have used them all
            ++element;
    }
}

void FltToInventor::visitGroupChildren(RecordIterator& iterator)
{
    if (state->hierarchyDepth >= FltLimits::hierarchyDepth) {
        state->warnings.notify("WARNING ! The hierarchy is nested deeper than " +
                               std::to_string(FltLimits::hierarchyDepth) +
                               " levels: what lies deeper is left out");
        return passOverLevel(iterator);
    }
    ++state->hierarchyDepth;
    bool const hasLevel = *iterator != nullptr && (*iterator)->getOpcode() == pushOpcode;
    if (!hasLevel) {
        visitPushLevel();
        visitPrimaryRecord(iterator);
        visitPopLevel();
    }
    for (int level = 0; hasLevel && *iterator != nullptr; ++iterator) {
        int const opcode = (*iterator)->getOpcode();
        if (opcode == pushOpcode) {
            ++level;
            visitPushLevel();
        } else if (opcode == popOpcode) {
            --level;
            visitPopLevel();
            if (level < 1)
                break;
        } else {
            visitPrimaryRecord(iterator);
            if (*iterator == nullptr)
                break;
        }
    }
    --state->hierarchyDepth;
}

void FltToInventor::visitHeader(FltRecordHeader const* record)
{
    if (state->result == nullptr)
        state->result = new SoSeparator;
    SoSeparator* const result = state->result;
    result->ref();
    result->setName("root");
    state->current = {result, {}, state->scene.silence(result)};

    double const scale = scaleOf(*record);
    if (scale != 1.0) {
        auto const factor = static_cast<float>(scale);
        auto* const node = new SoScale;
        node->scaleFactor.setValue(factor, factor, factor);
        result->addChild(node);
    }
    auto* const hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    hints->shapeType = SoShapeHints::SOLID;
    result->addChild(hints);
    auto* const textureBinding = new SoTextureCoordinateBinding;
    textureBinding->value = SoTextureCoordinateBinding::PER_VERTEX_INDEXED;
    result->addChild(textureBinding);
    auto* const normalBinding = new SoNormalBinding;
    normalBinding->value = SoNormalBinding::PER_VERTEX_INDEXED;
    result->addChild(normalBinding);
    state->rgbMode = (record->flags >> 30 & 1) != 0;
}

// Kept for the records that the scene has no use for: one operation each, so that a use has its place.
void FltToInventor::visitVertexPalette(FltRecordVertexPalette const* /*record*/) {}
void FltToInventor::visitLightSourcePalette(FltRecordLightSourcePalette const* /*record*/) {}
void FltToInventor::visitTextureMapping(FltRecordTextureMappingPalette const* /*record*/) {}
void FltToInventor::visitTranslate(FltRecordTranslate const* /*record*/, SoGroup* /*group*/) {}
void FltToInventor::visitScaleNonUniform(FltRecordScaleNonUniform const* /*record*/, SoGroup* /*group*/) {}
void FltToInventor::visitRotateAboutPoint(FltRecordRotateAboutPoint const* /*record*/, SoGroup* /*group*/) {}
void FltToInventor::visitBoundingBox(FltRecordOldBoundingBox const* /*record*/) {}
void FltToInventor::visitBoundingBox(FltRecordBoundingBox const* /*record*/) {}
void FltToInventor::visitBoundingVolumeSphere(FltRecordBoundingVolumeSphere const* /*record*/) {}
void FltToInventor::visitBoundingVolumeCylinder(FltRecordBoundingVolumeCylinder const* /*record*/) {}
void FltToInventor::visitBoundingVolumeCenter(FltRecordBoundingVolumeCenter const* /*record*/) {}
void FltToInventor::visitBoundingVolumeOrientation(FltRecordBoundingVolumeOrientation const* /*record*/) {}

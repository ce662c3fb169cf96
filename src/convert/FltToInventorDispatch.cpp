// The record dispatch, the stack of open levels, and the header.

#include "convert/FltDispatchTable.h"
#include "convert/FltToInventorState.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltParser.h"
#include "records/FltOpcode.h"
#include "records/FltRecordBoundingVolume.h"
#include "records/FltRecordCast.h"
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
#include "records/FltRevision.h"
#include "records/FltUnits.h"

#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>
#include <cstdlib>
#include <type_traits>

namespace
{

double scaleOf(FltRecordHeader const& header)
{
    double scale = FltUnits::metresIn(header.vertexCoordinateUnits);
    int const multiplier = header.multiplierDiviserUnit;
    if (header.formatRevisionLevel <= FltRevision::lastWithMultiplier)
        scale = multiplier < 0 ? scale / std::abs(multiplier) : scale * multiplier;
    return scale;
}

using RecordIterator = FltToInventor::RecordIterator;

/// A run of ancillary records while it is applied to the node before it.
struct AncillaryRun {
    SoGroup* group;
    std::vector<FltRecord*> elements;
    std::vector<FltRecord*>::iterator element; ///< The record at hand.
    RecordIterator& iterator;                  ///< On the record after the run.
};

using ControlHandler = void (*)(FltToInventor&, FltRecord*);
using PaletteHandler = ControlHandler;
using PrimaryHandler = void (*)(FltToInventor&, FltRecord*, RecordIterator&);
using AncillaryHandler = void (*)(FltToInventor&, FltRecord*, AncillaryRun&);

/// The class of record that an operation takes.
template <class Operation>
struct RecordOf;

template <class Record, class... Others>
struct RecordOf<void (FltToInventor::*)(Record const*, Others...)> {
    using Type = Record;
};

/// Calls an operation with a record as the class that it takes, and with the arguments if it takes any. A
/// record of another class is passed over.
template <auto operation, class... Arguments>
void visit(FltToInventor& converter, FltRecord* record, Arguments... arguments)
{
    using Record = typename RecordOf<decltype(operation)>::Type;
    auto const* const found = recordCast<Record>(record);
    if (found == nullptr)
        return;
    if constexpr (std::is_invocable_v<decltype(operation), FltToInventor&, Record const*, Arguments...>)
        (converter.*operation)(found, arguments...);
    else
        (converter.*operation)(found);
}

/// The same for a record that decorates a node.
template <auto operation>
void decorate(FltToInventor& converter, FltRecord* record, AncillaryRun& run)
{
    visit<operation, SoGroup*>(converter, record, run.group);
}

void visitFaces(FltToInventor& converter, FltRecord* /*record*/, RecordIterator& iterator)
{
    converter.visitNextSuccessiveFaces(iterator);
}

void visitPush(FltToInventor& converter, FltRecord* /*record*/)
{
    converter.visitPushLevel();
}

void visitPop(FltToInventor& converter, FltRecord* /*record*/)
{
    converter.visitPopLevel();
}

void replicate(FltToInventor& converter, FltRecord* record, AncillaryRun& run)
{
    if (auto const* const found = recordCast<FltRecordReplicate>(record))
        converter.visitReplicate(found, run.group, run.element, run.elements, run.iterator);
}

constexpr void (FltToInventor::*visitOldBoundingBox)(FltRecordOldBoundingBox const*) =
    &FltToInventor::visitBoundingBox;
constexpr void (FltToInventor::*visitBoundingBox)(FltRecordBoundingBox const*) =
    &FltToInventor::visitBoundingBox;

constexpr FltDispatchTable<PrimaryHandler> primaryRecords({
    {FltOpcode::header, visit<&FltToInventor::visitHeader>},
    {FltOpcode::group, visit<&FltToInventor::visitGroup>},
    {FltOpcode::oldLOD, visit<&FltToInventor::visitOLDLOD>},
    {FltOpcode::object, visit<&FltToInventor::visitObject>},
    {FltOpcode::face, visitFaces},
    {FltOpcode::dof, visit<&FltToInventor::visitDOF>},
    {FltOpcode::externalReference, visit<&FltToInventor::visitExternalReference>},
    {FltOpcode::lod, visit<&FltToInventor::visitLOD>},
    {FltOpcode::text, visit<&FltToInventor::visitText>},
    {FltOpcode::switchNode, visit<&FltToInventor::visitSwitch>},
    {FltOpcode::clipRegion, visit<&FltToInventor::visitClipRegion>},
});

constexpr FltDispatchTable<ControlHandler> controlRecords({
    {FltOpcode::pushLevel, visitPush},
    {FltOpcode::popLevel, visitPop},
    {FltOpcode::instanceReference, visit<&FltToInventor::visitInstanceReference>},
    {FltOpcode::instanceDefinition, visit<&FltToInventor::visitInstanceDefinition>},
});

constexpr FltDispatchTable<PaletteHandler> paletteRecords({
    {FltOpcode::colorPalette, visit<&FltToInventor::visitColorPalette>},
    {FltOpcode::texturePattern, visit<&FltToInventor::visitTexturePattern>},
    {FltOpcode::oldMaterialPalette, visit<&FltToInventor::visitOLDMaterialPalette>},
    {FltOpcode::vertexPalette, visit<&FltToInventor::visitVertexPalette>},
    {FltOpcode::vertexColor, visit<&FltToInventor::visitVertexColor>},
    {FltOpcode::vertexColorNormal, visit<&FltToInventor::visitVertexColorNormal>},
    {FltOpcode::vertexColorNormalUv, visit<&FltToInventor::visitVertexColorNormalUV>},
    {FltOpcode::vertexColorUv, visit<&FltToInventor::visitVertexColorUV>},
    {FltOpcode::lineStylePalette, visit<&FltToInventor::visitLineStylePalette>},
    {FltOpcode::lightSourcePalette, visit<&FltToInventor::visitLightSourcePalette>},
    {FltOpcode::textureMappingPalette, visit<&FltToInventor::visitTextureMapping>},
    {FltOpcode::material, visit<&FltToInventor::visitMaterial>},
    {FltOpcode::namePalette, visit<&FltToInventor::visitNamePalette>},
});

constexpr FltDispatchTable<AncillaryHandler> ancillaryRecords({
    {FltOpcode::comment, decorate<&FltToInventor::visitComment>},
    {FltOpcode::longID, decorate<&FltToInventor::visitLongID>},
    {FltOpcode::matrix, decorate<&FltToInventor::visitMatrix>},
    {FltOpcode::oldBoundingBox, decorate<visitOldBoundingBox>},
    {FltOpcode::replicate, replicate},
    {FltOpcode::boundingBox, decorate<visitBoundingBox>},
    {FltOpcode::translate, decorate<&FltToInventor::visitTranslate>},
    {FltOpcode::scaleNonUniform, decorate<&FltToInventor::visitScaleNonUniform>},
    {FltOpcode::rotateAboutPoint, decorate<&FltToInventor::visitRotateAboutPoint>},
    {FltOpcode::boundingVolumeSphere, decorate<&FltToInventor::visitBoundingVolumeSphere>},
    {FltOpcode::boundingVolumeCylinder, decorate<&FltToInventor::visitBoundingVolumeCylinder>},
    {FltOpcode::boundingVolumeCenter, decorate<&FltToInventor::visitBoundingVolumeCenter>},
    {FltOpcode::boundingVolumeOrientation, decorate<&FltToInventor::visitBoundingVolumeOrientation>},
});

/// Leaves out what stands below a node that lies too deep: its level, up to the Pop that closes it. The
/// records after a node without a level are its siblings then.
void passOverLevel(RecordIterator& iterator)
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
    if (PrimaryHandler const handler = primaryRecords.find(record->getOpcode()))
        handler(*this, record, iterator);
}

void FltToInventor::visitAncillaryRecord(FltRecord* /*record*/) {}

void FltToInventor::visitUnknownCategoryFltRecord(FltRecord* /*record*/) {}

void FltToInventor::visitControlRecord(FltRecord* record)
{
    if (ControlHandler const handler = controlRecords.find(record->getOpcode()))
        handler(*this, record);
}

void FltToInventor::visitPaletteRecord(FltRecord* record)
{
    if (PaletteHandler const handler = paletteRecords.find(record->getOpcode()))
        handler(*this, record);
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
    while (*iterator != nullptr && (*iterator)->getCategory() == FltRecordCategory::ancillary)
        out.push_back(*iterator++);
}

void FltToInventor::visitAncillaryRecords(RecordIterator& iterator, SoGroup* group)
{
    AncillaryRun run{group, {}, {}, iterator};
    iterator2VectorOfAncillaryElements(run.elements, iterator);
    for (run.element = run.elements.begin(); run.element != run.elements.end();) {
        if (AncillaryHandler const handler = ancillaryRecords.find((*run.element)->getOpcode()))
            handler(*this, *run.element, run);
        if (run.element != run.elements.end()) // a replication may have used them all
            ++run.element;
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
    bool const hasLevel = *iterator != nullptr && (*iterator)->getOpcode() == FltOpcode::pushLevel;
    if (!hasLevel) {
        visitPushLevel();
        visitPrimaryRecord(iterator);
        visitPopLevel();
    }
    for (int level = 0; hasLevel && *iterator != nullptr; ++iterator) {
        state->reportProgress(iterator);
        int const opcode = (*iterator)->getOpcode();
        if (opcode == FltOpcode::pushLevel) {
            ++level;
            visitPushLevel();
        } else if (opcode == FltOpcode::popLevel) {
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
        state->result = state->make<SoSeparator>();
    SoSeparator* const result = state->result;
    state->current = {result, {}, state->scene.silence(result)};
    if (result == nullptr)
        return;
    result->ref();
    result->setName("root");

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

// The nodes of the hierarchy: groups, objects, levels of detail, switches and what decorates them.

#include "convert/FltToInventorState.h"
#include "records/FltOpcode.h"
#include "records/FltRecordClipRegion.h"
#include "records/FltRecordComment.h"
#include "records/FltRecordDOF.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordLOD.h"
#include "records/FltRecordLongID.h"
#include "records/FltRecordSwitch.h"
#include "records/FltRecordText.h"
#include "records/FltRecordTransformations.h"
#include "records/FltRecordUnknown.h"
#include "toolkit/SoNodeName.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SbPlane.h>
#include <Inventor/nodes/SoClipPlane.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoLabel.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <cstring>

namespace
{

/// The text of an id field, which a zero ends only if there is room for one.
template <std::size_t size>
std::string textOf(char const (&id)[size])
{
    return {id, ::strnlen(id, size)};
}

SbVec3f centreOf(FltRecordLOD const& record)
{
    return {static_cast<float>(record.XcenterCoordinate), static_cast<float>(record.YcenterCoordinate),
            static_cast<float>(record.ZcenterCoordinate)};
}

/// Calls an action for each line of a comment but the first, with the text from there to the end, and once
/// more for the last line. For a comment of one line it is called with that line.
template <class Action>
void forEachCommentLine(std::string text, Action action)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) { // the zero at its end is looked at too
        if (text[i] == '\n' || text[i] == '\r') {
            text[i] = '\0';
            start = i + 1;
            if (text[start] == '\n') {
                ++i;
                start = i + 1;
            }
            if (text[start] != '\0')
                action(&text[start]);
        } else if (text[i] == '\0' && text[start] != '\0') {
            action(&text[start]);
        }
    }
}

} // namespace

void FltToInventor::State::giveName(SoNode* node, std::string const& name)
{
    if (node != nullptr)
        SoNodeName::give(*node, name);
    else
        current.isSwitch = FltConvertedSwitch::isMarked(SoNodeName::given(name));
}

void FltToInventor::State::hang(SoGroup* parent, SoNode* child)
{
    if (parent != nullptr)
        parent->addChild(child);
}

SoLabel* FltToInventor::State::makeLabel(std::string const& text) const
{
    auto* const label = make<SoLabel>();
    if (label != nullptr)
        label->label = text.c_str();
    return label;
}

void FltToInventor::State::openNode(FltToInventor& converter, SoGroup* group, RecordIterator& iterator)
{
    current.group = group;
    converter.addSoGroupToNodesStackTop(group);
    ++iterator;
    converter.visitAncillaryRecords(iterator, group);
}

void FltToInventor::State::openNode(FltToInventor& converter, SoGroup* outer, SoGroup* inner,
                                    RecordIterator& iterator)
{
    current.group = inner;
    converter.addSoGroupToNodesStackTop(outer);
    current.order = scene.silence(inner);
    ++current.place.depth;
    ++iterator;
    converter.visitAncillaryRecords(iterator, inner);
}

void FltToInventor::addSoGroupToNodesStackTop(SoGroup* node)
{
    state->current.order = state->scene.silence(node);
    SoGroup* const top = state->stackTop();
    if (!state->isLevelOpen())
        return state->keepUnattached(node);
    bool const isInSwitch = state->isTopSwitch();
    FltInstanceAccount::Place place = state->nodesStack.top().place;
    place.depth += isInSwitch ? 2 : 1;
    if (!state->instances.addNode(place))
        return state->keepUnattached(node);
    state->current.place = place;
    if (!isInSwitch || top == nullptr)
        return State::hang(top, node);
    auto* const wrapper = new SoSwitch;
    state->nameAsChildOf(*top, *wrapper);
    wrapper->whichChild = isSoSwitchTraverseHisChildren(top) ? SO_SWITCH_ALL : SO_SWITCH_NONE;
    state->scene.silence(wrapper);
    wrapper->addChild(node);
    top->addChild(wrapper);
}

bool FltToInventor::State::isTopSwitch()
{
    OpenLevel& level = nodesStack.top();
    if (shared.makesNodes && (!level.isSwitch || !visitsRecords))
        level.isSwitch = FltConvertedSwitch::isMarked(level.group->getName().getString());
    return level.isSwitch == true;
}

/// A long id may make the name of a switch long, and each child repeats it.
void FltToInventor::State::nameAsChildOf(SoGroup const& group, SoSwitch& child)
{
    SbName const name = group.getName();
    if (shared.allowances.switchNames.spend(name.getLength()))
        SoNodeName::give(child, std::string("child_of_") + name.getString());
    else
        warnings.notify("WARNING ! Children of switches have too long names: some are left without one");
}

void FltToInventor::State::keepUnattached(SoNode* node)
{
    unattachedNodes.emplace_back(node);
    current.place = instances.openUnattachedScope();
}

bool FltToInventor::State::isLevelOpen() const
{
    return !nodesStack.empty() && (!shared.makesNodes || nodesStack.top().group != nullptr);
}

SoGroup* FltToInventor::State::stackTop()
{
    if (nodesStack.empty())
        return nullptr;
    scene.forgetBox(nodesStack.top().order);
    return nodesStack.top().group;
}

void FltToInventor::visitGroup(FltRecordGroup const* record, RecordIterator& iterator)
{
    auto* const group = state->makeNamed<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, iterator);
    visitGroupChildren(iterator);
}

void FltToInventor::visitDOF(FltRecordDOF const* record, RecordIterator& iterator)
{
    auto* const group = state->makeNamed<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, iterator);
    visitGroupChildren(iterator);
}

void FltToInventor::visitObject(FltRecordObject const* record, RecordIterator& iterator)
{
    SoGroup* object = state->makeNamed<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, object, iterator);
    if (*iterator != nullptr && (*iterator)->getOpcode() == FltOpcode::popLevel)
        --iterator; // an empty object: the Pop closes the level around it
    else
        visitObjectFaceRecords(iterator, static_cast<float>(record->transparency), object);
}

void FltToInventor::visitText(FltRecordText const* record, RecordIterator& iterator)
{
    auto* const group = state->makeNamed<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, iterator);
}

void FltToInventor::visitUnknownPrimaryRecord(FltRecordUnknown const* /*record*/, RecordIterator& iterator)
{
    auto* const group = state->makeNamed<SoSeparator>("UnknownPrimaryRecord");
    state->openNode(*this, group, iterator);
}

void FltToInventor::visitClipRegion(FltRecordClipRegion const* record, RecordIterator& iterator)
{
    auto* const group = state->makeNamed<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, iterator);
    if (group == nullptr)
        return;
    for (int i = 0; i < FltRecordClipRegion::getUsedFlags(); ++i) {
        auto const coefficient = [&](int which) {
            return static_cast<float>(record->clipRegionCoefs[which][i]);
        };
        auto* const plane = new SoClipPlane;
        plane->plane = SbPlane(SbVec3f(coefficient(0), coefficient(1), coefficient(2)), -coefficient(3));
        plane->on = record->isEnabledClipPlane(i);
        group->addChild(plane);
    }
}

void FltToInventor::visitLOD(FltRecordLOD const* record, RecordIterator& iterator)
{
    std::string const name = textOf(record->idASCII);
    auto* const lod = state->makeNamed<SoLOD>(name);
    SoNodeRef<SoSeparator> const children(state->makeNamed<SoSeparator>(name));
    std::int64_t const nodesBefore = state->instances.getGraph().getNodes();
    RecordIterator const begin = iterator;
    state->openNode(*this, lod, children.get(), iterator);
    FltSilencedScene::Order const order = state->current.order;
    visitGroupChildren(iterator);
    if (lod == nullptr)
        return;
    // Nearer than the switch-out distance and beyond the switch-in distance an empty label is drawn.
    lod->center = centreOf(*record);
    lod->range.set1Value(0, static_cast<float>(record->switchOutDistance));
    lod->range.set1Value(1, static_cast<float>(record->switchInDistance));
    lod->addChild(state->minRangeLabel.get());
    lod->addChild(children.get());
    SbVec3f const centre = lod->center.getValue();
    if (centre[0] == 0 && centre[1] == 0 && centre[2] == 0)
        state->lodCentres.setFromBox(*lod, children.get(), order,
                                     iterator - begin + state->instances.getGraph().getNodes() - nodesBefore);
    lod->addChild(state->maxRangeLabel.get());
}

void FltToInventor::visitOLDLOD(FltRecordOLDLOD const* record, RecordIterator& iterator)
{
    FltRecordLOD current(record->getLength());
    std::memcpy(current.idASCII, record->idASCII, sizeof current.idASCII);
    current.switchInDistance = record->switchInDistance;
    current.switchOutDistance = record->switchOutDistance;
    current.flags = record->flags;
    current.XcenterCoordinate = record->XcenterCoordinate;
    current.YcenterCoordinate = record->YcenterCoordinate;
    current.ZcenterCoordinate = record->ZcenterCoordinate;
    visitLOD(&current, iterator);
}

void FltToInventor::visitSwitch(FltRecordSwitch const* record, RecordIterator& iterator)
{
    std::string const name = SoNodeName::given(textOf(record->idASCII));
    auto* const group = state->makeNamed<SoSeparator>(FltConvertedSwitch::markedName(name));
    if (group != nullptr) {
        auto* info = new SoInfo;
        setFltSwitchPropertiesToSoInfo(info, record);
        group->addChild(info);
    }
    state->openNode(*this, group, iterator);
    visitGroupChildren(iterator);
}

void FltToInventor::setFltSwitchPropertiesToSoInfo(SoInfo*& info, FltRecordSwitch const* record)
{
    FltConvertedSwitch::fillInfo(*info, *record);
}

char const* FltToInventor::getInfoStringFromAConvertedFltSwitch(SoGroup* group) const
{
    SoInfo const* const info = FltConvertedSwitch::findInfo(group);
    return info != nullptr ? info->string.getValue().getString() : "No_SoInfo_switch_found";
}

int FltToInventor::currentNumberOfSwitchChildren(SoGroup* group) const
{
    return FltConvertedSwitch::countChildren(group);
}

bool FltToInventor::isSoSwitchTraverseHisChildren(SoGroup* group) const
{
    // A conversion only ever adds children, and asks a switch of thousands once for each. At other times a
    // group may have changed, or be another one.
    if (!state->visitsRecords)
        state->switches.clear();
    return state->switches[group].drawsNextChild(group);
}

void FltToInventor::visitComment(FltRecordComment const* record, SoGroup* group)
{
    if (group == nullptr)
        return;
    forEachCommentLine(record->textDescription.get(), [this, group](char const* line) {
        // Every line holds the whole rest of its comment, so a long one multiplies.
        if (state->shared.allowances.commentText.isExceeded())
            return state->warnings.notify("WARNING ! The file's comments are too long: some are left out");
        state->shared.allowances.commentText.spend(static_cast<std::int64_t>(std::strlen(line)));
        auto* const info = new SoInfo;
        info->string = line;
        group->addChild(info);
    });
}

void FltToInventor::visitLongID(FltRecordLongID const* record, SoNode* node)
{
    state->giveName(node, record->idASCII.get());
}

void FltToInventor::visitMatrix(FltRecordMatrix const* record, SoGroup* group)
{
    if (group == nullptr)
        return;
    SbMatrix matrix;
    matrix.setValue(&record->matrix[0][0]);
    auto* const transform = new SoMatrixTransform;
    transform->matrix = matrix;
    group->addChild(transform);
}

// The nodes of the hierarchy: groups, objects, levels of detail, switches and what decorates them.

#include "convert/FltToInventorState.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
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

#include <Inventor/SbMatrix.h>
#include <Inventor/SbPlane.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoClipPlane.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoLabel.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace
{

constexpr int popOpcode = 11;
constexpr char switchMark[] = "flt_switch";
constexpr char switchInfoName[] = "SoInfo_child_of_FLT_switch";
constexpr char noSwitchInfo[] = "No_SoInfo_switch_found";

/// The text of an id field, which a zero ends only if there is room for one.
template <std::size_t size>
std::string textOf(char const (&id)[size])
{
    return {id, ::strnlen(id, size)};
}

template <class Node>
Node* named(std::string const& name)
{
    auto* const node = new Node;
    node->setName(name.c_str());
    return node;
}

bool isSwitchInfo(SoNode* node)
{
    return node->isOfType(SoInfo::getClassTypeId()) && node->getName() == SbName(switchInfoName);
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// How many characters behind its first one a number takes. It is one too few for 10, for 100 to 109 and the
/// like, so that their last digit is read again as a number of its own.
int digitsToSkip(long number)
{
    int digits = 0;
    for (; number > 10; number /= 10)
        ++digits;
    return digits;
}

/// The numbers in the text of a switch's masks. A -1 stands behind each of the first three; the bits follow.
std::vector<std::int32_t> maskNumbersOf(char const* text)
{
    std::vector<std::int32_t> numbers;
    int counter = 0;
    for (; *text != '\0'; ++text) {
        if (isDigit(*text)) {
            long const number = std::strtol(text, nullptr, 10);
            numbers.push_back(static_cast<std::int32_t>(number));
            text += digitsToSkip(number);
            ++counter;
        } else if (!numbers.empty() && counter <= 3 && numbers.back() != -1) {
            numbers.push_back(-1);
        }
    }
    return numbers;
}

/// No list of a switch's numbers, and no number of children, comes near this.
constexpr std::int64_t farFromAnyList = std::int64_t(1) << 40;

/// Whether a switch draws its next child, when it has so many of them. What would be read outside the list is
/// off.
bool isBitSet(std::vector<std::int32_t> const& numbers, int switchChildren)
{
    if (numbers.size() < 3)
        return false;
    std::int64_t const currentMask = numbers[0];
    std::int64_t const wordsPerMask = numbers[2];
    std::int64_t const words = (currentMask + 1) * wordsPerMask;
    if (std::abs(words) > farFromAnyList)
        return false;
    std::int64_t const index = words * 32 + 5 - switchChildren;
    return index >= 0 && index < static_cast<std::int64_t>(numbers.size()) &&
           numbers[static_cast<std::size_t>(index)] == 1;
}

SbVec3f centreOf(FltRecordLOD const& record)
{
    return {static_cast<float>(record.XcenterCoordinate), static_cast<float>(record.YcenterCoordinate),
            static_cast<float>(record.ZcenterCoordinate)};
}

} // namespace

void FltToInventor::State::openNode(FltToInventor& converter, SoGroup* attached, SoGroup* receiver,
                                    RecordIterator& iterator)
{
    current.group = receiver;
    converter.addSoGroupToNodesStackTop(attached);
    if (receiver != attached) {
        current.order = scene.silence(receiver);
        ++current.place.depth;
    }
    ++iterator;
    converter.visitAncillaryRecords(iterator, receiver);
}

void FltToInventor::addSoGroupToNodesStackTop(SoGroup* node)
{
    state->current.order = state->scene.silence(node);
    SoGroup* const top = state->stackTop();
    if (top == nullptr)
        return state->keepUnattached(node);
    bool const isInSwitch = std::strstr(top->getName().getString(), switchMark) != nullptr;
    FltInstanceAccount::Place place = state->nodesStack.top().place;
    place.depth += isInSwitch ? 2 : 1;
    if (!state->instances.addNode(place))
        return state->keepUnattached(node);
    state->current.place = place;
    if (!isInSwitch) {
        top->addChild(node);
        return;
    }
    auto* const wrapper = named<SoSwitch>(std::string("child_of_") + top->getName().getString());
    wrapper->whichChild = isSoSwitchTraverseHisChildren(top) ? SO_SWITCH_ALL : SO_SWITCH_NONE;
    state->scene.silence(wrapper);
    wrapper->addChild(node);
    top->addChild(wrapper);
}

void FltToInventor::State::keepUnattached(SoNode* node)
{
    unattachedNodes.emplace_back(node);
    current.place = instances.openUnattachedScope();
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
    auto* const group = named<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, group, iterator);
    visitGroupChildren(iterator);
}

void FltToInventor::visitDOF(FltRecordDOF const* record, RecordIterator& iterator)
{
    auto* const group = named<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, group, iterator);
    visitGroupChildren(iterator);
}

void FltToInventor::visitObject(FltRecordObject const* record, RecordIterator& iterator)
{
    SoGroup* object = named<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, object, object, iterator);
    if (*iterator != nullptr && (*iterator)->getOpcode() == popOpcode)
        --iterator; // an empty object: the Pop closes the level around it
    else
        visitObjectFaceRecords(iterator, static_cast<float>(record->transparency), object);
}

void FltToInventor::visitText(FltRecordText const* record, RecordIterator& iterator)
{
    auto* const group = named<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, group, iterator);
}

void FltToInventor::visitUnknownPrimaryRecord(FltRecordUnknown const* /*record*/, RecordIterator& iterator)
{
    auto* const group = named<SoSeparator>("UnknownPrimaryRecord");
    state->openNode(*this, group, group, iterator);
}

void FltToInventor::visitClipRegion(FltRecordClipRegion const* record, RecordIterator& iterator)
{
    auto* const group = named<SoSeparator>(textOf(record->idASCII));
    state->openNode(*this, group, group, iterator);
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
    auto* const lod = named<SoLOD>(name);
    lod->center = centreOf(*record);
    // Nearer than the switch-out distance and beyond the switch-in distance an empty label is drawn.
    lod->range.set1Value(0, static_cast<float>(record->switchOutDistance));
    lod->range.set1Value(1, static_cast<float>(record->switchInDistance));
    auto* const children = named<SoSeparator>(name);
    children->ref();
    std::int64_t const nodesBefore = state->instances.getGraph().getNodes();
    RecordIterator const begin = iterator;
    state->openNode(*this, lod, children, iterator);
    FltSilencedScene::Order const order = state->current.order;
    visitGroupChildren(iterator);
    lod->addChild(state->minRangeLabel.get());
    lod->addChild(children);
    children->unref();
    SbVec3f const centre = lod->center.getValue();
    if (centre[0] == 0 && centre[1] == 0 && centre[2] == 0)
        state->setCentreFromBox(lod, children, order,
                                iterator - begin + state->instances.getGraph().getNodes() - nodesBefore);
    lod->addChild(state->maxRangeLabel.get());
}

void FltToInventor::State::setCentreFromBox(SoLOD* lod, SoGroup* children, FltSilencedScene::Order order,
                                            std::int64_t steps)
{
    if (!shared.lodCentreSteps.spend(steps))
        return warnings.notify(
            "WARNING ! Levels of detail are nested too deeply: some keep a centre of (0, 0, 0)");
    SoGetBoundingBoxAction action{SbViewportRegion()};
    action.apply(children);
    lod->center = action.getBoundingBox().getCenter();
    scene.noteBox(order);
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
    auto* const group = named<SoSeparator>(textOf(record->idASCII));
    group->setName((std::string(group->getName().getString()) + "_(" + switchMark + ")").c_str());
    auto* info = new SoInfo;
    setFltSwitchPropertiesToSoInfo(info, record);
    group->addChild(info);
    state->openNode(*this, group, group, iterator);
    visitGroupChildren(iterator);
}

void FltToInventor::setFltSwitchPropertiesToSoInfo(SoInfo*& info, FltRecordSwitch const* record)
{
    info->setName(switchInfoName);
    std::string text = "Current Mask:" + std::to_string(record->indexOfCurrentMask) +
                       " NumberOfWordsPerMask:" + std::to_string(record->numberOf32BitWordsPerMask) +
                       " numberOfMasks:" + std::to_string(record->numberOfMasks) + " Switch Masks:";
    for (int word = 0; word < record->maskWordCount; ++word) {
        auto const bits = static_cast<std::uint32_t>(record->masks[static_cast<std::size_t>(word)]);
        for (int bit = 31; bit >= 0; --bit)
            text += (bits >> bit & 1) != 0 ? "1 " : "0 ";
        text += "  ";
    }
    info->string = text.c_str();
}

char const* FltToInventor::getInfoStringFromAConvertedFltSwitch(SoGroup* group) const
{
    for (int i = 0; i < group->getNumChildren(); ++i)
        if (isSwitchInfo(group->getChild(i)))
            return static_cast<SoInfo*>(group->getChild(i))->string.getValue().getString();
    FltWarningMessageConsole::notifyMessage("ERROR ! SoInfo with switch properties not found", 3, true);
    return noSwitchInfo;
}

int FltToInventor::currentNumberOfSwitchChildren(SoGroup* group) const
{
    int count = 0;
    for (int i = 0; i < group->getNumChildren(); ++i)
        count += group->getChild(i)->isOfType(SoSwitch::getClassTypeId()) ? 1 : 0;
    return count;
}

bool FltToInventor::isSoSwitchTraverseHisChildren(SoGroup* group) const
{
    // A conversion only ever adds children, and asks a switch of thousands once for each: parse its text once
    // and count on from last time. At other times a group may have changed, or be another one.
    if (!state->visitsRecords)
        state->switchStates.clear();
    State::SwitchState& known = state->switchStates[group];
    for (; known.childrenSeen < group->getNumChildren(); ++known.childrenSeen) {
        SoNode* const child = group->getChild(known.childrenSeen);
        if (child->isOfType(SoSwitch::getClassTypeId()))
            ++known.switchChildren;
        else if (known.info == nullptr && isSwitchInfo(child)) {
            known.info = static_cast<SoInfo*>(child);
            known.maskNumbers = maskNumbersOf(known.info->string.getValue().getString());
        }
    }
    if (known.info == nullptr)
        FltWarningMessageConsole::notifyMessage("ERROR ! SoInfo with switch properties not found", 3, true);
    return isBitSet(known.maskNumbers, known.switchChildren);
}

void FltToInventor::visitComment(FltRecordComment const* record, SoGroup* group)
{
    std::string const text = record->textDescription.get();
    std::unique_ptr<char[]> const copy(new char[text.size() + 2]());
    std::memcpy(copy.get(), text.c_str(), text.size());
    std::size_t const size = text.size() + 1;
    std::size_t start = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (copy[i] == '\n' || copy[i] == '\r') {
            copy[i] = '\0';
            start = i + 1;
            if (copy[start] == '\n') {
                ++i;
                start = i + 1;
            }
            if (copy[start] != '\0')
                state->addCommentLine(&copy[start], group);
        } else if (copy[i] == '\0' && copy[start] != '\0') {
            state->addCommentLine(&copy[start], group);
        }
    }
}

void FltToInventor::State::addCommentLine(char const* text, SoGroup* group)
{
    // Every line holds the whole rest of its comment, so a long one multiplies.
    if (shared.commentText.isExceeded())
        return warnings.notify("WARNING ! The file's comments are too long: some are left out");
    shared.commentText.spend(static_cast<std::int64_t>(std::strlen(text)));
    auto* const info = new SoInfo;
    info->string = text;
    group->addChild(info);
}

void FltToInventor::visitLongID(FltRecordLongID const* record, SoNode* node)
{
    node->setName(record->idASCII.get());
}

void FltToInventor::visitMatrix(FltRecordMatrix const* record, SoGroup* group)
{
    SbMatrix matrix;
    matrix.setValue(&record->matrix[0][0]);
    auto* const transform = new SoMatrixTransform;
    transform->matrix = matrix;
    group->addChild(transform);
}

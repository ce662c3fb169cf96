#include "visual/FltVisualBuilder.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "model/FltNodeWords.h"
#include "model/FltTransformation.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "records/FltOpcodeTable.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordLOD.h"
#include "toolkit/StackSpace.h"
#include "visual/FltFlipBookReader.h"
#include "visual/FltJointMotion.h"
#include "visual/FltJointReader.h"
#include "visual/FltLightReader.h"
#include "visual/FltLocalOrigin.h"
#include "visual/FltObjectReader.h"
#include "visual/FltSwitchReader.h"
#include "visual/FltTextReader.h"
#include "visual/FltTurningFace.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

/// A copy below so many levels counts twice, below twice as many five times, and so on: whatever is written
/// of it is indented by them.
constexpr int levelsOfWeight = 16;

/// The shortest record of the hierarchy that says anything: a reference to an instance.
constexpr std::size_t shortestRecord = 8;

/// Where the frame of a degree of freedom begins. A record that ends before it has nothing that moves.
constexpr std::size_t frameOfDof = 16;

/// Nodes of the toolkit around a face that turns.
constexpr int nodesAroundATurningFace = 2;

/// Nodes between two calls of the progress function.
constexpr int childrenPerProgress = 1024;

/// What the record of a level of detail says after what every revision has.
void addSignificantSize(FltRecordView const& record, FltVisualNode& node)
{
    FltRecordLongLOD level(record.classLength());
    record.decodeFieldsTo(level);
    if (record.holdsField(level, level.significantSize))
        node.become<FltVisualLevel>({level.significantSize});
}

} // namespace

FltVisualBuilder::FltVisualBuilder(FltModel& model, FltVisualSetting& setting, double worldPerUnit)
    : model(model), setting(setting), worldPerUnit(worldPerUnit),
      allowedError(FltLocalOrigin::allowedError(0, FltLocalOrigin::unitOf(model))),
      file(static_cast<std::uint32_t>(setting.files.size())), tools(model, setting.textures, setting.leftOut),
      faces(tools), definitions(model.tree)
{
    setting.files.push_back(model.fileName);
}

/// Records are read once, in their order and before those below them, but for vertices of the palette, and
/// for definitions, which are read where the first reference to them stands.
void FltVisualBuilder::dropBytesOf(FltFileInput& input)
{
    if (!definitions.isEmpty())
        return;
    input.dropBytesFrom(model.vertices.endInFile());
    spent = &input;
}

FltVisualPart FltVisualBuilder::build()
{
    FltNodeBuilder node;
    node->record = {0, file};
    addContents(FltModelTree::root, node, {});
    return node.finish();
}

FltVisualPart FltVisualBuilder::buildAlone(Number number)
{
    FltNodeBuilder node;
    node->record = {0, file};
    node.add(buildAlone(number, {}));
    return node.finish();
}

FltVisualPart FltVisualBuilder::buildNode(Number number, FltObjectLook const& object)
{
    FltRecordView const& record = model.tree.recordOf(number);
    if (!hasRoomFor(record))
        return {};
    if (record.size < shortestRecord && isAlone(number))
        return {}; // nothing is drawn, and nobody can look for it: it only takes memory
    ++setting.levels;
    FltVisualPart part;
    switch (record.opcode) {
    case FltOpcode::switchNode:
        part = buildSwitch(number, object);
        break;
    case FltOpcode::externalReference:
        part = buildReference(number);
        break;
    case FltOpcode::instanceReference:
        part = buildInstance(number);
        break;
    case FltOpcode::instanceDefinition:
        break; // it is drawn where references to it stand
    case FltOpcode::lightSource:
        part = buildLight(number);
        break;
    case FltOpcode::object:
        part = buildObject(number);
        break;
    default:
        part = buildGroup(number, object);
        break;
    }
    --setting.levels;
    return part;
}

/// Whether one more level may be opened for a record. Instances of instances may be deeper than the file.
bool FltVisualBuilder::hasRoomFor(FltRecordView const& record)
{
    if (setting.levels < FltLimits::hierarchyDepth && StackSpace::holds(FltLimits::stackForALevel))
        return true;
    model.tree.leaveOutFrom(record);
    return false;
}

/// Whether nothing stands below a node, and no record tells more of it.
bool FltVisualBuilder::isAlone(Number number) const
{
    return model.tree[number].firstChild == FltModelTree::none && model.tree.ancillaries(number).empty();
}

/// An empty node for a record, with what people wrote at it.
FltNodeBuilder FltVisualBuilder::begin(Number number) const
{
    FltNodeBuilder node;
    node->name = FltNodeWords::nameOf(model.tree, number);
    node->comments = FltNodeWords::commentsOf(model.tree, number);
    node->record = {model.tree.recordOf(number).offset, file};
    return node;
}

FltVisualPart FltVisualBuilder::buildGroup(Number number, FltObjectLook const& object)
{
    FltRecordView const& record = model.tree.recordOf(number);
    countLeftOut(record);
    FltNodeBuilder node = begin(number);
    if (record.opcode == FltOpcode::lod)
        addSignificantSize(record, *node);
    if (record.opcode == FltOpcode::dof && record.size > frameOfDof) {
        FltVisualJoint& joint = node->become<FltVisualJoint>(FltJointReader::read(record));
        joint.name = node->name;
        joint.number = setting.joints++;
        SbMatrix const frame(joint.frame.value_or(SbDPMatrix::identity()));
        node.stackMatrix(SbDPMatrix(frame));
        node.stackMatrix(SbDPMatrix(FltJointMotion(joint).matrix()));
        node.stackMatrix(SbDPMatrix(frame.inverse()));
    }
    addContents(number, node, object);
    return node.finish();
}

FltVisualPart FltVisualBuilder::buildObject(Number number)
{
    FltObjectReader const object =
        FltObjectReader::read(model.tree.recordOf(number), setting.time, setting.leftOut);
    FltVisualPart const part = buildGroup(number, object.look);
    return object.isHidden ? FltNodeBuilder::hidden(part) : part;
}

/// Adds what stands below a node, in its transformation.
void FltVisualBuilder::addContents(Number number, FltNodeBuilder& node, FltObjectLook const& object)
{
    FltTransformation const transformation(model.tree, number, allowedError);
    if (transformation.getReplications() > 0) {
        FltNodeBuilder content;
        addChildren(number, content, object);
        addReplications(node, content.finish(), transformation.getStep(), transformation.getReplications());
        return;
    }
    for (SbDPMatrix const& matrix : transformation.getMatrices())
        node.addMatrix(matrix);
    if (number != FltModelTree::root && model.tree.opcodeOf(number) == FltOpcode::text)
        FltTextReader::addTo(node, model.tree.recordOf(number), FltNodeWords::textOf(model.tree, number),
                             model.palettes);
    addChildren(number, node, object);
}

/// Adds a part, and as many copies of it as there may be, each moved on by a step.
void FltVisualBuilder::addReplications(FltNodeBuilder& node, FltVisualPart const& content,
                                       SbDPMatrix const& step, int count)
{
    std::int64_t const visitsOfACopy = content.visits + 1;
    std::int64_t const steps = setting.levels / levelsOfWeight;
    std::int64_t const weight = 1 + steps * steps;
    std::int64_t const most = std::min(setting.copiesLeft / weight, setting.visitsLeft / visitsOfACopy);
    if (count > most)
        FltWarningMessageConsole::notifyGuard("Too many replications: further ones are left out");
    std::int64_t const made = std::min<std::int64_t>(count, most);
    setting.copiesLeft -= made * weight;
    setting.visitsLeft -= made * visitsOfACopy;
    if (made > 0)
        node.addCopies(content, FltTransformation::placesOf(step, static_cast<int>(made), allowedError));
    else
        node.add(content);
}

/// Whether a part that stands elsewhere too may stand at one more place.
bool FltVisualBuilder::mayShare(FltVisualPart const& part)
{
    return mayRepeat(part.visits);
}

/// Whether a traversal may visit so many nodes once more.
bool FltVisualBuilder::mayRepeat(std::int64_t visits)
{
    if (visits > setting.visitsLeft) {
        FltWarningMessageConsole::notifyGuard(
            "A part of the database is left out, because the scene would become too large");
        return false;
    }
    setting.visitsLeft -= visits;
    return true;
}

void FltVisualBuilder::addChildren(Number number, FltNodeBuilder& node, FltObjectLook const& object)
{
    if (addFrames(number, node, object))
        return;
    FltModelTree const& tree = model.tree;
    Collected collected(*this);
    // Lights shine on what comes after them.
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        if (tree.opcodeOf(child) == FltOpcode::lightSource)
            node.add(buildNode(child, object));
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        addChild(child, node, object, collected);
    collected.finish(node);
}

/// Adds the children of a group as the frames of a flip-book, if that is what they are.
bool FltVisualBuilder::addFrames(Number number, FltNodeBuilder& node, FltObjectLook const& object)
{
    if (number == FltModelTree::root || !FltFlipBookReader::isAnimated(model.tree.recordOf(number)))
        return false;
    std::vector<Number> const frames = framesOf(number);
    std::optional<FltVisualFlipBook> book =
        FltFlipBookReader::read(model.tree.recordOf(number), model.revision, frames.size());
    if (!book)
        return false;
    book->name = FltNodeWords::nameOf(model.tree, number);
    std::int64_t visits = 0;
    for (Number const child : frames) {
        FltVisualPart const frame = buildAlone(child, object);
        visits += frame.visits + 1;
        node.addPlace(frame);
    }
    bool const swings = book->steps.size() > frames.size();
    if (swings && mayRepeat(visits))
        node.addVisits(visits);
    else
        book->steps.resize(frames.size());
    book->number = setting.flipBooks++;
    node->become<FltVisualFlipBook>(std::move(*book));
    return true;
}

/// The children of an animated group that are drawn where they stand.
std::vector<FltVisualBuilder::Number> FltVisualBuilder::framesOf(Number number) const
{
    FltModelTree const& tree = model.tree;
    std::vector<Number> frames;
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        if (tree.recordOf(child).opcode != FltOpcode::instanceDefinition)
            frames.push_back(child);
    return frames;
}

void FltVisualBuilder::addChild(Number child, FltNodeBuilder& node, FltObjectLook const& object,
                                Collected& collected)
{
    FltRecordView const& record = model.tree.recordOf(child);
    if (spent != nullptr)
        spent->dropBytesBefore(spent->getBuffer() + record.offset);
    if (setting.progress && --childrenUntilProgress < 0) {
        setting.progress(model, record.offset);
        childrenUntilProgress = childrenPerProgress;
    }
    if (record.opcode == FltOpcode::lightSource ||
        FltOpcodeTable::partOf(static_cast<int>(record.opcode)) == FltOpcodeRow::Part::corners)
        return;
    if (record.opcode == FltOpcode::lod || record.opcode == FltOpcode::oldLOD) {
        std::optional<FltLODChains::Level> level = FltLODChains::read(record);
        FltVisualPart const part = buildNode(child, object);
        if (level && part.node != nullptr) {
            level->part = part;
            collected.levels.add(*level);
        } else {
            node.add(part);
        }
        return;
    }
    if (!FltFaceReader::reads(record.opcode))
        node.add(buildNode(child, object));
    else if (faces.turningOf(child) != FltFaceReader::Turning::none)
        node.add(buildBillboard(child, object));
    else
        readFaces(child, collected.faces, object);
    if (record.opcode == FltOpcode::lightPoint)
        addBelowLightPoint(child, node, object, collected);
}

/// Vertices that stand in a face or a mesh are of no use to another one.
void FltVisualBuilder::readFaces(Number number, FltFaceCollector& collector, FltObjectLook const& object,
                                 FltPlacement const* placement)
{
    faces.read(number, collector, object, placement);
    faces.forgetVertices();
}

/// Objects may stand below light points, beside the vertices.
void FltVisualBuilder::addBelowLightPoint(Number number, FltNodeBuilder& node, FltObjectLook const& object,
                                          Collected& collected)
{
    FltModelTree const& tree = model.tree;
    if (!hasRoomFor(tree.recordOf(number)))
        return;
    ++setting.levels;
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        addChild(child, node, object, collected);
    --setting.levels;
}

/// A face that turns to the eye.
FltVisualPart FltVisualBuilder::buildBillboard(Number number, FltObjectLook const& object)
{
    std::vector<SbVec3d> const points = faces.pointsOf(number);
    FltFaceCollector collector(tools);
    FltNodeBuilder node;
    node->record = {model.tree.recordOf(number).offset, file};
    if (points.size() < 3) {
        readFaces(number, collector, object);
        collector.finish(node);
        return node.finish();
    }
    FltTurningFace const face(points, faces.turningOf(number) == FltFaceReader::Turning::aboutPoint);
    node->become<FltVisualTurning>(face.turning());
    readFaces(number, collector, object, &face.placement);
    collector.finish(node);
    FltVisualPart part = node.finish();
    part.box = face.box;
    part.depth += nodesAroundATurningFace;
    return part;
}

FltVisualPart FltVisualBuilder::buildSwitch(Number number, FltObjectLook const& object)
{
    FltModelTree const& tree = model.tree;
    FltNodeBuilder node = begin(number);
    FltTransformation const transformation(tree, number, allowedError);
    for (SbDPMatrix const& matrix : transformation.getMatrices())
        node.addMatrix(matrix);
    FltVisualSwitch& choice = node->become<FltVisualSwitch>(FltSwitchReader::read(tree, number));
    choice.name = node->name;
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        node.addPlace(buildAlone(child, object));
    choice.number = setting.switches++;
    return node.finish();
}

/// A child that stands by itself: no other one's faces or levels are joined with it.
FltVisualPart FltVisualBuilder::buildAlone(Number child, FltObjectLook const& object)
{
    FltRecordView const& record = model.tree.recordOf(child);
    if (record.opcode == FltOpcode::lightSource)
        return buildNode(child, object);
    FltNodeBuilder node;
    Collected collected(*this);
    addChild(child, node, object, collected);
    collected.finish(node);
    return node.finish();
}

FltVisualPart FltVisualBuilder::buildReference(Number number)
{
    if (!setting.refer)
        return wrapped(number, {});
    FltDecoded<FltRecordExternalReference> const record(model.tree.recordOf(number));
    std::string const path(record.asciiPath, ::strnlen(record.asciiPath, sizeof record.asciiPath));
    return wrapped(number, setting.refer(model, path, record.Flags));
}

FltVisualPart FltVisualBuilder::buildInstance(Number number)
{
    Number const definition = definitions.find(number);
    if (definition != FltModelTree::none)
        return wrapped(number, buildDefinition(definition));
    FltRecordView const& record = model.tree.recordOf(number);
    FltWarningMessageConsole::setPosition(record.offset, static_cast<int>(record.opcode));
    FltWarningMessageConsole::notifyDamage("An instance refers to a definition that isn't there",
                                           ": number " +
                                               std::to_string(FltInstanceDefinitions::numberIn(record)));
    ++setting.leftOut["instance without a definition"];
    return wrapped(number, {});
}

/// A shared part below the name and the transformation of the record that refers to it.
FltVisualPart FltVisualBuilder::wrapped(Number number, FltVisualPart const& content)
{
    FltNodeBuilder node = begin(number);
    FltTransformation const transformation(model.tree, number, allowedError);
    bool const isReplicated = transformation.getReplications() > 0;
    if (!isReplicated)
        for (SbDPMatrix const& matrix : transformation.getMatrices())
            node.addMatrix(matrix);
    bool const isAdded = mayShare(content);
    if (isAdded && isReplicated)
        addReplications(node, content, transformation.getStep(), transformation.getReplications());
    else if (isAdded)
        node.add(content);
    addChildren(number, node, {});
    return node.finish();
}

FltVisualPart const& FltVisualBuilder::buildDefinition(Number number)
{
    static FltVisualPart const nothing;
    auto const found = builtDefinitions.find(number);
    if (found != builtDefinitions.end())
        return found->second;
    if (std::find(definitionsInWork.begin(), definitionsInWork.end(), number) != definitionsInWork.end()) {
        FltWarningMessageConsole::notifyGuard("An instance definition refers to itself");
        return nothing;
    }
    definitionsInWork.push_back(number);
    FltVisualPart part = buildGroup(number, {});
    definitionsInWork.pop_back();
    return builtDefinitions[number] = std::move(part);
}

FltVisualPart FltVisualBuilder::buildLight(Number number)
{
    std::optional<FltVisualLight> const light =
        FltLightReader::read(model.tree.recordOf(number), model.palettes);
    if (!light)
        return {};
    FltNodeBuilder node = begin(number);
    node->become<FltVisualLight>(*light);
    return node.finish();
}

void FltVisualBuilder::countLeftOut(FltRecordView const& record)
{
    auto const opcode = static_cast<int>(record.opcode);
    if (!FltOpcodeTable::isSilent(opcode))
        ++setting.leftOut[FltOpcodeName::of(opcode)];
}

#include "complete/FltSceneBuilder.h"

#include "complete/FltDOFNodes.h"
#include "complete/FltLightNodes.h"
#include "complete/FltTextNodes.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "model/FltTransformation.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "toolkit/SoNodeName.h"
#include "toolkit/StackSpace.h"

#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoRotation.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>
#include <algorithm>
#include <cmath>

namespace
{

/// A copy below so many levels counts twice, below twice as many five times, and so on: whatever is written
/// of it is indented by them.
constexpr int levelsOfWeight = 16;

/// Words of all masks of a switch that fit to a child; see FltCompleteSwitch::shows().
constexpr std::size_t switchHeadSize = 28;

/// The shortest record of the hierarchy that says anything: a reference to an instance.
constexpr std::size_t shortestRecord = 8;

/// Where the frame of a degree of freedom begins. A record that ends before it has nothing that moves.
constexpr std::size_t frameOfDof = 16;

/// Nodes between two calls of the progress function.
constexpr int childrenPerProgress = 1024;

constexpr float quarterTurn = 1.5707963F;

/// An id of eight characters, or the name of an external file without its directories and its ending.
std::string shortNameOf(FltRecordView const& record)
{
    if (record.opcode != FltOpcode::externalReference)
        return record.textAt(4, 8);
    std::string name = record.textAt(4, 200);
    name.erase(0, name.find_last_of("/\\") + 1);
    return name.substr(0, name.rfind('.'));
}

bool hasId(FltRecordView const& record)
{
    return record.opcode != FltOpcode::instanceReference && record.opcode != FltOpcode::instanceDefinition;
}

/// The rows of a rotation that brings a direction to -y, and leaves up as it is as far as that goes.
FltPlacement facingPlacement(SbVec3d normal, bool mayPitch)
{
    FltPlacement placement;
    if (!mayPitch)
        normal[2] = 0;
    SbVec3d up(0, 0, 1);
    if (std::abs(normal[0]) + std::abs(normal[1]) < 1e-6 * std::abs(normal[2]))
        up = SbVec3d(0, 1, 0);
    if (!(normal.normalize() > 0))
        return placement;
    SbVec3d const back = -normal;
    SbVec3d right = back.cross(up);
    right.normalize();
    up = right.cross(back);
    for (int i = 0; i < 3; ++i) {
        placement.rows[0][i] = right[i];
        placement.rows[1][i] = back[i];
        placement.rows[2][i] = up[i];
    }
    return placement;
}

/// The middle of the lower edge.
SbVec3d footOf(std::vector<SbVec3d> const& points)
{
    SbVec3d low = points.front();
    SbVec3d high = points.front();
    for (SbVec3d const& point : points)
        for (int i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    return {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, low[2]};
}

SoRotation* turnAboutX(float angle)
{
    auto* const node = new SoRotation;
    node->rotation.setValue(SbVec3f(1, 0, 0), angle);
    return node;
}

} // namespace

FltSceneBuilder::FltSceneBuilder(FltModel& model, Setting& setting, double worldPerUnit)
    : model(model), setting(setting), worldPerUnit(worldPerUnit), nodes(model.palettes, setting.makeTexture),
      tools(model, nodes, setting.leftOut), faces(tools)
{
    for (Number number = 1; number < model.tree.getCount(); ++number) {
        FltRecordView const& record = model.tree.recordOf(number);
        if (record.opcode == FltOpcode::instanceDefinition)
            definitions[static_cast<std::int16_t>(record.word16At(6))].push_back(number);
    }
}

FltScenePart FltSceneBuilder::build()
{
    FltGroupBuilder group(new SoSeparator);
    addContents(FltModelTree::root, group, 0);
    return group.finish();
}

FltScenePart FltSceneBuilder::buildNode(Number number, float objectTransparency)
{
    FltRecordView const& record = model.tree.recordOf(number);
    if (!hasRoomFor(record))
        return {};
    if (record.size < shortestRecord && isAlone(number))
        return {}; // nothing is drawn, and nobody can look for it: it only takes memory
    ++setting.levels;
    FltScenePart part;
    switch (record.opcode) {
    case FltOpcode::switchNode:
        part = buildSwitch(number, objectTransparency);
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
        part = buildGroup(number, static_cast<float>(record.word16At(18)) / 65535.0F);
        break;
    default:
        part = buildGroup(number, objectTransparency);
        break;
    }
    --setting.levels;
    return part;
}

/// Whether one more level may be opened for a record. Instances of instances may be deeper than the file.
bool FltSceneBuilder::hasRoomFor(FltRecordView const& record)
{
    if (setting.levels < FltLimits::hierarchyDepth && StackSpace::holds(FltLimits::stackForALevel))
        return true;
    model.tree.leaveOutFrom(record);
    return false;
}

/// Whether nothing stands below a node, and no record tells more of it.
bool FltSceneBuilder::isAlone(Number number) const
{
    return model.tree[number].firstChild == FltModelTree::none &&
           model.tree.ancillaryBegin(number) == model.tree.ancillaryEnd(number);
}

FltScenePart FltSceneBuilder::buildGroup(Number number, float objectTransparency)
{
    FltRecordView const& record = model.tree.recordOf(number);
    countLeftOut(record);
    FltGroupBuilder group = namedGroup(number);
    if (record.opcode == FltOpcode::dof && record.size > frameOfDof) {
        setting.dofs.push_back(FltDOFNodes::addTo(group, record, nameOf(number)));
        setting.names.add(setting.dofs.back().transform.get(), setting.dofs.back().name);
    }
    addContents(number, group, objectTransparency);
    return group.finish();
}

/// Adds what stands below a node, in its transformation.
void FltSceneBuilder::addContents(Number number, FltGroupBuilder& group, float objectTransparency)
{
    addInfos(number, group);
    FltTransformation const transformation(model.tree, number);
    if (transformation.getReplications() > 0) {
        FltGroupBuilder content(new SoSeparator);
        addChildren(number, content, objectTransparency);
        addReplications(group, content.finish(), transformation.getStep(), transformation.getReplications());
        return;
    }
    for (SbMatrix const& matrix : transformation.getMatrices())
        group.addMatrix(matrix);
    FltRecordView const* const record = number != FltModelTree::root ? &model.tree.recordOf(number) : nullptr;
    if (record != nullptr && record->opcode == FltOpcode::text)
        FltTextNodes::addTo(group, *record, textOf(number), model.palettes);
    addChildren(number, group, objectTransparency);
}

/// Adds a part, and as many copies of it as there may be, each moved on by a step.
void FltSceneBuilder::addReplications(FltGroupBuilder& group, FltScenePart const& content,
                                      SbMatrix const& step, int count)
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
        group.addCopies(content, FltTransformation::placesOf(step, static_cast<int>(made)));
    else
        group.add(content);
}

/// Whether a part that stands elsewhere too may stand at one more place.
bool FltSceneBuilder::mayShare(FltScenePart const& part)
{
    if (part.visits > setting.visitsLeft) {
        FltWarningMessageConsole::notifyGuard(
            "A part of the database is left out, because the scene would become too large");
        return false;
    }
    setting.visitsLeft -= part.visits;
    return true;
}

void FltSceneBuilder::addChildren(Number number, FltGroupBuilder& group, float objectTransparency)
{
    FltModelTree const& tree = model.tree;
    FltFaceCollector collector(tools);
    FltLODChains levels(setting.lod, worldPerUnit);
    // Lights shine on what comes after them.
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        if (tree.recordOf(child).opcode == FltOpcode::lightSource)
            group.add(buildNode(child, objectTransparency));
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        addChild(child, group, objectTransparency, collector, levels);
    levels.finish(group);
    collector.finish(group);
}

void FltSceneBuilder::addChild(Number child, FltGroupBuilder& group, float objectTransparency,
                               FltFaceCollector& collector, FltLODChains& levels)
{
    FltRecordView const& record = model.tree.recordOf(child);
    if (setting.progress && --childrenUntilProgress < 0) {
        setting.progress(model, record.offset);
        childrenUntilProgress = childrenPerProgress;
    }
    switch (record.opcode) {
    case FltOpcode::lightSource:
    case FltOpcode::vertexList:
    case FltOpcode::morphVertexList:
    case FltOpcode::oldVertex:
    case FltOpcode::oldVertexColor:
    case FltOpcode::oldVertexColorNormal:
    case FltOpcode::meshPrimitive:
        return;
    case FltOpcode::lod:
    case FltOpcode::oldLOD: {
        FltScenePart const part = buildNode(child, objectTransparency);
        if (part.node.get() != nullptr && !levels.add(record, part))
            group.add(part);
        return;
    }
    default:
        break;
    }
    if (!FltFaceReader::reads(record.opcode))
        group.add(buildNode(child, objectTransparency));
    else if (faces.turningOf(child) != FltFaceReader::Turning::none)
        group.add(buildBillboard(child, objectTransparency));
    else
        faces.read(child, collector, objectTransparency);
    if (record.opcode == FltOpcode::lightPoint)
        addBelowLightPoint(child, group, objectTransparency, collector, levels);
}

/// Objects may stand below light points, beside the vertices.
void FltSceneBuilder::addBelowLightPoint(Number number, FltGroupBuilder& group, float objectTransparency,
                                         FltFaceCollector& collector, FltLODChains& levels)
{
    FltModelTree const& tree = model.tree;
    if (!hasRoomFor(tree.recordOf(number)))
        return;
    ++setting.levels;
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        addChild(child, group, objectTransparency, collector, levels);
    --setting.levels;
}

/// A face that turns to the eye. The toolkit's billboard turns its local z towards the eye, about its y axis
/// or about its origin, and databases have z up.
FltScenePart FltSceneBuilder::buildBillboard(Number number, float objectTransparency)
{
    std::vector<SbVec3d> const points = faces.pointsOf(number);
    FltFaceCollector collector(tools);
    FltGroupBuilder content(new SoSeparator);
    bool const turnsAboutPoint = faces.turningOf(number) == FltFaceReader::Turning::aboutPoint;
    if (points.size() < 3) {
        faces.read(number, collector, objectTransparency);
        collector.finish(content);
        return content.finish();
    }
    SbVec3d const foot = footOf(points);
    FltPlacement placement = facingPlacement(FltPolygonCutter::normalOf(points), turnsAboutPoint);
    std::copy(foot.getValue(), foot.getValue() + 3, placement.origin);
    faces.read(number, collector, objectTransparency, &placement);
    content.addProperty(turnAboutX(-quarterTurn));
    collector.finish(content);

    auto* const billboard = new SoVRMLBillboard;
    billboard->axisOfRotation = turnsAboutPoint ? SbVec3f(0, 0, 0) : SbVec3f(0, 1, 0);
    FltGroupBuilder turning(billboard);
    turning.add(content.finish());

    FltGroupBuilder group(new SoSeparator);
    auto* const place = new SoTranslation;
    place->translation.setValue(static_cast<float>(foot[0]), static_cast<float>(foot[1]),
                                static_cast<float>(foot[2]));
    group.addProperty(place);
    group.addProperty(turnAboutX(quarterTurn));
    group.add(turning.finish());
    FltScenePart part = group.finish();
    part.box.makeEmpty();
    for (SbVec3d const& point : points)
        part.box.extendBy(SbVec3f(static_cast<float>(point[0]), static_cast<float>(point[1]),
                                  static_cast<float>(point[2])));
    return part;
}

FltScenePart FltSceneBuilder::buildSwitch(Number number, float objectTransparency)
{
    FltModelTree const& tree = model.tree;
    FltGroupBuilder group = namedGroup(number);
    addInfos(number, group);
    FltTransformation const transformation(tree, number);
    for (SbMatrix const& matrix : transformation.getMatrices())
        group.addMatrix(matrix);
    FltCompleteSwitch choice = readSwitch(number);
    std::size_t which = 0;
    for (Number child = tree[number].firstChild; child != FltModelTree::none;
         child = tree[child].nextSibling) {
        auto* const door = new SoSwitch;
        choice.children.emplace_back(door);
        door->whichChild = choice.shows(choice.currentMask, which++) ? SO_SWITCH_ALL : SO_SWITCH_NONE;
        FltGroupBuilder builder(door);
        builder.add(buildSwitchChild(child, objectTransparency));
        group.add(builder.finish());
    }
    setting.switches.push_back(std::move(choice));
    return group.finish();
}

/// Each child of a switch stands by itself, and no other one's faces or levels are joined with it.
FltScenePart FltSceneBuilder::buildSwitchChild(Number child, float objectTransparency)
{
    FltRecordView const& record = model.tree.recordOf(child);
    if (record.opcode == FltOpcode::lightSource)
        return buildNode(child, objectTransparency);
    FltGroupBuilder group(new SoGroup);
    FltFaceCollector collector(tools);
    FltLODChains levels(setting.lod, worldPerUnit);
    addChild(child, group, objectTransparency, collector, levels);
    levels.finish(group);
    collector.finish(group);
    return group.finish();
}

FltCompleteSwitch FltSceneBuilder::readSwitch(Number number) const
{
    FltRecordView const& record = model.tree.recordOf(number);
    FltCompleteSwitch choice;
    choice.name = nameOf(number);
    choice.currentMask = record.int32At(16);
    std::size_t const words = record.size > switchHeadSize ? (record.size - switchHeadSize) / 4 : 0;
    choice.wordsPerMask = static_cast<std::size_t>(std::max(record.int32At(24), 0));
    std::size_t const masks = static_cast<std::size_t>(std::max(record.int32At(20), 0));
    for (std::size_t i = 0; i < words && (choice.wordsPerMask > 0 && i / choice.wordsPerMask < masks); ++i)
        choice.masks.push_back(record.word32At(switchHeadSize + 4 * i));
    choice.maskNames.resize(static_cast<std::size_t>(choice.getMaskCount()));
    FltRecordView const* const end = model.tree.ancillaryEnd(number);
    for (FltRecordView const* each = model.tree.ancillaryBegin(number); each != end; ++each) {
        if (each->opcode != FltOpcode::indexedString)
            continue;
        std::size_t const mask = each->word32At(4);
        if (mask < choice.maskNames.size())
            choice.maskNames[mask] = each->textAt(8);
    }
    return choice;
}

FltScenePart FltSceneBuilder::buildReference(Number number)
{
    FltRecordView const& record = model.tree.recordOf(number);
    return wrapped(number, setting.refer ? setting.refer(model, record.textAt(4, 200), record.word32At(208))
                                         : FltScenePart());
}

FltScenePart FltSceneBuilder::buildInstance(Number number)
{
    Number const definition = findDefinition(number);
    FltRecordView const& record = model.tree.recordOf(number);
    if (definition == FltModelTree::none) {
        FltWarningMessageConsole::setPosition(record.offset, static_cast<int>(record.opcode));
        FltWarningMessageConsole::notifyDamage(
            "An instance refers to a definition that isn't there",
            ": number " + std::to_string(static_cast<std::int16_t>(record.word16At(6))));
        ++setting.leftOut["instance without a definition"];
        return wrapped(number, {});
    }
    return wrapped(number, buildDefinition(definition));
}

/// A shared part below the name and the transformation of the record that refers to it.
FltScenePart FltSceneBuilder::wrapped(Number number, FltScenePart const& content)
{
    FltGroupBuilder group = namedGroup(number);
    addInfos(number, group);
    FltTransformation const transformation(model.tree, number);
    bool const isReplicated = transformation.getReplications() > 0;
    if (!isReplicated)
        for (SbMatrix const& matrix : transformation.getMatrices())
            group.addMatrix(matrix);
    bool const isAdded = mayShare(content);
    if (isAdded && isReplicated)
        addReplications(group, content, transformation.getStep(), transformation.getReplications());
    else if (isAdded)
        group.add(content);
    addChildren(number, group, 0);
    return group.finish();
}

/// The last definition of the number before the reference, or else the first one after it.
FltModelTree::Number FltSceneBuilder::findDefinition(Number reference) const
{
    int const wanted = static_cast<std::int16_t>(model.tree.recordOf(reference).word16At(6));
    auto const found = definitions.find(wanted);
    if (found == definitions.end())
        return FltModelTree::none;
    std::vector<Number> const& numbers = found->second;
    auto const after = std::upper_bound(numbers.begin(), numbers.end(), reference);
    return after == numbers.begin() ? numbers.front() : *std::prev(after);
}

FltScenePart const& FltSceneBuilder::buildDefinition(Number number)
{
    static FltScenePart const nothing;
    auto const found = builtDefinitions.find(number);
    if (found != builtDefinitions.end())
        return found->second;
    if (std::find(definitionsInWork.begin(), definitionsInWork.end(), number) != definitionsInWork.end()) {
        FltWarningMessageConsole::notifyGuard("An instance definition refers to itself");
        return nothing;
    }
    definitionsInWork.push_back(number);
    FltScenePart part = buildGroup(number, 0);
    definitionsInWork.pop_back();
    return builtDefinitions[number] = std::move(part);
}

/// A light has no children: where its name is cut, a group bears that name, and holds it whole.
FltScenePart FltSceneBuilder::buildLight(Number number)
{
    FltScenePart light = FltLightNodes::make(model.tree.recordOf(number), model.palettes);
    if (light.node.get() == nullptr)
        return light;
    std::string const name = nameOf(number);
    SoInfo* const info = SoNodeName::infoOf(name);
    if (info == nullptr) {
        setting.names.add(light.node.get(), name);
        return light;
    }
    FltGroupBuilder group(new SoGroup);
    group.addProperty(info);
    group.add(light);
    setting.names.add(group.finish().node.get(), name);
    return group.finish();
}

/// An empty group that bears the name of a record, and holds it whole where it is cut.
FltGroupBuilder FltSceneBuilder::namedGroup(Number number)
{
    FltGroupBuilder group(new SoSeparator);
    std::string const name = nameOf(number);
    setting.names.add(group.finish().node.get(), name);
    if (SoInfo* const info = SoNodeName::infoOf(name))
        group.addProperty(info);
    return group;
}

/// Comments, and what hosts may want to know of a level of detail or a switch.
void FltSceneBuilder::addInfos(Number number, FltGroupBuilder& group)
{
    if (number == FltModelTree::root)
        return;
    FltRecordView const& record = model.tree.recordOf(number);
    auto const addInfo = [&group](std::string const& text) {
        auto* const info = new SoInfo;
        info->string = text.c_str();
        group.addProperty(info);
    };
    if (record.opcode == FltOpcode::lod && record.holds(72, 8))
        addInfo("significantSize " + std::to_string(record.doubleAt(72)));
    if (record.opcode == FltOpcode::switchNode) {
        FltCompleteSwitch const choice = readSwitch(number);
        std::string text = "currentMask " + std::to_string(choice.currentMask) + "\nwordsPerMask " +
                           std::to_string(choice.wordsPerMask);
        for (std::size_t i = 0; i < choice.masks.size(); ++i)
            text += (i % choice.wordsPerMask == 0 ? "\nmask " : " ") + std::to_string(choice.masks[i]);
        for (std::size_t i = 0; i < choice.maskNames.size(); ++i)
            if (!choice.maskNames[i].empty())
                text += "\nmaskName " + std::to_string(i) + ' ' + choice.maskNames[i];
        addInfo(text);
    }
    FltRecordView const* const end = model.tree.ancillaryEnd(number);
    for (FltRecordView const* each = model.tree.ancillaryBegin(number); each != end; ++each)
        if (each->opcode == FltOpcode::comment && record.opcode != FltOpcode::text)
            addInfo(each->textAt(4));
}

std::string FltSceneBuilder::nameOf(Number number) const
{
    FltRecordView const& record = model.tree.recordOf(number);
    FltRecordView const* const end = model.tree.ancillaryEnd(number);
    for (FltRecordView const* each = model.tree.ancillaryBegin(number); each != end; ++each)
        if (each->opcode == FltOpcode::longID)
            return each->textAt(4);
    return hasId(record) ? shortNameOf(record) : std::string();
}

/// What a text record says stands in the comment after it.
std::string FltSceneBuilder::textOf(Number number) const
{
    FltRecordView const* const end = model.tree.ancillaryEnd(number);
    for (FltRecordView const* each = model.tree.ancillaryBegin(number); each != end; ++each)
        if (each->opcode == FltOpcode::comment)
            return each->textAt(4);
    return {};
}

void FltSceneBuilder::countLeftOut(FltRecordView const& record)
{
    switch (record.opcode) {
    case FltOpcode::group:
    case FltOpcode::object:
    case FltOpcode::dof:
    case FltOpcode::lod:
    case FltOpcode::oldLOD:
    case FltOpcode::text:
    case FltOpcode::instanceDefinition:
    case FltOpcode::lightPointSystem:
        return;
    default:
        break;
    }
    ++setting.leftOut[FltOpcodeName::of(static_cast<int>(record.opcode))];
}

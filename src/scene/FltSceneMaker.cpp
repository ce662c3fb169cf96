#include "scene/FltSceneMaker.h"

#include "scene/FltLightNodes.h"
#include "scene/FltMeshNodes.h"
#include "scene/FltNodeInfos.h"
#include "scene/FltTextNodes.h"
#include "toolkit/SoNodeName.h"
#include "toolkit/SoSilentField.h"

#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoRotation.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoTranslation.h>
#include <algorithm>
#include <utility>

namespace
{

constexpr float quarterTurn = 1.5707963F;

SoInfo* info(std::string const& text)
{
    auto* const node = new SoInfo;
    node->string = text.c_str();
    return node;
}

SoMatrixTransform* transformBy(SbMatrix const& matrix)
{
    auto* const node = new SoMatrixTransform;
    node->matrix = matrix;
    return node;
}

SoRotation* turnAboutX(float angle)
{
    auto* const node = new SoRotation;
    node->rotation.setValue(SbVec3f(1, 0, 0), angle);
    return node;
}

/// Whoever reads the written scene opens the file; the toolkit would do so here and now if it knew of the
/// name.
SoFile* fileNode(std::string const& path)
{
    auto* const node = new SoFile;
    SoSilentField::set(node->name, path.c_str());
    return node;
}

/// Puts the list of what was numbered while it was read into that order.
template <class Part>
void sortByNumber(std::vector<Part>& parts)
{
    std::sort(parts.begin(), parts.end(),
              [](Part const& left, Part const& right) { return left.number < right.number; });
}

} // namespace

FltMadeScene FltSceneMaker::make(std::shared_ptr<FltVisualNode> root, std::vector<FltTexture> const& textures)
{
    std::shared_ptr<FltVisualNode> const givenAway = std::move(root);
    return FltSceneMaker(textures, false).madeOf(*givenAway);
}

FltMadeScene FltSceneMaker::makeOfKept(std::shared_ptr<FltVisualNode const> const& root,
                                       std::vector<FltTexture> const& textures)
{
    return FltSceneMaker(textures, true).madeOf(*std::const_pointer_cast<FltVisualNode>(root));
}

FltMadeScene FltSceneMaker::madeOf(FltVisualNode& root)
{
    SoNodeRef<SoNode> const node = makeNode(root);
    scene.root = SoNodeRef<SoSeparator>(static_cast<SoSeparator*>(node.get()));
    scene.names.add(scene.root.get(), "root");
    scene.records.finish();
    sortByNumber(scene.switches);
    sortByNumber(scene.joints);
    return std::move(scene);
}

/// The node of a child, which the parent gives away unless the visual is kept.
SoNodeRef<SoNode> FltSceneMaker::nodeOf(std::shared_ptr<FltVisualNode>& child)
{
    bool const isShared = child.use_count() > 1;
    SoNodeRef<SoNode> node = isShared ? sharedNodeOf(child) : makeNode(*child);
    if (!keepsVisual)
        child.reset();
    return node;
}

SoNodeRef<SoNode> FltSceneMaker::sharedNodeOf(std::shared_ptr<FltVisualNode> const& visual)
{
    auto const known = sharedNodes.find(visual.get());
    if (known != sharedNodes.end())
        return known->second.node;
    SoNodeRef<SoNode> node = makeNode(*visual);
    sharedNodes[visual.get()] = {visual, node};
    return node;
}

SoNodeRef<SoNode> FltSceneMaker::makeNode(FltVisualNode& visual)
{
    if (visual.as<FltVisualSwitch>() != nullptr)
        return makeSwitch(visual);
    if (visual.as<FltVisualLevels>() != nullptr)
        return makeLevels(visual);
    if (visual.as<FltVisualTurning>() != nullptr)
        return makeTurning(visual);
    if (visual.as<FltVisualCopies>() != nullptr)
        return makeCopies(visual);
    if (visual.as<FltVisualScale>() != nullptr)
        return makeScale(visual);
    if (visual.as<FltVisualLight>() != nullptr)
        return makeLight(visual);
    if (auto const* const file = visual.as<FltVisualFile>())
        return SoNodeRef<SoNode>(fileNode(file->path));
    return makeGroup(visual, new SoSeparator);
}

/// Notes the name and the record of a node.
void FltSceneMaker::name(SoNode* node, FltVisualNode const& visual)
{
    scene.names.add(node, visual.name);
    scene.records.add(node, visual.record);
}

/// Adds what stands before the children and meshes of a group.
void FltSceneMaker::begin(FltVisualNode const& visual, SoGroup& group)
{
    name(&group, visual);
    if (SoInfo* const whole = SoNodeName::infoOf(visual.name))
        group.addChild(whole);
    if (auto const* const joint = visual.as<FltVisualJoint>())
        addJoint(*joint, group);
    if (auto const* const level = visual.as<FltVisualLevel>())
        group.addChild(info(FltNodeInfos::describe(*level)));
    if (auto const* const choice = visual.as<FltVisualSwitch>())
        group.addChild(info(FltNodeInfos::describe(*choice)));
    for (std::string const& comment : visual.comments)
        group.addChild(info(comment));
    for (SbMatrix const& matrix : visual.transform)
        group.addChild(transformBy(matrix));
}

SoNodeRef<SoNode> FltSceneMaker::makeGroup(FltVisualNode& visual, SoGroup* group)
{
    SoNodeRef<SoNode> made(group);
    begin(visual, *group);
    if (auto const* const text = visual.as<FltVisualText>())
        group->addChild(FltTextNodes::make(*text));
    addChildren(visual, *group);
    addMeshes(visual, *group);
    return made;
}

void FltSceneMaker::addChildren(FltVisualNode& visual, SoGroup& group)
{
    for (std::shared_ptr<FltVisualNode>& child : visual.children)
        group.addChild(nodeOf(child).get());
}

void FltSceneMaker::addMeshes(FltVisualNode& visual, SoGroup& group)
{
    for (FltMesh& mesh : visual.meshes) {
        group.addChild(FltMeshNodes::make(mesh, appearances));
        if (!keepsVisual)
            mesh = FltMesh();
    }
}

void FltSceneMaker::addJoint(FltVisualJoint const& joint, SoGroup& group)
{
    FltSceneJoint moved;
    static_cast<FltDegreeOfFreedom&>(moved) = joint;
    moved.number = joint.number;
    moved.node = &group;
    moved.transform = SoNodeRef<SoTransform>(new SoTransform);
    moved.apply();
    group.addChild(info(FltNodeInfos::describe(joint)));
    if (joint.frame)
        group.addChild(transformBy(*joint.frame));
    group.addChild(moved.transform.get());
    if (joint.frame)
        group.addChild(transformBy(joint.frame->inverse()));
    scene.names.add(moved.transform.get(), joint.name);
    scene.joints.push_back(std::move(moved));
}

/// Each child has a door. A child stands in a plain group, so that a light shines out of it.
SoNodeRef<SoNode> FltSceneMaker::makeSwitch(FltVisualNode& visual)
{
    auto* const group = new SoSeparator;
    SoNodeRef<SoNode> made(group);
    begin(visual, *group);
    FltSceneSwitch choice;
    static_cast<FltVisualSwitch&>(choice) = *visual.as<FltVisualSwitch>();
    choice.node = group;
    for (std::shared_ptr<FltVisualNode>& child : visual.children) {
        auto* const door = new SoSwitch;
        choice.doors.emplace_back(door);
        door->whichChild = choice.shownBy(choice.doors.size() - 1);
        if (child != nullptr && child->as<FltVisualLight>() != nullptr)
            door->addChild(nodeOf(child).get());
        else if (child != nullptr)
            door->addChild(makeGroup(*child, new SoGroup).get());
        group->addChild(door);
    }
    scene.switches.push_back(std::move(choice));
    return made;
}

SoNodeRef<SoNode> FltSceneMaker::makeLevels(FltVisualNode& visual)
{
    auto* const lod = new SoLOD;
    SoNodeRef<SoNode> made(lod);
    FltVisualLevels const& levels = *visual.as<FltVisualLevels>();
    for (std::shared_ptr<FltVisualNode>& child : visual.children)
        lod->addChild(child != nullptr ? nodeOf(child).get() : info("nothing"));
    for (std::size_t i = 0; i < levels.distances.size(); ++i)
        lod->range.set1Value(static_cast<int>(i), static_cast<float>(levels.distances[i]));
    if (levels.center)
        lod->center = *levels.center;
    return made;
}

/// The toolkit's billboard turns its local z towards the eye, about its y axis or about its origin, and
/// databases have z up.
SoNodeRef<SoNode> FltSceneMaker::makeTurning(FltVisualNode& visual)
{
    FltVisualTurning const& turning = *visual.as<FltVisualTurning>();
    auto* const group = new SoSeparator;
    SoNodeRef<SoNode> made(group);
    scene.records.add(group, visual.record);
    auto* const place = new SoTranslation;
    place->translation.setValue(static_cast<float>(turning.foot[0]), static_cast<float>(turning.foot[1]),
                                static_cast<float>(turning.foot[2]));
    group->addChild(place);
    group->addChild(turnAboutX(quarterTurn));
    auto* const billboard = new SoVRMLBillboard;
    billboard->axisOfRotation = turning.isAboutPoint ? SbVec3f(0, 0, 0) : SbVec3f(0, 1, 0);
    group->addChild(billboard);
    auto* const content = new SoSeparator;
    billboard->addChild(content);
    content->addChild(turnAboutX(-quarterTurn));
    addMeshes(visual, *content);
    return made;
}

SoNodeRef<SoNode> FltSceneMaker::makeCopies(FltVisualNode& visual)
{
    auto* const copies = new SoMultipleCopy;
    SoNodeRef<SoNode> made(copies);
    std::vector<SbMatrix> const& places = visual.as<FltVisualCopies>()->places;
    copies->matrix.setValues(0, static_cast<int>(places.size()), places.data());
    addChildren(visual, *copies);
    return made;
}

SoNodeRef<SoNode> FltSceneMaker::makeScale(FltVisualNode& visual)
{
    auto* const group = new SoSeparator;
    SoNodeRef<SoNode> made(group);
    scene.records.add(group, visual.record);
    auto* const scale = new SoScale;
    auto const factor = static_cast<float>(visual.as<FltVisualScale>()->factor);
    scale->scaleFactor.setValue(factor, factor, factor);
    group->addChild(scale);
    addChildren(visual, *group);
    return made;
}

/// A light has no children: where its name is cut, a group bears that name, and holds it whole.
SoNodeRef<SoNode> FltSceneMaker::makeLight(FltVisualNode& visual)
{
    SoNodeRef<SoNode> light(FltLightNodes::make(*visual.as<FltVisualLight>()));
    SoNodeRef<SoInfo> const whole(SoNodeName::infoOf(visual.name));
    if (whole.get() == nullptr) {
        name(light.get(), visual);
        return light;
    }
    auto* const group = new SoGroup;
    SoNodeRef<SoNode> made(group);
    group->addChild(whole.get());
    group->addChild(light.get());
    name(group, visual);
    return made;
}

#include "scene/FltSceneMaker.h"

#include "scene/FltHiddenNode.h"
#include "scene/FltLightNodes.h"
#include "scene/FltMatrixNodes.h"
#include "scene/FltMeshNodes.h"
#include "scene/FltNodeInfos.h"
#include "scene/FltSceneCaching.h"
#include "scene/FltTextNodes.h"
#include "toolkit/SoNodeName.h"
#include "toolkit/SoSilentField.h"
#include "visual/FltMirrors.h"
#include "visual/FltNodeMatrix.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/nodes/SoEnvironment.h>
#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoRotation.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoTranslation.h>
#include <algorithm>
#include <cstddef>
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

/// What is drawn of levels where one of them is: it, and coarser ones that stay.
SoNode* levelFrom(std::vector<SoNodeRef<SoNode>> const& levels, std::size_t first, std::size_t end)
{
    end = std::min(end, levels.size());
    if (first + 1 == end)
        return levels[first].get();
    auto* const group = new SoGroup;
    for (std::size_t i = end; i > first; --i) // the coarsest first
        group->addChild(levels[i - 1].get());
    return group;
}

/// All that a scene holds stands at a place.
void placeFirst(SoSeparator& root, SbVec3d const& place)
{
    SoNodeRef<SoGroup> const first(new SoGroup);
    FltMatrixNodes::addTranslation(*first, place);
    if (first->getNumChildren() > 0)
        root.insertChild(first->getChild(0), 0);
}

/// A node that stands at a place.
SoNodeRef<SoNode> placed(SoNodeRef<SoNode> const& node, SbVec3d const& place)
{
    if (place == SbVec3d(0, 0, 0))
        return node;
    auto* const group = new SoSeparator;
    SoNodeRef<SoNode> made(group);
    FltMatrixNodes::addTranslation(*group, place);
    group->addChild(node.get());
    return made;
}

/// The nodes that hosts change.
std::unordered_set<SoNode const*> changingNodes(FltMadeScene const& scene)
{
    std::unordered_set<SoNode const*> nodes;
    for (FltSceneSwitch const& each : scene.switches)
        for (SoNodeRef<SoSwitch> const& door : each.doors)
            nodes.insert(door.get());
    for (FltSceneJoint const& joint : scene.joints)
        nodes.insert(joint.transform.get());
    return nodes;
}

/// Puts the list of what was numbered while it was read into that order.
template <class Part>
void sortByNumber(std::vector<Part>& parts)
{
    std::sort(parts.begin(), parts.end(),
              [](Part const& left, Part const& right) { return left.number < right.number; });
}

} // namespace

/// What is made while it lives stands in a mirror more, if it is one.
class FltSceneMaker::Turned
{
public:
    Turned(FltSceneMaker& maker, bool isMirror) : maker(maker), before(maker.isMirrored)
    {
        maker.isMirrored = before != isMirror;
    }

    /// What stands in a node, which is made in the present sense for the only time.
    Turned(FltSceneMaker& maker, FltVisualNode& node) : Turned(maker, FltMirrors::isMirror(node))
    {
        if (!maker.keepsVisual)
            node.senses.in(before) = false;
    }

    ~Turned() { maker.isMirrored = before; }
    Turned(Turned const&) = delete;
    Turned& operator=(Turned const&) = delete;

private:
    FltSceneMaker& maker;
    bool before;
};

FltMadeScene FltSceneMaker::make(std::shared_ptr<FltVisualNode> root, std::vector<FltTexture> const& textures,
                                 double metresPerUnit)
{
    std::shared_ptr<FltVisualNode> const givenAway = std::move(root);
    return FltSceneMaker(*givenAway, textures, metresPerUnit, false).madeOf(*givenAway);
}

FltMadeScene FltSceneMaker::makeOfKept(std::shared_ptr<FltVisualNode const> const& root,
                                       std::vector<FltTexture> const& textures, double metresPerUnit)
{
    return FltSceneMaker(*root, textures, metresPerUnit, true)
        .madeOf(*std::const_pointer_cast<FltVisualNode>(root));
}

FltMadeScene FltSceneMaker::madeOf(FltVisualNode& root)
{
    SoNodeRef<SoNode> const node = makeNode(root);
    scene.root = SoNodeRef<SoSeparator>(static_cast<SoSeparator*>(node.get()));
    placeFirst(*scene.root, localZeros.of(root, {0, 0, 0}).around);
    scene.names.add(scene.root.get(), "root");
    scene.records.finish();
    sortByNumber(scene.switches);
    sortByNumber(scene.joints);
    sortByNumber(scene.flipBooks);
    FltSceneCaching::arrange(*scene.root, changingNodes(scene));
    return std::move(scene);
}

/// Whether a part of the visual is needed no more.
bool FltSceneMaker::isUsedUp(FltVisualNode const& visual) const
{
    return !keepsVisual && !visual.senses.isStraight && !visual.senses.isMirrored;
}

/// The entry of a switch, joint or flip-book, of which both forms have one.
template <class Part>
Part& FltSceneMaker::entryOf(std::vector<Part>& list, FltVisualNode const& visual)
{
    auto const [known, isNew] = entries.try_emplace(&visual, list.size());
    if (isNew)
        list.emplace_back();
    return list[known->second];
}

/// The node of a child, which the parent gives away as soon as it isn't needed any more.
SoNodeRef<SoNode> FltSceneMaker::nodeOf(std::shared_ptr<FltVisualNode>& child)
{
    bool const isShared = child.use_count() > 1;
    SbVec3d const way = wayTo(*child);
    SoNodeRef<SoNode> node = isShared ? sharedNodeOf(child) : makeNode(*child);
    // A part that others have used up is still to be found here when this place comes again in a mirror.
    if (!isShared && isUsedUp(*child))
        child.reset();
    return placed(node, way);
}

/// From the zero of what is being made to the one that a node in it counts from.
SbVec3d FltSceneMaker::wayTo(FltVisualNode const& child) const
{
    return localZeros.of(child, zeros.inside).around - zeros.inside;
}

SoNodeRef<SoNode> FltSceneMaker::sharedNodeOf(std::shared_ptr<FltVisualNode> const& visual)
{
    Shared& shared = sharedNodes[visual.get()];
    shared.visual = visual;
    SoNodeRef<SoNode>& form = shared.forms[isMirrored ? 1 : 0];
    if (form.get() == nullptr)
        form = makeNode(*visual);
    return form;
}

/// Calls a function that makes the node of a visual, which counts from the visual's zeros.
template <class Make>
SoNodeRef<SoNode> FltSceneMaker::makeInZerosOf(FltVisualNode const& visual, Make make)
{
    FltLocalZeros::Zeros const outer = zeros;
    zeros = localZeros.of(visual, outer.inside);
    SoNodeRef<SoNode> made = make();
    zeros = outer;
    return made;
}

SoNodeRef<SoNode> FltSceneMaker::makeNode(FltVisualNode& visual)
{
    SoNodeRef<SoNode> node = makeShownNode(visual);
    return visual.isHidden ? SoNodeRef<SoNode>(FltHiddenNode::around(node.get())) : node;
}

SoNodeRef<SoNode> FltSceneMaker::makeShownNode(FltVisualNode& visual)
{
    Turned const inside(*this, visual);
    return makeInZerosOf(visual, [&] { return makeByContent(visual); });
}

SoNodeRef<SoNode> FltSceneMaker::makeByContent(FltVisualNode& visual)
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
        addJoint(visual, *joint, group);
    if (auto const* const level = visual.as<FltVisualLevel>())
        group.addChild(info(FltNodeInfos::describe(*level)));
    if (auto const* const choice = visual.as<FltVisualSwitch>())
        group.addChild(info(FltNodeInfos::describe(*choice)));
    for (std::string const& comment : visual.comments)
        group.addChild(info(comment));
    addTransform(visual, group);
}

void FltSceneMaker::addTransform(FltVisualNode const& visual, SoGroup& group)
{
    if (!zeros.isOneMatrix)
        for (SbDPMatrix const& matrix : visual.transform)
            group.addChild(transformBy(SbMatrix(matrix)));
    else if (visual.as<FltVisualJoint>() == nullptr) // which has it already
        FltMatrixNodes::add(group, FltMatrixNodes::between(zeros, FltNodeMatrix::ofTransform(visual)));
}

SoNodeRef<SoNode> FltSceneMaker::makeGroup(FltVisualNode& visual, SoGroup* group)
{
    SoNodeRef<SoNode> made(group);
    begin(visual, *group);
    if (auto const* const text = visual.as<FltVisualText>())
        group->addChild(FltTextNodes::make(*text, zeros.inside));
    if (visual.as<FltVisualFlipBook>() != nullptr)
        addFlipBook(visual, *group);
    else
        addChildren(visual, *group);
    addMeshes(visual, *group);
    return made;
}

void FltSceneMaker::addChildren(FltVisualNode& visual, SoGroup& group)
{
    for (std::shared_ptr<FltVisualNode>& child : visual.children)
        group.addChild(nodeOf(child).get());
}

/// The nodes of children of which not all are drawn.
std::vector<SoNodeRef<SoNode>> FltSceneMaker::nodesOfChildren(FltVisualNode& visual)
{
    std::vector<SoNodeRef<SoNode>> nodes;
    nodes.reserve(visual.children.size());
    for (std::shared_ptr<FltVisualNode>& child : visual.children)
        nodes.push_back(child != nullptr ? nodeOf(child) : SoNodeRef<SoNode>(info("nothing")));
    return nodes;
}

void FltSceneMaker::addFlipBook(FltVisualNode& visual, SoGroup& group)
{
    std::vector<SoNodeRef<SoNode>> const frames = nodesOfChildren(visual);
    FltSceneFlipBook& book = entryOf(scene.flipBooks, visual);
    if (book.blinkers.empty())
        static_cast<FltVisualFlipBook&>(book) = *visual.as<FltVisualFlipBook>();
    group.addChild(book.addBlinker(frames));
}

/// A mesh that is alone in a separator needs none of its own.
void FltSceneMaker::addMeshes(FltVisualNode& visual, SoGroup& group)
{
    bool const isAlone = visual.meshes.size() == 1 && !visual.meshes.front().isHidden &&
                         visual.children.empty() && visual.as<FltVisualText>() == nullptr &&
                         group.isOfType(SoSeparator::getClassTypeId());
    auto const arrays = isUsedUp(visual) ? FltMeshNodes::Arrays::freed : FltMeshNodes::Arrays::kept;
    for (FltMesh& mesh : visual.meshes) {
        SoGroup* own = &group;
        if (isAlone)
            FltMeshNodes::addTo(group, mesh, arrays, appearances, isMirrored, zeros.inside);
        else
            group.addChild(own = FltMeshNodes::make(mesh, arrays, appearances, isMirrored, zeros.inside));
        scene.records.addShape(own->getChild(own->getNumChildren() - 1), mesh.parts);
        if (isUsedUp(visual))
            mesh = FltMesh();
    }
}

void FltSceneMaker::addJoint(FltVisualNode const& visual, FltVisualJoint const& joint, SoGroup& group)
{
    SbDPMatrix const frame = joint.frame.value_or(SbDPMatrix::identity());
    auto& moved = entryOf(scene.joints, visual);
    if (moved.nodes.empty()) {
        static_cast<FltDegreeOfFreedom&>(moved) = joint;
        moved.number = joint.number;
        moved.transform = SoNodeRef<SoTransform>(new SoTransform);
        moved.apply();
        scene.names.add(moved.transform.get(), joint.name);
    }
    moved.nodes.push_back(&group);
    group.addChild(info(FltNodeInfos::describe(joint)));
    if (zeros.isOneMatrix)
        FltMatrixNodes::add(group, frame * FltNodeMatrix::by(-zeros.around));
    else if (joint.frame)
        group.addChild(transformBy(SbMatrix(frame)));
    group.addChild(moved.transform.get());
    if (zeros.isOneMatrix)
        FltMatrixNodes::add(group, FltNodeMatrix::by(zeros.inside) * FltNodeMatrix::ofTransform(visual) *
                                       frame.inverse());
    else if (joint.frame)
        group.addChild(transformBy(SbMatrix(frame).inverse()));
}

/// Each child has a door. A child stands in a plain group, so that a light shines out of it.
SoNodeRef<SoNode> FltSceneMaker::makeSwitch(FltVisualNode& visual)
{
    auto* const group = new SoSeparator;
    SoNodeRef<SoNode> made(group);
    begin(visual, *group);
    FltSceneSwitch own;
    static_cast<FltVisualSwitch&>(own) = *visual.as<FltVisualSwitch>();
    for (std::shared_ptr<FltVisualNode>& child : visual.children) {
        auto* const door = new SoSwitch;
        own.doors.emplace_back(door);
        door->whichChild = own.shownBy(own.doors.size() - 1);
        if (child != nullptr && child->as<FltVisualLight>() != nullptr) {
            door->addChild(nodeOf(child).get());
        } else if (child != nullptr) {
            Turned const inside(*this, *child);
            door->addChild(makeInZerosOf(*child, [&] { return makeGroup(*child, new SoGroup); }).get());
        }
        group->addChild(door);
    }
    auto& choice = entryOf(scene.switches, visual);
    own.nodes = std::move(choice.nodes);
    own.nodes.push_back(group);
    own.doors.insert(own.doors.begin(), choice.doors.begin(), choice.doors.end());
    choice = std::move(own);
    return made;
}

SoNodeRef<SoNode> FltSceneMaker::makeLevels(FltVisualNode& visual)
{
    auto* const lod = new SoLOD;
    SoNodeRef<SoNode> made(lod);
    FltVisualLevels const& levels = *visual.as<FltVisualLevels>();
    std::vector<SoNodeRef<SoNode>> const nodes = nodesOfChildren(visual);
    for (std::size_t i = 0; i < nodes.size(); ++i)
        lod->addChild(levelFrom(nodes, i, levels.endOfDrawn(i)));
    for (std::size_t i = 0; i < levels.distances.size(); ++i)
        lod->range.set1Value(static_cast<int>(i), static_cast<float>(levels.distances[i]));
    if (levels.center)
        lod->center = SbVec3f(SbVec3d(*levels.center) - zeros.inside);
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
    place->translation = SbVec3f(turning.foot - zeros.around);
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

/// Copies that stand in a mirror, and those that don't, are of another form each. In a mirror around all of
/// them the two change their places, so both are kept.
SoNodeRef<SoNode> FltSceneMaker::makeCopies(FltVisualNode& visual)
{
    std::array<std::vector<SbDPMatrix>, 2> places;
    for (SbDPMatrix const& place : visual.as<FltVisualCopies>()->places)
        places[FltMirrors::isMirror(place) ? 1 : 0].push_back(place);
    auto* const group = new SoGroup;
    SoNodeRef<SoNode> both(group);
    for (bool const isMirror : {false, true}) {
        std::vector<SbDPMatrix> const& present = places[isMirror ? 1 : 0];
        if (present.empty())
            continue;
        Turned const inside(*this, isMirror);
        SoNodeRef<SoNode> copies = makeCopies(visual, present);
        if (places[isMirror ? 0 : 1].empty())
            return copies;
        group->addChild(copies.get());
    }
    return both;
}

SoNodeRef<SoNode> FltSceneMaker::makeCopies(FltVisualNode& visual, std::vector<SbDPMatrix> const& places)
{
    auto* const copies = new SoMultipleCopy;
    SoNodeRef<SoNode> made(copies);
    std::vector<SbMatrix> matrices;
    matrices.reserve(places.size());
    for (SbDPMatrix const& place : places)
        matrices.emplace_back(FltMatrixNodes::between(zeros, place));
    copies->matrix.setValues(0, static_cast<int>(matrices.size()), matrices.data());
    for (std::shared_ptr<FltVisualNode> const& child : visual.children)
        copies->addChild(placed(sharedNodeOf(child), wayTo(*child)).get());
    return made;
}

SoNodeRef<SoNode> FltSceneMaker::makeScale(FltVisualNode& visual)
{
    auto* const group = new SoSeparator;
    SoNodeRef<SoNode> made(group);
    scene.records.add(group, visual.record);
    auto* const scale = new SoScale;
    double const exact = visual.as<FltVisualScale>()->factor;
    auto const factor = static_cast<float>(exact);
    scale->scaleFactor.setValue(factor, factor, factor);
    group->addChild(scale);
    if (zeros.isOneMatrix)
        FltMatrixNodes::addTranslation(*group, zeros.inside - zeros.around / exact);
    double const above = worldPerUnit;
    worldPerUnit *= exact;
    addChildren(visual, *group);
    worldPerUnit = above;
    return made;
}

/// A light has no children: where its name is cut, a group bears that name, and holds it whole. How one light
/// fades counts for it alone: what comes after it has the toolkit's own way.
SoNodeRef<SoNode> FltSceneMaker::makeLight(FltVisualNode& visual)
{
    FltVisualLight const& values = *visual.as<FltVisualLight>();
    SoNodeRef<SoNode> light(FltLightNodes::make(values, zeros.inside));
    SoNodeRef<SoInfo> const whole(SoNodeName::infoOf(visual.name));
    SoNodeRef<SoEnvironment> const fading(FltLightNodes::fadingOf(values, worldPerUnit));
    bool const isNamedWhole = whole.get() == nullptr;
    if (isNamedWhole && fading.get() == nullptr) {
        name(light.get(), visual);
        return light;
    }
    auto* const group = new SoGroup;
    SoNodeRef<SoNode> made(group);
    name(isNamedWhole ? light.get() : group, visual);
    if (!isNamedWhole)
        group->addChild(whole.get());
    if (fading.get() != nullptr)
        group->addChild(fading.get());
    group->addChild(light.get());
    if (fading.get() != nullptr)
        group->addChild(new SoEnvironment);
    return made;
}

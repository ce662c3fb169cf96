#include "globe/FltGlobeNodes.h"

#include "toolkit/StackSpace.h"
#include "visual/FltNodeCopy.h"
#include "visual/FltNodeMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{

using Node = FltGlobeNodes::Node;

constexpr std::size_t stackForALevel = std::size_t(16) << 10;

/// Whether a matrix but changes the unit.
bool isUnit(SbDPMatrix const& matrix)
{
    constexpr double lastBits = 1e-9;
    double const scale = matrix[0][0];
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 3; ++column)
            if (std::abs(matrix[row][column] - (row == column ? scale : 0)) > lastBits * std::abs(scale))
                return false;
    return scale > 0;
}

/// Whether nothing in a node can be bent: it moves, turns, has places of its own, or nobody knows it.
bool isStiff(FltVisualNode const& node)
{
    return node.as<FltVisualJoint>() != nullptr || node.as<FltVisualTurning>() != nullptr ||
           node.as<FltVisualText>() != nullptr || node.as<FltVisualFile>() != nullptr;
}

SbDPMatrix affine(SbDPMatrix matrix)
{
    FltNodeMatrix::makeAffine(matrix);
    return matrix;
}

SbVec3d pointAt(SbVec3d const& point, SbDPMatrix const& matrix)
{
    SbVec3d result;
    matrix.multVecMatrix(point, result);
    return result;
}

/// A node with the names of another one. Nothing around it is a mirror: what was, is worked in.
Node namedLike(FltVisualNode const& from)
{
    Node node = FltNodeCopy::namedLike(from);
    node->senses.isStraight = true;
    return node;
}

/// Whether a node but leads to one other: what that stands in can stand in it.
bool leadsOn(FltVisualNode const& node)
{
    return std::holds_alternative<std::monostate>(node.content) && node.meshes.empty() &&
           node.children.size() == 1 && node.children.front() != nullptr;
}

} // namespace

Node FltGlobeNodes::placed(Node const& node)
{
    return place(node, SbDPMatrix::identity(), {});
}

/// Whether a node comes from elsewhere: from another file, or as an instance.
/// @param above the record of the node around it
bool FltGlobeNodes::isFromElsewhere(Node const& node, Record const& above)
{
    Record const& own = node->record;
    bool const isOfRecord = own.offset != Record::none && above.offset != Record::none;
    bool const isOther = isOfRecord && (own.file != above.file || own.offset < above.offset);
    return isOther || node.use_count() > 1 || node->as<FltVisualFile>() != nullptr;
}

/// @param above the record of the nearest node around it that has one
Node FltGlobeNodes::place(Node const& node, SbDPMatrix const& around, Record const& above)
{
    if (node == nullptr)
        return nullptr;
    if (!StackSpace::holds(stackForALevel)) {
        ++deep;
        return nullptr;
    }
    Record const& nearest = node->record.offset != Record::none ? node->record : above;
    if (node->as<FltVisualCopies>() != nullptr)
        return stoodCopies(*node, around, nearest);
    // What comes from elsewhere in the coordinates of the database, such as a tile of its terrain, is no
    // model.
    bool const isModel = isFromElsewhere(node, above) && !isUnit(around);
    if (isModel || isStiff(*node))
        return stood(node, around, isModel);
    if (node.use_count() == 1)
        return bent(*node, around, nearest);
    // What stands at several places and is no model is in a matrix that but changes the unit.
    auto const [place, isNew] = known.try_emplace({node.get(), around[0][0]});
    if (isNew) {
        Node made = bent(*node, around, nearest);
        place->second = std::move(made);
    }
    return place->second;
}

/// A node whose matrices are worked into what stands in it.
/// @param above its record, or that around it
Node FltGlobeNodes::bent(FltVisualNode const& from, SbDPMatrix const& around, Record const& above)
{
    SbDPMatrix const inside = affine(FltNodeMatrix::of(from)) * around;
    Node node = namedLike(from);
    takeContent(from, inside, *node);
    node->children.reserve(from.children.size());
    for (Node const& child : from.children)
        node->children.push_back(place(child, inside, above));
    if (leadsOn(from) && leadsOn(*node)) {
        Node const stand = node->children.front();
        bool const isStand = stand->name.empty() && stand->transform.size() == 1 &&
                             stand->children.size() == 1 && stand->children.front() == from.children.front();
        if (isStand) {
            node->transform = stand->transform;
            node->children = stand->children;
        }
    }
    bool const isChosen = from.as<FltVisualSwitch>() != nullptr || from.as<FltVisualFlipBook>() != nullptr ||
                          from.as<FltVisualLevels>() != nullptr;
    if (!isChosen)
        node->children.erase(std::remove(node->children.begin(), node->children.end(), nullptr),
                             node->children.end());
    for (FltMesh const& mesh : from.meshes)
        node->meshes.push_back(meshes.placed(mesh, inside));
    return node;
}

void FltGlobeNodes::takeContent(FltVisualNode const& from, SbDPMatrix const& inside, FltVisualNode& node)
{
    FltNodeCopy::takeContent<FltVisualLevel, FltVisualSwitch, FltVisualFlipBook>(from, node);
    if (auto const* const light = from.as<FltVisualLight>())
        takeLight(*light, inside, node);
    if (auto const* const stored = from.as<FltVisualLevels>()) {
        FltVisualLevels& levels = node.become<FltVisualLevels>(*stored);
        for (double& distance : levels.distances)
            distance *= map.metresPerUnit();
        SbVec3d const center = pointAt(SbVec3d(stored->center.value_or(SbVec3f(0, 0, 0))), inside);
        levels.center = SbVec3f(map.placeOf(center).value_or(SbVec3d(0, 0, 0)));
    }
}

void FltGlobeNodes::takeLight(FltVisualLight const& from, SbDPMatrix const& inside, FltVisualNode& node)
{
    FltVisualLight light = from;
    bool const hasPlace = light.kind != FltVisualLight::Kind::infinite;
    SbVec3d const point = hasPlace ? light.position : SbVec3d(0, 0, 0);
    std::optional<SbDPMatrix> const stand = map.standOf(inside, point, true);
    lost += stand ? 0 : 1;
    if (stand) {
        light.position = pointAt(light.position, *stand);
        SbVec3d direction(light.direction);
        stand->multDirMatrix(direction, direction);
        if (direction.normalize() > 0)
            light.direction = SbVec3f(direction);
    }
    node.become<FltVisualLight>(light);
}

/// The point of a part that stands on the globe where the map has it, in the coordinates around the part. Of
/// a model this is its zero, unless it lies far from it.
SbVec3d FltGlobeNodes::middleOf(FltVisualNode const& node, bool isModel)
{
    SbVec3d zero(0, 0, 0);
    if (auto const* const text = node.as<FltVisualText>())
        zero = text->place;
    zero = isModel ? zero : pointAt(zero, affine(FltNodeMatrix::of(node)));
    SbBox3d const box = bounds.boxOf(node);
    if (box.isEmpty() || !std::isfinite(box.getSize().length()))
        return zero;
    return isModel && box.getCenter().length() <= box.getSize().length() ? zero : box.getCenter();
}

/// A node around another one, which brings it as a whole to where it stands.
Node FltGlobeNodes::stood(Node const& node, SbDPMatrix const& around, bool isModel)
{
    std::optional<SbDPMatrix> const stand = map.standOf(around, middleOf(*node, isModel), isModel);
    if (!stand) {
        ++lost;
        return nullptr;
    }
    auto result = std::make_shared<FltVisualNode>();
    result->senses.isStraight = true;
    result->transform = {*stand};
    result->children = {node};
    return result;
}

/// @param above the record of the node, or of the one around it
Node FltGlobeNodes::stoodCopies(FltVisualNode const& from, SbDPMatrix const& around, Record const& above)
{
    SbDPMatrix const inside = affine(FltNodeMatrix::of(from)) * around;
    Node node = namedLike(from);
    if (from.children.size() != 1 || from.children.front() == nullptr)
        return node;
    Node const& child = from.children.front();
    bool const isModel = isFromElsewhere(child, above);
    SbVec3d const middle = middleOf(*child, isModel);
    std::vector<SbDPMatrix> places;
    for (SbDPMatrix const& copy : from.as<FltVisualCopies>()->places) {
        std::optional<SbDPMatrix> const stand = map.standOf(affine(copy) * inside, middle, isModel);
        lost += stand ? 0 : 1;
        if (stand)
            places.push_back(*stand);
    }
    node->children = from.children;
    node->become<FltVisualCopies>({std::move(places)});
    return node;
}

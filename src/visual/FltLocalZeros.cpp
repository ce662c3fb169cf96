#include "visual/FltLocalZeros.h"

#include "visual/FltLocalOrigin.h"
#include "visual/FltNodeMatrix.h"

#include <Inventor/SbMatrix.h>
#include <algorithm>
#include <array>
#include <cmath>

namespace
{

/// A number of floats is so far off, in parts of itself, after a step.
constexpr double floatError = 1.0 / (1 << 24);

/// Numbers cancel each other if so little of them is left.
constexpr double leftOfCancelled = 0.125;

/// No database has such places.
constexpr double endless = 1e30;

/// Deeper down nothing has a zero of its own: each may be a node more on the way.
constexpr int deepest = 100;

bool isZero(SbVec3d const& place)
{
    return place == SbVec3d(0, 0, 0);
}

double largestOf(SbVec3d const& place)
{
    return std::max({std::abs(place[0]), std::abs(place[1]), std::abs(place[2])});
}

SbVec3d placed(SbVec3d const& place, SbDPMatrix const& matrix)
{
    SbVec3d result;
    matrix.multVecMatrix(place, result);
    return result;
}

SbVec3d placeOf(SbDPMatrix const& matrix)
{
    return {matrix[3][0], matrix[3][1], matrix[3][2]};
}

std::array<SbVec3d, 8> cornersOf(SbBox3d const& box)
{
    std::array<SbVec3d, 8> corners;
    for (unsigned i = 0; i < corners.size(); ++i)
        for (int axis = 0; axis < 3; ++axis)
            corners[i][axis] = ((i >> axis & 1U) != 0 ? box.getMax() : box.getMin())[axis];
    return corners;
}

bool isFinite(SbBox3d const& box)
{
    return largestOf(box.getMin()) < endless && largestOf(box.getMax()) < endless;
}

SbBox3d boxOf(FltMesh const& mesh)
{
    SbBox3d box;
    for (SbVec3f const& position : mesh.positions)
        box.extendBy(SbVec3d(position));
    if (box.isEmpty())
        return box;
    return {box.getMin() + mesh.origin, box.getMax() + mesh.origin};
}

/// Whether what stands in a node has coordinates of its own.
bool hasOwnCoordinates(FltVisualNode const& node)
{
    return !node.transform.empty() || node.as<FltVisualJoint>() != nullptr ||
           node.as<FltVisualTurning>() != nullptr || node.as<FltVisualScale>() != nullptr ||
           node.as<FltVisualCopies>() != nullptr;
}

/// Whether a matrix has an inverse that can be worked with: it doesn't flatten what is in it.
bool isRegular(SbDPMatrix const& matrix)
{
    constexpr double flattest = 1e-6;
    double const volume = std::abs(matrix.det3());
    double longest = 0;
    for (int row = 0; row < 3; ++row)
        longest = std::max(longest, SbVec3d(matrix[row][0], matrix[row][1], matrix[row][2]).length());
    return volume > flattest * longest * longest * longest;
}

/// A rotation that the toolkit makes of a quaternion isn't exact to the last bit.
bool keepsParallels(SbDPMatrix const& matrix)
{
    constexpr double lastBits = 1e-12;
    bool const isExact = matrix[3][3] == 1;
    return matrix[0][3] == 0 && matrix[1][3] == 0 && matrix[2][3] == 0 &&
           (isExact || (std::abs(matrix[3][3] - 1) < lastBits && isRegular(matrix)));
}

/// Whether nobody knows what is in a node, or it is seen in a perspective, which nothing may be moved in.
bool isClosed(FltVisualNode const& node)
{
    if (node.as<FltVisualFile>() != nullptr)
        return true;
    if (auto const* const copies = node.as<FltVisualCopies>())
        return !std::all_of(copies->places.begin(), copies->places.end(), keepsParallels);
    auto const* const scale = node.as<FltVisualScale>();
    bool const isNothing = scale != nullptr && scale->factor == 0;
    return isNothing || (hasOwnCoordinates(node) && !keepsParallels(FltNodeMatrix::of(node)));
}

double allowedIn(FltVisualNode const& node, double allowedAround)
{
    auto const* const scale = node.as<FltVisualScale>();
    return scale != nullptr ? allowedAround / std::abs(scale->factor) : allowedAround;
}

/// Whether matrices of a node cancel each other in floats.
bool hasCancellingMatrices(FltVisualNode const& node, double allowed)
{
    if (node.transform.size() < 2)
        return false;
    SbMatrix inFloats = SbMatrix::identity();
    for (SbDPMatrix const& matrix : node.transform)
        inFloats.multLeft(SbMatrix(matrix));
    SbVec3d const place = placeOf(FltNodeMatrix::ofTransform(node));
    SbVec3d const error = place - SbVec3d(SbVec3f(inFloats[3]));
    return largestOf(error) > std::max(allowed, 4 * floatError * largestOf(place));
}

/// Whether floats lose what is left of large numbers when a box is placed.
bool cancels(SbBox3d const& box, SbDPMatrix const& matrix, SbVec3d const& around, double allowed)
{
    double before = 0;
    double after = 0;
    SbBox3d placedBox;
    for (SbVec3d const& corner : cornersOf(box)) {
        SbVec3d turned;
        matrix.multDirMatrix(corner, turned);
        SbVec3d const place = placed(corner, matrix) - around;
        before = std::max(before, largestOf(turned));
        after = std::max(after, largestOf(place));
        placedBox.extendBy(place);
    }
    allowed = std::max(allowed, FltLocalOrigin::allowedPartOfExtent * largestOf(placedBox.getSize()));
    return before * floatError > allowed && after < leftOfCancelled * before;
}

} // namespace

FltLocalZeros::FltLocalZeros(FltVisualNode const& root, double metresPerUnit)
{
    double const allowed = FltLocalOrigin::allowedError(0, metresPerUnit);
    Part all;
    measure(root, true, allowed, all);
    if (isNeeded)
        choose(root, true, {0, 0, 0}, allowed, 0);
    insides.clear();
}

FltLocalZeros::Zeros FltLocalZeros::of(FltVisualNode const& node, SbVec3d const& around) const
{
    auto const found = chosen.find(&node);
    if (found == chosen.end())
        return {around, around, false};
    Zeros zeros = found->second;
    if (!found->second.isApart)
        zeros.around = around;
    return zeros;
}

/// Adds what a node holds to what is around it.
/// @param allowed how far rounding may move what is around it
void FltLocalZeros::measure(FltVisualNode const& node, bool isShared, double allowed, Part& around)
{
    if (!isShared && !hasOwnCoordinates(node) && !isClosed(node)) {
        measureInside(node, allowed, around);
        return;
    }
    auto known = insides.find(&node);
    if (known == insides.end()) {
        Part inside;
        measureInside(node, allowedIn(node, allowed), inside);
        known = insides.emplace(&node, inside).first;
        isNeeded = isNeeded || (!isClosed(node) && hasCancellingMatrices(node, allowed));
    }
    if (isClosed(node))
        return;
    Part const inside = known->second;
    if (auto const* const copies = node.as<FltVisualCopies>()) {
        for (SbDPMatrix const& place : copies->places)
            add(inside, place, allowed, around);
        return;
    }
    add(inside, FltNodeMatrix::of(node), allowed, around);
    auto const* const joint = inside.box.isEmpty() ? nullptr : node.as<FltVisualJoint>();
    if (joint != nullptr && joint->frame && FltLocalOrigin::errorOf(placeOf(*joint->frame)) > allowed) {
        around.far = placeOf(*joint->frame);
        isNeeded = true;
    }
}

void FltLocalZeros::measureInside(FltVisualNode const& node, double allowed, Part& part)
{
    for (FltMesh const& mesh : node.meshes) {
        SbBox3d const box = boxOf(mesh);
        if (!box.isEmpty())
            add({box, isZero(mesh.origin) ? std::nullopt : std::optional(mesh.origin)},
                SbDPMatrix::identity(), allowed, part);
    }
    if (auto const* const text = node.as<FltVisualText>()) {
        bool const isFar = FltLocalOrigin::errorOf(text->place) > allowed;
        add({{text->place, text->place}, isFar ? std::optional(text->place) : std::nullopt},
            SbDPMatrix::identity(), allowed, part);
    }
    for (std::shared_ptr<FltVisualNode> const& child : node.children)
        if (child != nullptr)
            measure(*child, child.use_count() > 1, allowed, part);
}

/// Adds a part that stands in a matrix. What floats hold after it isn't far any more.
void FltLocalZeros::add(Part const& part, SbDPMatrix const& matrix, double allowed, Part& around)
{
    if (part.box.isEmpty())
        return;
    for (SbVec3d const& corner : cornersOf(part.box))
        around.box.extendBy(placed(corner, matrix));
    SbVec3d const far = placed(part.far.value_or(SbVec3d(0, 0, 0)), matrix);
    if (part.far && largestOf(far) * floatError > allowed)
        around.far = far;
    if (FltLocalOrigin::errorOf(placeOf(matrix)) > allowed)
        around.far = placeOf(matrix);
    isNeeded = isNeeded || part.far || around.far || largestOf(around.box.getMax()) * floatError > allowed ||
               largestOf(around.box.getMin()) * floatError > allowed;
}

/// @param allowed how far rounding may move what is around the node
/// @param isApart whether it may have a zero of its own around it
void FltLocalZeros::choose(FltVisualNode const& node, bool isApart, SbVec3d const& around, double allowed,
                           int level)
{
    SbVec3d inner = around;
    if (isApart || hasOwnCoordinates(node)) {
        auto const [place, isNew] = chosen.try_emplace(&node);
        if (!isNew)
            return;
        Chosen& zeros = place->second;
        zeros.isApart = isApart;
        zeros.around = around;
        Part const& inside = insides[&node];
        auto const* const copies = node.as<FltVisualCopies>();
        SbDPMatrix const matrix =
            copies != nullptr && !copies->places.empty() ? copies->places.front() : FltNodeMatrix::of(node);
        bool const isKnown = level < deepest && !isClosed(node);
        if (isApart) {
            Part whole;
            add(inside, matrix, allowed, whole);
            zeros.around =
                isKnown ? zeroOf(whole, SbDPMatrix::identity(), around, allowed) : SbVec3d(0, 0, 0);
        }
        zeros.inside = zeros.around;
        if (hasOwnCoordinates(node))
            zeros.inside = isKnown && node.as<FltVisualTurning>() == nullptr
                               ? zeroOf(inside, matrix, zeros.around, allowed)
                               : SbVec3d(0, 0, 0);
        zeros.isOneMatrix = !isZero(zeros.around) || !isZero(zeros.inside) ||
                            (isKnown && hasCancellingMatrices(node, allowed));
        inner = zeros.inside;
    }
    bool const isInSwitch = node.as<FltVisualSwitch>() != nullptr;
    for (std::shared_ptr<FltVisualNode> const& child : node.children) {
        if (child == nullptr)
            continue;
        // Lights and the children of switches stand right in what is around them.
        bool const isChildApart = !isInSwitch && child->as<FltVisualLight>() == nullptr &&
                                  (child.use_count() > 1 || isClosed(*child));
        choose(*child, isChildApart, inner, allowedIn(node, allowed), level + 1);
    }
}

/// What a part counts from that stands in a matrix.
SbVec3d FltLocalZeros::zeroOf(Part const& part, SbDPMatrix const& matrix, SbVec3d const& around,
                              double allowed)
{
    if (part.box.isEmpty() || !isFinite(part.box) ||
        (!part.far && !cancels(part.box, matrix, around, allowed)))
        return {0, 0, 0};
    SbVec3d const center = FltLocalOrigin::roundedToFloats(part.box.getCenter());
    double const distance = largestOf(center);
    double const size = largestOf(part.box.getSize());
    if (distance <= size) {
        // Something astray near zero, and what is meant far away.
        bool const isAside = part.far && distance > size / 4;
        return isAside ? FltLocalOrigin::roundedToFloats(*part.far) : SbVec3d(0, 0, 0);
    }
    // The zero around it does for it, too, if it lies in it.
    SbVec3d const shared = placed(around, matrix.inverse());
    if (largestOf(shared) < endless && part.box.intersect(shared))
        return FltLocalOrigin::roundedToFloats(shared);
    return center;
}

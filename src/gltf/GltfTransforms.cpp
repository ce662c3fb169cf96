#include "gltf/GltfTransforms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace
{

/// What lies further off is no rounding of floats.
constexpr double shearSeen = 1e-6;

/// A scale that is so much smaller than another one of the same matrix flattens.
constexpr double flattest = 1e-9;

/// A scale that differs from 1 by so little is one.
constexpr double lastBits = 1e-12;

constexpr int mostSweeps = 40;

using Rows = std::array<SbVec3d, 3>;

Rows rowsOf(SbDPMatrix const& matrix)
{
    Rows rows;
    for (int i = 0; i < 3; ++i)
        rows[static_cast<std::size_t>(i)] = SbVec3d(matrix[i][0], matrix[i][1], matrix[i][2]);
    return rows;
}

double determinantOf(Rows const& rows)
{
    return rows[0].cross(rows[1]).dot(rows[2]);
}

bool isFlat(SbVec3d const& lengths)
{
    double const longest = std::max({lengths[0], lengths[1], lengths[2]});
    double const shortest = std::min({lengths[0], lengths[1], lengths[2]});
    return !(shortest > flattest * longest) || !(shortest > 0);
}

SbVec3d lengthsOf(Rows const& rows)
{
    return {rows[0].length(), rows[1].length(), rows[2].length()};
}

bool areUpright(Rows const& rows, SbVec3d const& lengths)
{
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (std::abs(rows[i].dot(rows[j])) >
                shearSeen * lengths[static_cast<int>(i)] * lengths[static_cast<int>(j)])
                return false;
    return true;
}

SbDPRotation rotationOf(Rows const& rows)
{
    SbDPMatrix matrix = SbDPMatrix::identity();
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            matrix[i][j] = rows[static_cast<std::size_t>(i)][j];
    SbDPRotation const rotation(matrix);
    double const* const q = rotation.getValue();
    double const sign = q[3] < 0 ? -1 : 1;
    return {sign * q[0], sign * q[1], sign * q[2], sign * q[3]}; // which makes it of length 1
}

/// A scale and then a rotation, of rows that stand upright on each other. A mirror turns the axis by which
/// least is left for the rotation to do.
GltfTransform scaledAndTurned(Rows rows, SbVec3d scale)
{
    for (std::size_t i = 0; i < 3; ++i)
        rows[i] /= scale[static_cast<int>(i)];
    if (determinantOf(rows) < 0) {
        std::size_t turned = 0;
        for (std::size_t const i : {1U, 2U})
            if (rows[i][static_cast<int>(i)] < rows[turned][static_cast<int>(turned)])
                turned = i;
        rows[turned] = -rows[turned];
        scale[static_cast<int>(turned)] *= -1;
    }
    GltfTransform transform;
    transform.rotation = rotationOf(rows);
    transform.scale = scale;
    return transform;
}

/// Turns pairs of rows until all stand upright on each other.
/// @return what turns them back
Rows straighten(Rows& rows)
{
    Rows turn = {SbVec3d(1, 0, 0), SbVec3d(0, 1, 0), SbVec3d(0, 0, 1)};
    for (int sweep = 0; sweep < mostSweeps; ++sweep) {
        bool isDone = true;
        for (auto const& [p, q] : {std::pair(0U, 1U), std::pair(0U, 2U), std::pair(1U, 2U)}) {
            double const a = rows[p].dot(rows[p]), b = rows[q].dot(rows[q]), c = rows[p].dot(rows[q]);
            constexpr double exact = 1e-15;
            if (!(std::abs(c) > exact * std::sqrt(a * b)))
                continue;
            isDone = false;
            double const zeta = (b - a) / (2 * c);
            double const tangent = std::copysign(1 / (std::abs(zeta) + std::hypot(1, zeta)), zeta);
            double const cosine = 1 / std::hypot(1, tangent);
            double const sine = cosine * tangent;
            for (Rows* const each : {&rows, &turn}) {
                SbVec3d const before = (*each)[p];
                (*each)[p] = before * cosine - (*each)[q] * sine;
                (*each)[q] = before * sine + (*each)[q] * cosine;
            }
        }
        if (isDone)
            break;
    }
    // The inverse of a rotation is its transpose.
    return {SbVec3d(turn[0][0], turn[1][0], turn[2][0]), SbVec3d(turn[0][1], turn[1][1], turn[2][1]),
            SbVec3d(turn[0][2], turn[1][2], turn[2][2])};
}

bool isOne(double scale)
{
    return std::abs(scale - 1) <= lastBits;
}

} // namespace

GltfTransforms::GltfTransforms(SbDPMatrix const& matrix)
{
    SbVec3d const translation(matrix[3][0], matrix[3][1], matrix[3][2]);
    Rows rows = rowsOf(matrix);
    if (rows == rowsOf(SbDPMatrix::identity())) {
        if (translation != SbVec3d(0, 0, 0))
            nodes.push_back({translation, SbDPRotation::identity(), SbVec3d(1, 1, 1)});
        return;
    }
    SbVec3d lengths = lengthsOf(rows);
    isSingular = isFlat(lengths);
    if (isSingular)
        return;
    if (areUpright(rows, lengths)) {
        nodes.push_back(scaledAndTurned(rows, lengths));
        nodes.front().translation = translation;
        return;
    }
    Rows const inner = straighten(rows);
    lengths = lengthsOf(rows);
    isSingular = isFlat(lengths);
    if (isSingular)
        return;
    nodes.push_back(scaledAndTurned(rows, lengths));
    nodes.front().translation = translation;
    nodes.push_back({SbVec3d(0, 0, 0), rotationOf(inner), SbVec3d(1, 1, 1)});
}

void GltfTransform::addTo(GltfJson& node) const
{
    if (translation != SbVec3d(0, 0, 0))
        node["translation"] = GltfValues::list(translation);
    double const* const q = rotation.getValue();
    if (std::abs(q[3]) < 1)
        node["rotation"] = {q[0] + 0.0, q[1] + 0.0, q[2] + 0.0, q[3] + 0.0};
    if (!isOne(scale[0]) || !isOne(scale[1]) || !isOne(scale[2]))
        node["scale"] = GltfValues::list(scale);
}

#include "visual/FltNodeMatrix.h"

#include "visual/FltJointMotion.h"

#include <cmath>

namespace
{

SbDPMatrix matrixOf(FltVisualTurning const& turning)
{
    auto const& [right, back, up] = turning.rows;
    SbVec3d const& foot = turning.foot;
    return {right[0], right[1], right[2], 0, back[0], back[1], back[2], 0,
            up[0],    up[1],    up[2],    0, foot[0], foot[1], foot[2], 1};
}

SbDPMatrix matrixOf(FltVisualJoint const& joint)
{
    SbDPMatrix const motion(FltJointMotion(joint).matrix());
    if (!joint.frame)
        return motion;
    return joint.frame->inverse() * motion * *joint.frame;
}

} // namespace

SbDPMatrix FltNodeMatrix::of(FltVisualNode const& node)
{
    SbDPMatrix matrix = ofTransform(node);
    if (auto const* const joint = node.as<FltVisualJoint>())
        matrix.multRight(matrixOf(*joint));
    if (auto const* const turning = node.as<FltVisualTurning>())
        matrix.multRight(matrixOf(*turning));
    if (auto const* const scale = node.as<FltVisualScale>()) {
        SbDPMatrix factor;
        factor.setScale(scale->factor);
        matrix.multRight(factor);
    }
    return matrix;
}

SbDPMatrix FltNodeMatrix::ofTransform(FltVisualNode const& node)
{
    SbDPMatrix matrix = SbDPMatrix::identity();
    for (SbDPMatrix const& transform : node.transform)
        matrix.multLeft(transform);
    return matrix;
}

bool FltNodeMatrix::makeAffine(SbDPMatrix& matrix)
{
    double const last = matrix[3][3];
    bool isAffine = last != 0;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            if (!std::isfinite(matrix[row][column])) {
                matrix = SbDPMatrix::identity();
                return false;
            }
            if (column < 3 && last != 0)
                matrix[row][column] /= last;
            if (column == 3 && row < 3 && matrix[row][column] != 0)
                isAffine = false;
        }
    for (int row = 0; row < 4; ++row)
        matrix[row][3] = row == 3 ? 1 : 0;
    return isAffine;
}

SbDPMatrix FltNodeMatrix::by(SbVec3d const& way)
{
    SbDPMatrix matrix;
    matrix.setTranslate(way);
    return matrix;
}

#include "model/FltTransformation.h"

#include "records/FltOpcode.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordTransformations.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SbVec3f.h>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr float radiansPerDegree = 0.017453292519943295F;

SbVec3f floats(double x, double y, double z)
{
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

SbMatrix matrixOf(AbstractMatrixRecord const& record)
{
    SbMat values;
    for (int row = 0; row < 4; ++row)
        std::copy(std::begin(record.matrix[row]), std::end(record.matrix[row]), values[row]);
    return SbMatrix(values);
}

SbMatrix translationBy(SbVec3f const& way)
{
    SbMatrix matrix;
    matrix.setTranslate(way);
    return matrix;
}

/// A matrix that acts around a point.
SbMatrix around(SbVec3f const& center, SbMatrix const& matrix)
{
    SbMatrix result = translationBy(-center);
    result.multRight(matrix);
    result.multRight(translationBy(center));
    return result;
}

SbMatrix rotationAround(SbVec3f const& center, SbVec3f axis, float degrees)
{
    if (axis.normalize() == 0)
        return SbMatrix::identity();
    SbMatrix rotation;
    rotation.setRotate(SbRotation(axis, degrees * radiansPerDegree));
    return around(center, rotation);
}

SbMatrix scaleAround(SbVec3f const& center, SbVec3f const& factors)
{
    SbMatrix scale;
    scale.setScale(factors);
    return around(center, scale);
}

/// The frame with an origin, a first axis towards a point, and a second one in the plane of another point.
SbMatrix frameOf(SbVec3f const& origin, SbVec3f const& align, SbVec3f const& track)
{
    SbVec3f x = align - origin;
    SbVec3f y = track - origin;
    SbVec3f z = x.cross(y);
    if (x.normalize() == 0 || z.normalize() == 0)
        return translationBy(origin);
    y = z.cross(x);
    return SbMatrix(x[0], x[1], x[2], 0, y[0], y[1], y[2], 0, z[0], z[1], z[2], 0, origin[0], origin[1],
                    origin[2], 1);
}

SbMatrix stepOf(FltRecordTranslate const& record)
{
    return translationBy(floats(record.deltaX, record.deltaY, record.deltaZ));
}

SbMatrix stepOf(FltRecordScaleNonUniform const& record)
{
    return scaleAround(floats(record.XCenter, record.YCenter, record.ZCenter),
                       {record.XScaleFactor, record.YScaleFactor, record.ZScaleFactor});
}

SbMatrix stepOf(FltRecordRotateAboutPoint const& record)
{
    return rotationAround(
        floats(record.XCenterOfRotation, record.YCenterOfRotation, record.ZCenterOfRotation),
        {record.IAxisOfRotation, record.JAxisOfRotation, record.KAxisOfRotation}, record.angleToRotate);
}

SbMatrix stepOf(FltRecordRotateAboutEdge const& record)
{
    SbVec3f const first = floats(record.XCenter1, record.YCenter1, record.ZCenter1);
    SbVec3f const second = floats(record.XCenter2, record.YCenter2, record.ZCenter2);
    return rotationAround(first, second - first, record.angleToRotate);
}

SbMatrix stepOf(FltRecordPutTransform const& record)
{
    SbMatrix result = frameOf(floats(record.XFromOrigin, record.YFromOrigin, record.ZFromOrigin),
                              floats(record.XFromAlign, record.YFromAlign, record.ZFromAlign),
                              floats(record.XFromTrack, record.YFromTrack, record.ZFromTrack))
                          .inverse();
    result.multRight(frameOf(floats(record.XToOrigin, record.YToOrigin, record.ZToOrigin),
                             floats(record.XToAlign, record.YToAlign, record.ZToAlign),
                             floats(record.XToTrack, record.YToTrack, record.ZToTrack)));
    return result;
}

bool isFinite(SbMatrix const& matrix)
{
    for (int i = 0; i < 16; ++i)
        if (!(std::abs(matrix[i / 4][i % 4]) < 1e30F))
            return false;
    return true;
}

} // namespace

FltTransformation::FltTransformation(FltModelTree const& tree, FltModelTree::Number number)
{
    FltRecordView const* const end = tree.ancillaryEnd(number);
    for (FltRecordView const* record = tree.ancillaryBegin(number); record != end; ++record) {
        if (record->opcode == FltOpcode::matrix) {
            SbMatrix const matrix = matrixOf(FltDecoded<FltRecordMatrix>(*record));
            if (isFinite(matrix))
                matrices.push_back(matrix);
        } else if (record->opcode == FltOpcode::replicate) {
            replications = FltDecoded<FltRecordReplicate>(*record).numberOfReplications;
        } else {
            takeStep(*record);
        }
    }
    // A matrix is all steps in one.
    if (matrices.empty() && hasSteps && isFinite(steps))
        matrices.push_back(steps);
    if (matrices.empty())
        replications = 0;
}

std::vector<SbMatrix> FltTransformation::placesOf(SbMatrix const& step, int copies)
{
    std::vector<SbMatrix> places;
    places.reserve(static_cast<std::size_t>(copies) + 1);
    SbMatrix place = SbMatrix::identity();
    for (int i = 0; i <= copies && isFinite(place); ++i) {
        places.push_back(place);
        place.multRight(step);
    }
    return places;
}

/// The steps act in their order.
void FltTransformation::takeStep(FltRecordView const& record)
{
    SbMatrix step;
    switch (record.opcode) {
    case FltOpcode::generalMatrix:
        step = matrixOf(FltDecoded<FltRecordGeneralMatrix>(record));
        break;
    case FltOpcode::translate:
        step = stepOf(FltDecoded<FltRecordTranslate>(record));
        break;
    case FltOpcode::scaleNonUniform:
        step = stepOf(FltDecoded<FltRecordScaleNonUniform>(record));
        break;
    case FltOpcode::rotateAboutPoint:
        step = stepOf(FltDecoded<FltRecordRotateAboutPoint>(record));
        break;
    case FltOpcode::rotateAboutEdge:
        step = stepOf(FltDecoded<FltRecordRotateAboutEdge>(record));
        break;
    case FltOpcode::putTransform:
        step = stepOf(FltDecoded<FltRecordPutTransform>(record));
        break;
    default:
        return;
    }
    steps.multRight(step);
    hasSteps = true;
}

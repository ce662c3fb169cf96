#include "model/FltTransformation.h"

#include "records/FltOpcode.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SbVec3f.h>
#include <cmath>

namespace
{

constexpr float radiansPerDegree = 0.017453292519943295F;

SbVec3f vectorAt(FltRecordView const& record, std::size_t at)
{
    return {static_cast<float>(record.doubleAt(at)), static_cast<float>(record.doubleAt(at + 8)),
            static_cast<float>(record.doubleAt(at + 16))};
}

SbVec3f floatsAt(FltRecordView const& record, std::size_t at)
{
    return {record.floatAt(at), record.floatAt(at + 4), record.floatAt(at + 8)};
}

SbMatrix matrixAt(FltRecordView const& record, std::size_t at)
{
    SbMat values;
    for (std::size_t i = 0; i < 16; ++i)
        values[i / 4][i % 4] = record.floatAt(at + 4 * i);
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

SbMatrix putOf(FltRecordView const& record)
{
    SbMatrix result = frameOf(vectorAt(record, 8), vectorAt(record, 32), vectorAt(record, 56)).inverse();
    result.multRight(frameOf(vectorAt(record, 80), vectorAt(record, 104), vectorAt(record, 128)));
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
            SbMatrix const matrix = matrixAt(*record, 4);
            if (isFinite(matrix))
                matrices.push_back(matrix);
        } else if (record->opcode == FltOpcode::replicate) {
            replications = record->int32At(4);
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
        step = matrixAt(record, 4);
        break;
    case FltOpcode::translate:
        step = translationBy(vectorAt(record, 32));
        break;
    case FltOpcode::scaleNonUniform:
        step = scaleAround(vectorAt(record, 8), floatsAt(record, 32));
        break;
    case FltOpcode::rotateAboutPoint:
        step = rotationAround(vectorAt(record, 8), floatsAt(record, 32), record.floatAt(44));
        break;
    case FltOpcode::rotateAboutEdge:
        step = rotationAround(vectorAt(record, 8), vectorAt(record, 32) - vectorAt(record, 8),
                              record.floatAt(56));
        break;
    case FltOpcode::putTransform:
        step = putOf(record);
        break;
    default:
        return;
    }
    steps.multRight(step);
    hasSteps = true;
}

#include "model/FltTransformation.h"

#include "records/FltOpcode.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordTransformations.h"

#include <Inventor/SbDPRotation.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

/// What steps are worked out in.
struct Floats {
    using Number = float;
    using Place = SbVec3f;
    using Rotation = SbRotation;
    using Matrix = SbMatrix;
    static constexpr Number radiansPerDegree = 0.017453292519943295F;
};
struct Doubles {
    using Number = double;
    using Place = SbVec3d;
    using Rotation = SbDPRotation;
    using Matrix = SbDPMatrix;
    static constexpr Number radiansPerDegree = 0.017453292519943295;
};

template <class In, class Number>
typename In::Place place(Number x, Number y, Number z)
{
    return {static_cast<typename In::Number>(x), static_cast<typename In::Number>(y),
            static_cast<typename In::Number>(z)};
}

SbMatrix matrixOf(AbstractMatrixRecord const& record)
{
    SbMat values;
    for (int row = 0; row < 4; ++row)
        std::copy(std::begin(record.matrix[row]), std::end(record.matrix[row]), values[row]);
    return SbMatrix(values);
}

template <class In>
typename In::Matrix translationBy(typename In::Place const& way)
{
    typename In::Matrix matrix;
    matrix.setTranslate(way);
    return matrix;
}

/// A matrix that acts around a point.
template <class In>
typename In::Matrix around(typename In::Place const& center, typename In::Matrix const& matrix)
{
    typename In::Matrix result = translationBy<In>(-center);
    result.multRight(matrix);
    result.multRight(translationBy<In>(center));
    return result;
}

template <class In>
typename In::Matrix rotationAround(typename In::Place const& center, typename In::Place axis, float degrees)
{
    if (axis.normalize() == 0)
        return In::Matrix::identity();
    typename In::Matrix rotation;
    rotation.setRotate(typename In::Rotation(axis, degrees * In::radiansPerDegree));
    return around<In>(center, rotation);
}

/// The frame with an origin, a first axis towards a point, and a second one in the plane of another point.
template <class In>
typename In::Matrix frameOf(typename In::Place const& origin, typename In::Place const& align,
                            typename In::Place const& track)
{
    typename In::Place x = align - origin;
    typename In::Place y = track - origin;
    typename In::Place z = x.cross(y);
    if (x.normalize() == 0 || z.normalize() == 0)
        return translationBy<In>(origin);
    y = z.cross(x);
    return {x[0], x[1], x[2], 0, y[0],      y[1],      y[2],      0,
            z[0], z[1], z[2], 0, origin[0], origin[1], origin[2], 1};
}

template <class In>
typename In::Matrix stepOf(FltRecordGeneralMatrix const& record)
{
    return typename In::Matrix(matrixOf(record));
}

template <class In>
typename In::Matrix stepOf(FltRecordTranslate const& record)
{
    return translationBy<In>(place<In>(record.deltaX, record.deltaY, record.deltaZ));
}

template <class In>
typename In::Matrix stepOf(FltRecordScaleNonUniform const& record)
{
    typename In::Matrix scale;
    scale.setScale(place<In>(record.XScaleFactor, record.YScaleFactor, record.ZScaleFactor));
    return around<In>(place<In>(record.XCenter, record.YCenter, record.ZCenter), scale);
}

template <class In>
typename In::Matrix stepOf(FltRecordRotateAboutPoint const& record)
{
    return rotationAround<In>(
        place<In>(record.XCenterOfRotation, record.YCenterOfRotation, record.ZCenterOfRotation),
        place<In>(record.IAxisOfRotation, record.JAxisOfRotation, record.KAxisOfRotation),
        record.angleToRotate);
}

template <class In>
typename In::Matrix stepOf(FltRecordRotateAboutEdge const& record)
{
    auto const first = place<In>(record.XCenter1, record.YCenter1, record.ZCenter1);
    auto const second = place<In>(record.XCenter2, record.YCenter2, record.ZCenter2);
    return rotationAround<In>(first, second - first, record.angleToRotate);
}

template <class In>
typename In::Matrix stepOf(FltRecordPutTransform const& record)
{
    typename In::Matrix result =
        frameOf<In>(place<In>(record.XFromOrigin, record.YFromOrigin, record.ZFromOrigin),
                    place<In>(record.XFromAlign, record.YFromAlign, record.ZFromAlign),
                    place<In>(record.XFromTrack, record.YFromTrack, record.ZFromTrack))
            .inverse();
    result.multRight(frameOf<In>(place<In>(record.XToOrigin, record.YToOrigin, record.ZToOrigin),
                                 place<In>(record.XToAlign, record.YToAlign, record.ZToAlign),
                                 place<In>(record.XToTrack, record.YToTrack, record.ZToTrack)));
    return result;
}

bool isFinite(SbDPMatrix const& matrix)
{
    for (int i = 0; i < 16; ++i)
        if (!(std::abs(matrix[i / 4][i % 4]) < 1e30))
            return false;
    return true;
}

SbVec3d placeOf(SbDPMatrix const& matrix)
{
    return {matrix[3][0], matrix[3][1], matrix[3][2]};
}

double largestOf(SbVec3d const& sizes)
{
    return std::max({std::abs(sizes[0]), std::abs(sizes[1]), std::abs(sizes[2])});
}

} // namespace

FltTransformation::FltTransformation(FltModelTree const& tree, FltModelTree::Number number,
                                     double allowedError)
{
    for (FltRecordView const& record : tree.ancillaries(number)) {
        if (record.opcode == FltOpcode::matrix) {
            SbDPMatrix const matrix(matrixOf(FltDecoded<FltRecordMatrix>(record)));
            if (isFinite(matrix))
                matrices.push_back(matrix);
        } else if (record.opcode == FltOpcode::replicate) {
            replications = FltDecoded<FltRecordReplicate>(record).numberOfReplications;
        } else {
            takeStep(record);
        }
    }
    // A matrix is all steps in one, in floats.
    SbDPMatrix const matrix = steps.matrix(allowedError);
    if (hasSteps && isFinite(matrix)) {
        if (matrices.empty())
            matrices.push_back(matrix);
        else if (matrices.size() == 1 && steps.isRoundedTo(matrices[0]) &&
                 largestOf(placeOf(steps.exact) - placeOf(matrices[0])) > allowedError)
            matrices[0] = steps.exact;
    }
    if (matrices.empty())
        replications = 0;
}

std::vector<SbDPMatrix> FltTransformation::placesOf(SbDPMatrix const& step, int copies, double allowedError)
{
    std::vector<SbDPMatrix> places;
    places.reserve(static_cast<std::size_t>(copies) + 1);
    Steps place;
    for (int i = 0; i <= copies && isFinite(place.matrix(allowedError)); ++i) {
        places.push_back(place.matrix(allowedError));
        place.add(SbMatrix(step), step);
    }
    return places;
}

void FltTransformation::Steps::add(SbMatrix const& stepInFloats, SbDPMatrix const& step)
{
    inFloats.multRight(stepInFloats);
    exact.multRight(step);
}

SbVec3d FltTransformation::Steps::error() const
{
    return placeOf(exact) - placeOf(SbDPMatrix(inFloats));
}

/// All steps in one, in floats as long as those aren't too far off.
SbDPMatrix FltTransformation::Steps::matrix(double allowedError) const
{
    return largestOf(error()) > allowedError ? exact : SbDPMatrix(inFloats);
}

/// Whether a matrix is what floats make of all steps.
bool FltTransformation::Steps::isRoundedTo(SbDPMatrix const& matrix) const
{
    constexpr double turned = 1e-5;
    constexpr double moved = 1e-6;
    constexpr double timesFarther = 8;
    double largest = 1;
    double difference = 0;
    for (int i = 0; i < 12; ++i) {
        largest = std::max(largest, std::abs(exact[i / 4][i % 4]));
        difference = std::max(difference, std::abs(exact[i / 4][i % 4] - matrix[i / 4][i % 4]));
    }
    return difference <= turned * largest &&
           largestOf(placeOf(exact) - placeOf(matrix)) <=
               timesFarther * largestOf(error()) + moved * largestOf(placeOf(exact));
}

/// The steps act in their order.
void FltTransformation::takeStep(FltRecordView const& record)
{
    switch (record.opcode) {
    case FltOpcode::generalMatrix:
        takeStepOf<FltRecordGeneralMatrix>(record);
        break;
    case FltOpcode::translate:
        takeStepOf<FltRecordTranslate>(record);
        break;
    case FltOpcode::scaleNonUniform:
        takeStepOf<FltRecordScaleNonUniform>(record);
        break;
    case FltOpcode::rotateAboutPoint:
        takeStepOf<FltRecordRotateAboutPoint>(record);
        break;
    case FltOpcode::rotateAboutEdge:
        takeStepOf<FltRecordRotateAboutEdge>(record);
        break;
    case FltOpcode::putTransform:
        takeStepOf<FltRecordPutTransform>(record);
        break;
    default:
        break;
    }
}

template <class Record>
void FltTransformation::takeStepOf(FltRecordView const& record)
{
    FltDecoded<Record> const step(record);
    steps.add(stepOf<Floats>(step), stepOf<Doubles>(step));
    hasSteps = true;
}

#include "scene/FltMatrixNodes.h"

#include "visual/FltNodeMatrix.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTranslation.h>

void FltMatrixNodes::addTranslation(SoGroup& group, SbVec3d const& way)
{
    if (way == SbVec3d(0, 0, 0))
        return;
    auto* const node = new SoTranslation;
    node->translation = SbVec3f(way);
    group.addChild(node);
}

void FltMatrixNodes::add(SoGroup& group, SbDPMatrix const& matrix)
{
    SbVec3d const way(matrix[3][0], matrix[3][1], matrix[3][2]);
    if (matrix == FltNodeMatrix::by(way)) {
        addTranslation(group, way);
        return;
    }
    auto* const node = new SoMatrixTransform;
    node->matrix = SbMatrix(matrix);
    group.addChild(node);
}

SbDPMatrix FltMatrixNodes::between(FltLocalZeros::Zeros const& zeros, SbDPMatrix const& matrix)
{
    if (!zeros.isOneMatrix)
        return matrix;
    return FltNodeMatrix::by(zeros.inside) * matrix * FltNodeMatrix::by(-zeros.around);
}

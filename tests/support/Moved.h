#pragma once

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>

/// A matrix that moves what stands below it.
inline SbDPMatrix moved(double x, double y, double z)
{
    SbDPMatrix matrix;
    matrix.setTranslate(SbVec3d(x, y, z));
    return matrix;
}

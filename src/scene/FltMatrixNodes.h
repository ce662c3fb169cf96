#pragma once

#include "visual/FltLocalZeros.h"

#include <Inventor/nodes/SoGroup.h>

/// Makes the nodes of transformations that are worked out in doubles.
namespace FltMatrixNodes
{

/// Adds a translation, unless it goes nowhere.
void addTranslation(SoGroup& group, SbVec3d const& way);

/// Adds a matrix by the node that suits it; none for one that changes nothing.
void add(SoGroup& group, SbDPMatrix const& matrix);

/// A matrix for places that count from other zeros before and after it.
SbDPMatrix between(FltLocalZeros::Zeros const& zeros, SbDPMatrix const& matrix);

} // namespace FltMatrixNodes

#pragma once

#include "loader/FltProjection.h"

#include <Inventor/SbVec3d.h>

/// The ellipsoid of globes: places on it, from the middle of the earth. x goes to 0 N 0 E, and z to the pole.
namespace FltWgs84
{

/// In metres.
SbVec3d geocentric(FltProjection::Place const& place);

/// What goes up at a place: away from the ellipsoid, not from the middle of the earth.
SbVec3d up(FltProjection::Place const& place);

/// What goes to the east at a place. At the poles the longitude says where that is.
SbVec3d east(FltProjection::Place const& place);

} // namespace FltWgs84

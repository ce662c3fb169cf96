#pragma once

#include "loader/FltProjection.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>

/// The frame of a place on the globe, in metres: x goes east, y north and z up.
class VELLOREADER_API FltGlobeFrame
{
public:
    /// @param place the zero of the frame, on the ellipsoid WGS 84
    explicit FltGlobeFrame(FltProjection::Place const& place);

    /// The zero of the frame.
    FltProjection::Place const& place() const { return zero; }

    /// Brings places of the frame to those from the middle of the earth: place * matrix.
    SbDPMatrix const& matrix() const { return toEarth; }

    /// A place from the middle of the earth as one of the frame.
    SbVec3d fromEarth(SbVec3d const& geocentric) const;

private:
    FltProjection::Place zero;
    SbDPMatrix toEarth;
};

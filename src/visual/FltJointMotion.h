#pragma once

#include "toolkit/VelloReaderExport.h"
#include "visual/FltDegreeOfFreedom.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>

/// The motion of a degree of freedom at the current values of its ranges. A scale of 0 counts as 1.
struct VELLOREADER_API FltJointMotion {
    /// Works it out.
    explicit FltJointMotion(FltDegreeOfFreedom const& joint);

    SbVec3f scale;       ///< Acts first,
    SbRotation rotation; ///< then the roll about y, the pitch about x and the yaw about z,
    SbVec3f translation; ///< and this last.

    SbMatrix matrix() const; ///< All three in one.
};

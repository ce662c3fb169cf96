#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltDegreeOfFreedom.h"

#include <Inventor/nodes/SoTransform.h>
#include <cstddef>

/// A degree of freedom of a database in its scene.
struct FltSceneJoint : FltDegreeOfFreedom {
    SoNode const* node = nullptr; ///< That of the record.
    SoNodeRef<SoTransform> transform;
    std::size_t number = 0; ///< Orders all joints of a database.

    /// Takes over the current values of another one's ranges.
    void move(FltDegreeOfFreedom const& values);

    /// Brings the transformation to the current values of the ranges.
    void apply();
};

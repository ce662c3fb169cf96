#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltDegreeOfFreedom.h"

#include <Inventor/nodes/SoTransform.h>
#include <cstddef>
#include <vector>

/// A degree of freedom of a database in its scene.
struct FltSceneJoint : FltDegreeOfFreedom {
    std::vector<SoNode const*> nodes; ///< That of the record, or two: one in mirrors, and one elsewhere.
    SoNodeRef<SoTransform> transform; ///< In all of them.
    std::size_t number = 0;           ///< Orders all joints of a database.

    /// Takes over the current values of another one's ranges.
    void move(FltDegreeOfFreedom const& values);

    /// Brings the transformation to the current values of the ranges.
    void apply();
};

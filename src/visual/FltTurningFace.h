#pragma once

#include "visual/FltFaceCollector.h"
#include "visual/FltVisualNode.h"

#include <Inventor/SbBox3f.h>
#include <vector>

/// How a face stands that turns to the eye: about its foot, the middle of its lower edge.
struct FltTurningFace {
    /// @param points of its vertices, at least three
    FltTurningFace(std::vector<SbVec3d> const& points, bool isAboutPoint);

    FltPlacement placement; ///< Brings its vertices to where it looks along -y from the origin.
    SbBox3f box;            ///< Of it as it is stored.

    /// The content of its node.
    FltVisualTurning turning() const;

private:
    bool isAboutPoint;
};

#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltDegreeOfFreedom.h"
#include "visual/FltSwitch.h"

#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTransform.h>
#include <cstdint>
#include <string>
#include <vector>

/// A switch of a database in its scene, for hosts that choose what it shows.
struct FltCompleteSwitch : FltSwitch {
    std::vector<std::uint32_t> masks; ///< The words of all masks, one mask after the other.
    std::size_t wordsPerMask = 0;

    /// One for each child of the record, in their order: it shows all below it, or nothing.
    std::vector<SoNodeRef<SoSwitch>> children;

    int getMaskCount() const { return wordsPerMask == 0 ? 0 : static_cast<int>(masks.size() / wordsPerMask); }

    /// Whether a mask shows a child. A mask that isn't there shows none.
    bool shows(int mask, std::size_t child) const;

    /// Shows the children of a mask. @return whether there is such a mask
    bool choose(int mask);

    /// Shows the children of a mask of all switches of a name. @return whether one of them has such a mask
    static bool choose(std::vector<FltCompleteSwitch>& switches, std::string const& name, int mask);
};

/// A degree of freedom of a database in its scene, for hosts that move it.
///
/// What moves stands below a transformation between the local frame of the record and its inverse: a scale, a
/// roll about y, a pitch about x, a yaw about z, and a translation act in this order.
struct FltCompleteDOF : FltDegreeOfFreedom {
    SoNodeRef<SoTransform> transform;

    /// Brings the transformation to the current values of the ranges. A scale of 0 counts as 1.
    void apply();
};

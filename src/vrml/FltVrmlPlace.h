#pragma once

#include "vrml/VrmlText.h"

#include <Inventor/SbDPMatrix.h>
#include <string>

/// Where a part of a visual stands in a VRML97 file.
///
/// VRML97 has no transformation that mirrors. So what mirrors isn't in the transformations but in the points:
/// below it their x is turned, and so are the transformations between them.
struct FltVrmlPlace {
    bool isMirrored = false; ///< Points have their x turned.
    double scale = 1;        ///< How much larger a length is in the world.

    /// A point or a direction as it is written.
    template <class Vector>
    Vector written(Vector vector) const
    {
        if (isMirrored)
            vector[0] = -vector[0];
        return vector;
    }

    /// Begins the nodes for a transformation, with the list of children in the last, and goes on to the place
    /// of these. One that changes nothing is a group if it has a name, and no node otherwise.
    /// @param matrix of finite numbers
    /// @param name   of the first node; empty for none
    /// @return how many nodes end() has to end
    int begin(VrmlText& text, SbDPMatrix const& matrix, std::string const& name);

    /// Begins a group with the list of its children. @return 1, as above
    static int beginGroup(VrmlText& text, std::string const& name);

    /// Ends nodes with a list of children each.
    static void end(VrmlText& text, int nodes);
};

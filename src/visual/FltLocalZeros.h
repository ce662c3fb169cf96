#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/SbBox3d.h>
#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>
#include <optional>
#include <unordered_map>

/// What the places of a scene count from, part by part.
///
/// A scene holds places and matrices in floats. What stands below one transformation, or at several places,
/// counts from a zero of its own where it lies far from that of its coordinates, and what brings it from
/// there to where it stands is worked out in doubles. So a large number stands once, above all that it is
/// true of, and none has to cancel another one below.
class FltLocalZeros
{
public:
    /// What places count from, in the coordinates of the visual. Floats hold it.
    struct Zeros {
        SbVec3d around{0, 0, 0};  ///< Where the node stands.
        SbVec3d inside{0, 0, 0};  ///< In what it holds.
        bool isOneMatrix = false; ///< All that lies between both is told as one, and by doubles.
    };

    /// @param root          has to outlive this object only if it is asked for a node
    /// @param metresPerUnit of the coordinates around the root
    FltLocalZeros(FltVisualNode const& root, double metresPerUnit);

    /// The zeros of a node. The one around it may be another than that of its place, if it stands at several.
    /// @param around that of the place where the node stands
    Zeros of(FltVisualNode const& node, SbVec3d const& around) const;

private:
    /// What stands in a node, in its coordinates or in those around it.
    struct Part {
        SbBox3d box;
        std::optional<SbVec3d> far; ///< A place in it that floats don't hold.
    };

    struct Chosen : Zeros {
        bool isApart = false; ///< The zero around it is its own: another one may be around its place.
    };

    void measure(FltVisualNode const& node, bool isShared, double allowed, Part& around);
    void measureInside(FltVisualNode const& node, double allowed, Part& part);
    void add(Part const& part, SbDPMatrix const& matrix, double allowed, Part& around);
    void choose(FltVisualNode const& node, bool isApart, SbVec3d const& around, double allowed, int level);
    static SbVec3d zeroOf(Part const& part, SbDPMatrix const& matrix, SbVec3d const& around, double allowed);

    bool isNeeded = false;
    std::unordered_map<FltVisualNode const*, Part> insides; ///< Of nodes that may have zeros of their own.
    std::unordered_map<FltVisualNode const*, Chosen> chosen;
};

#pragma once

/// In which senses a part of a visual stands in the world.
///
/// A matrix with a negative determinant is a mirror: it turns left into right, and the sides of faces with
/// that. In an odd number of mirrors a face is seen from where its corners go to the right. Whoever makes a
/// form whose readers see to that, as those of glTF do, has no use for this.
struct FltVisualSenses {
    bool isStraight = false; ///< Somewhere it stands in no mirror, or in an even number of them.
    bool isMirrored = false; ///< Somewhere it stands in an odd number.

    /// The one or the other.
    bool& in(bool mirrored) { return mirrored ? isMirrored : isStraight; }
    /// @copydoc in()
    bool in(bool mirrored) const { return mirrored ? isMirrored : isStraight; }
};

#pragma once

#include "textures/PicturePixels.h"

/// What the alpha of a picture does to the faces that show it.
enum class PictureAlpha {
    none,   ///< There is no alpha, or it hides nothing.
    cutOut, ///< Of nearly all pixels it is next to nothing or next to all: they are there or not.
    graded, ///< Something in between.
};

/// Whether pixels have a byte for it.
bool hasAlpha(PicturePixels const& picture);

/// @param picture that has alpha
PicturePixels withoutAlpha(PicturePixels const& picture);

/// Looks at all pixels of a picture.
PictureAlpha alphaOf(PicturePixels const& picture);

/// Whether a cut-out covers as much where its pixels are drawn smoothly into each other as where each stands
/// for itself. Leaves of single pixels don't: nearly nothing between them is above a half.
bool coversAsMuchWhenSmooth(PicturePixels const& picture);

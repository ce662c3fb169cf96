#pragma once

#include "shot/Backdrop.h"

/// How a scene is drawn.
struct DrawingStyle {
    int width = 0;  ///< Pixels.
    int height = 0; ///< Pixels.
    Backdrop backdrop = Backdrop::sky();
    bool isTransparent = false; ///< An alpha channel in place of the backdrop.
    bool isWireframe = false;   ///< The edges of all faces, on both sides.
    bool isTwoSided = false;    ///< Both sides of all faces.
    bool lightsAll = false;     ///< Light on all faces, also on those that aren't lit.
    bool hasSmallPoints =
        false; ///< No point larger than a pixel: in a small picture they would cover the rest.
};

#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <memory>

/// Draws a scene as a viewer does, frame by frame, without a window: the camera moves before each.
class DrawnFrames
{
public:
    /// Where the camera goes around.
    enum class Way {
        outside, ///< All of the scene is in the picture.
        inside   ///< Most of it is beside the picture.
    };

    /// Opens the place to draw into, once a process, before the toolkit is started.
    /// @param isDriverIdle whether the driver drops what it is given, so that what is left is the toolkit's
    static void open(bool isDriverIdle);

    explicit DrawnFrames(SoNode* scene);

    /// Draws frames.
    void draw(int count, Way way);

private:
    void placeCamera(Way way);

    SbViewportRegion const viewport;
    SoNodeRef<SoSeparator> const root;
    SoPerspectiveCamera* const camera;
    SbBox3f box;
    SoGLRenderAction action;
    int frame = 0;
};

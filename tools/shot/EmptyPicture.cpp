#include "shot/EmptyPicture.h"

#include "shot/CameraPlace.h"
#include "shot/DrawnPoints.h"
#include "shot/NamedView.h"
#include "shot/SceneDrawing.h"
#include "support/SceneNodes.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbRotation.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSwitch.h>

namespace
{

void openSwitches(SoNode* scene)
{
    SceneNodes::forEach(scene, [](SoNode& node) {
        if (node.isOfType(SoSwitch::getClassTypeId()))
            static_cast<SoSwitch&>(node).whichChild = SO_SWITCH_ALL;
    });
}

/// Has each group of levels show all of them at any distance.
void openLevels(SoNode* scene)
{
    SceneNodes::forEach(scene, [](SoNode& node) {
        if (!node.isOfType(SoLOD::getClassTypeId()))
            return;
        auto& lod = static_cast<SoLOD&>(node);
        auto* const levels = new SoGroup;
        for (int i = 0; i < lod.getNumChildren(); ++i)
            levels->addChild(lod.getChild(i));
        lod.removeAllChildren();
        lod.addChild(levels);
        lod.range.setNum(0);
    });
}

} // namespace

std::string EmptyPicture::reasonWithoutPoints(SoNode* scene)
{
    openSwitches(scene);
    if (DrawnPoints::of(scene).empty())
        return "the database holds nothing that can be drawn. fltinfo says what it holds.";
    return "everything is hidden: the faces are marked as hidden, or stand in switches that show none of "
           "them. fltview shows them.";
}

std::string EmptyPicture::reason(SoNode* scene, SoPerspectiveCamera* camera, DrawingStyle style)
{
    auto const isSeen = [&](bool isTwoSided) {
        style.isTwoSided = isTwoSided;
        return !SceneDrawing::isEmpty(SceneDrawing::draw(scene, camera, style), style);
    };
    bool const isTwoSided = style.isTwoSided;
    style.isTransparent = true; // a backdrop could have the scene's colour
    if (isSeen(isTwoSided))
        return "everything in view has the colour of the background. Choose another --background.";
    if (isSeen(true))
        return "everything in view is seen from behind, and the faces have one side. Choose --two-sided or "
               "another --view.";
    openLevels(scene);
    if (isSeen(isTwoSided))
        return "everything in view is hidden by level of detail at this distance. Choose --lod highest, or "
               "come nearer with --zoom or --fit.";
    if (isSeen(true))
        return "everything in view is hidden by level of detail at this distance, and seen from behind. "
               "Choose --lod highest and --two-sided.";
    std::vector<SbVec3f> const points = DrawnPoints::of(scene);
    auto const isSeenWhole = [&] {
        float const aspect = static_cast<float>(style.width) / static_cast<float>(style.height);
        CameraPlace::fit(*camera, points, aspect, 1);
        CameraPlace::includeDepth(*camera, points);
        return isSeen(true);
    };
    if (isSeenWhole())
        return "the scene is out of view, or too far away. Choose another --eye, --look-at or --zoom.";
    for (NamedView const& view : namedViews) {
        camera->orientation = CameraPlace::lookingFrom(view.azimuth, view.elevation);
        if (isSeenWhole())
            return "everything in view is edge-on. Choose another view, such as --view " +
                   std::string(view.name) + ".";
    }
    return "nothing is to be seen, from whatever side: the faces are too thin, or transparent.";
}

#include "convert/FltLODCentres.h"

#include "convert/FltAllowance.h"
#include "convert/FltOneTimeWarnings.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoLOD.h>

void FltLODCentres::setFromBox(SoLOD& lod, SoNode* children, FltSilencedScene::Order order,
                               std::int64_t effort)
{
    if (!steps.spend(effort))
        return warnings.notify(
            "WARNING ! Levels of detail are nested too deeply: some keep a centre of (0, 0, 0)");
    SoGetBoundingBoxAction action{SbViewportRegion()};
    action.apply(children);
    lod.center = action.getBoundingBox().getCenter();
    scene.noteBox(order);
}

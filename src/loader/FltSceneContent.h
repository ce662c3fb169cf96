#pragma once

#include "loader/FltScene.h"
#include "scene/FltNodeRecords.h"
#include "scene/FltSceneFlipBook.h"
#include "scene/FltSceneJoint.h"
#include "scene/FltSceneSwitch.h"

#include <Inventor/nodes/SoSeparator.h>
#include <mutex>

/// What a loaded scene holds.
struct FltScene::Content : FltLoadReport {
    SoNodeRef<SoSeparator> root;
    std::vector<std::string> files; ///< That records come from.
    FltNodeRecords records;
    std::vector<FltSceneSwitch> switches;
    std::vector<FltSceneJoint> joints;
    std::vector<FltSceneFlipBook> flipBooks;
    std::once_flag partsNoted; ///< Whether the records know all nodes of the scene.
};

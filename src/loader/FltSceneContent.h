#pragma once

#include "complete/FltCompleteScene.h"
#include "loader/FltScene.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoSeparator.h>

/// What a loaded scene holds.
struct FltScene::Content {
    SoNodeRef<SoSeparator> root;
    std::vector<FltMessage> messages;
    std::vector<FltTexture> textures;
    std::vector<FltReference> references;
    std::vector<FltOmission> omissions;
    FltDatabaseInfo info;
    std::vector<FltCompleteSwitch> switches;
    std::vector<FltCompleteDOF> dofs;
};

#pragma once

#include "FltDatabaseInfo.h"
#include "FltMessage.h"
#include "textures/FltTexture.h"
#include "visual/FltOmission.h"
#include "visual/FltReference.h"

#include <vector>

/// What is to be known about a loaded database besides what it looks like.
struct FltLoadReport {
    std::vector<FltMessage> messages;     ///< In the order in which they came.
    std::vector<FltTexture> textures;     ///< With their places, found or missing.
    std::vector<FltReference> references; ///< In the order of the records.
    std::vector<FltOmission> omissions;   ///< What isn't shown, by kind.
    FltDatabaseInfo info;                 ///< From the header of the top-level file.
};

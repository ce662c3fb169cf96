#pragma once

#include "convert/FltSilencedScene.h"

#include <cstdint>

class FltAllowance;
class FltOneTimeWarnings;
class SoLOD;

/// Finds the centres of levels of detail from what they hold, while the scene is built.
class FltLODCentres
{
public:
    /// @param steps that all of this may take: nested levels of detail are looked at again for each around
    /// them
    FltLODCentres(FltSilencedScene& scene, FltAllowance& steps, FltOneTimeWarnings& warnings)
        : scene(scene), steps(steps), warnings(warnings)
    {
    }

    /// Sets the centre to that of the box around @p children. With no steps left the centre stays, and a
    /// warning is given.
    /// @param order of the children's group in the silenced scene; its subtree is what was silenced since
    /// @param effort about as many steps as it takes
    void setFromBox(SoLOD& lod, SoNode* children, FltSilencedScene::Order order, std::int64_t effort);

private:
    FltSilencedScene& scene;
    FltAllowance& steps;
    FltOneTimeWarnings& warnings;
};

#pragma once

#include <Inventor/SbBox3f.h>
#include <cstddef>
#include <set>
#include <string>

class SoNode;

/// What the toolkit draws of a scene but texts, counted as another reader counts what is in a VRML97 file.
struct SceneSurvey {
    explicit SceneSurvey(SoNode* root);

    std::size_t triangles = 0;
    std::size_t unlit = 0;    ///< Of the triangles.
    std::size_t textured = 0; ///< Of the triangles.
    std::size_t turning = 0;  ///< Of the triangles: those that turn to the eye.
    std::size_t lines = 0;
    std::size_t points = 0;
    std::set<std::string> pictures; ///< The names of those that are drawn.
    SbBox3f box;                    ///< Of what doesn't turn.
};

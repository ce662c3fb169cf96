#pragma once

#include <cstdint>

class SoNode;

/// What a scene is made of, each node counted once however often it is drawn.
struct SceneStatistics {
    SceneStatistics() = default;
    explicit SceneStatistics(SoNode* scene);

    std::int64_t nodes = 0;
    std::int64_t shapes = 0;
    std::int64_t faces = 0;
    std::int64_t triangles = 0; ///< As many as the faces are cut into.
};

#pragma once

#include <array>
#include <cstdint>

class SoNode;

/// The size of a scene graph.
struct SceneMeasure {
    std::uint64_t nodes = 0; ///< Each once, however often it is used.
    std::uint64_t bytes = 0; ///< Of the nodes and the values of their fields, roughly.
    bool isEmpty = true;     ///< Whether there is nothing to be seen, and so no box.
    std::array<double, 3> least{}, most{};

    static SceneMeasure of(SoNode* root);
};

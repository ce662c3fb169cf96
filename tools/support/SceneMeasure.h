#pragma once

#include "support/SceneStatistics.h"

#include <array>
#include <cstdint>
#include <string>

/// The size of a scene graph.
struct SceneMeasure {
    SceneStatistics statistics;
    std::uint64_t bytes = 0; ///< Of the nodes and the values of their fields, roughly.
    bool isEmpty = true;     ///< Whether there is nothing to be seen, and so no box.
    std::array<double, 3> least{}, most{};

    /// Takes in a node without what is below it, but for the box.
    void add(SoNode& node);

    /// Takes the scene, and lets it go before it reads its files again to count their faces.
    /// @param database the file that the scene was loaded from
    static SceneMeasure of(FltScene scene, std::string const& database);
};

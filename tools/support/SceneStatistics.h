#pragma once

#include "loader/FltScene.h"

#include <cstdint>
#include <string>
#include <vector>

class SoNode;

/// What a scene is made of, as all programs count it.
struct SceneStatistics {
    /// @name Of the scene: each node once, however often it is drawn, at all levels of detail, shown or not
    /// @{
    std::uint64_t nodes = 0;
    std::uint64_t shapes = 0;
    std::uint64_t triangles = 0; ///< As many as the faces are cut into.
    /// @}

    /// Face records of the database and of those that are part of the scene, each file once. A mesh has none.
    std::uint64_t faces = 0;

    /// The face records of a database and of those that are part of its scene, each file once.
    static std::uint64_t facesOf(std::vector<FltReference> const& references, std::string const& database);

    /// @param database the file that the scene was loaded from
    static SceneStatistics of(FltScene const& scene, std::string const& database);

    /// Counts a node without what is below it.
    void add(SoNode const& node);
};

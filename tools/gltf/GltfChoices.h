#pragma once

#include "gltf/FltGltfOptions.h"
#include "support/Program.h"

#include "loader/FltLoader.h"

#include <string>

/// What the command line says of glTF files.
class GltfChoices
{
public:
    GltfChoices() = default;
    GltfChoices(GltfChoices const&) = delete;
    GltfChoices& operator=(GltfChoices const&) = delete;

    /// Adds the options, to which the program is bound.
    void add(Program& program);

    /// Makes sure that they go with a form of results.
    /// @param ending of the names of results: ".glb"
    /// @throw UsageError
    void check(std::string const& ending) const;

    /// What they say of writing.
    FltGltfOptions options() const;

    /// Whether databases are put on the globe.
    bool areOnGlobe() const { return isGlobe || isTileset; }

    /// Whether a tileset is made of the results.
    bool makeTileset() const { return isTileset; }

    /// Whether a result is one file for each distance.
    bool areSplit() const { return levels == "split"; }

    /// What they say of loading.
    FltLoader::LevelsOfDetail levelsToLoad() const;

private:
    std::string levels = "highest"; ///< Of detail: "all", "highest", "lowest" or "split".
    std::string hidden = "drop";    ///< "drop" or "keep".
    std::string extras = "all";     ///< "all" or "none".
    std::string lift = "auto";      ///< "auto" or "none".
    bool isGlobe = false;
    bool isTileset = false;
    bool instances = false;
    bool quantizes = false;
    bool compresses = false;
};

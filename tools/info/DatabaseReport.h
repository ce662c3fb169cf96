#pragma once

#include "support/SceneMeasure.h"

#include "inspect/FltDependencies.h"
#include "inspect/FltInventory.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// All that fltinfo knows of a database, as ground for each form in which it says so.
struct DatabaseReport {
    FltInventory const& inventory;
    FltDependencies const& dependencies;
    std::optional<SceneMeasure> scene; ///< Empty if no scene was made.

    /// "feet"
    std::string units() const;

    /// "flat earth"
    std::string projection() const;

    /// "WGS 1984"
    std::string ellipsoid() const;

    /// Vertices by what each holds: "colour and normal".
    std::vector<std::pair<std::string, std::uint64_t>> verticesByForm() const;

    std::uint64_t vertices() const;

    /// Those that the database and all that it refers to need, and that aren't there.
    std::uint64_t missingTextures() const;
    std::uint64_t missingReferences() const;

    /// The numbers of the children that a mask shows: "0 2 5".
    static std::string childrenOf(FltInventory::Switch const& one, int mask, std::uint32_t children);

    /// What the attributes of a texture say, in words: "repeat", "modulate", "bilinear".
    /// @{
    static std::string nameOf(FltTextureAttributes::Wrap wrap);
    static std::string nameOf(FltTextureAttributes::Environment environment);
    static std::string nameOf(FltTextureAttributes::Filter filter);
    /// @}

    /// The state of a reference in a word.
    static std::string stateOf(FltDependencies::State state);
};

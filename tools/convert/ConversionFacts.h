#pragma once

#include "convert/NeededFiles.h"
#include "tiles/FltTile.h"

#include <array>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

/// What a report tells of a database that was converted.
struct ConversionFacts {
    /// A file of the result.
    struct File {
        std::string path;
        std::uint64_t bytes = 0;
    };

    struct Box {
        std::array<double, 3> least, most; ///< In the unit of the result; z is up.
    };

    double seconds = 0;
    std::uint64_t memory = 0;                   ///< The most bytes that its process held.
    std::array<std::uint64_t, 3> messages = {}; ///< Remarks, warnings and errors.
    std::vector<std::string> missingTextures;   ///< As stored, each once.
    std::uint64_t triangles = 0; ///< At the finest level of detail, as often as they are drawn.
    std::optional<Box> box;      ///< Of these; nothing if there is nothing to be seen.

    std::optional<FltTile> tile; ///< Of a result that may be part of a tileset; without its file.

    /// @name As the header of the database says
    /// @{
    double latitude = 0;  ///< Degrees, of its origin.
    double longitude = 0; ///< Degrees.
    int projection = 0;   ///< Number of the map projection; 0 is a flat earth.
    int ellipsoid = 0;    ///< Number of the earth model.
    /// @}

    /// The files of the result but the main one: binary parts, materials, pictures, coarser levels. Nothing
    /// in a report of before, which told none.
    std::optional<std::vector<File>> beside;

    std::vector<NeededFiles::File> needs; ///< All that was read.
    bool isSettled = true;                ///< Whether none of it was changed meanwhile.

    /// Adds them to an object of JSON.
    void addTo(nlohmann::ordered_json& json) const;

    /// Reads what addTo() has added. @throw nlohmann::json::exception if something is missing or not its kind
    static ConversionFacts from(nlohmann::ordered_json const& json);
};

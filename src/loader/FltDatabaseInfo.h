#pragma once

#include "toolkit/VelloReaderExport.h"

#include <cstdint>
#include <string>

/// What the header record says about a database.
struct FltDatabaseInfo {
    /// The unit of the coordinates as they are stored.
    enum class Unit { metres = 0, kilometres = 1, feet = 4, inches = 5, nauticalMiles = 8 };

    std::string name;              ///< The id of the header, mostly "db".
    int revision = 0;              ///< Of the format: 1570 is 15.7.
    Unit unit = Unit::metres;      ///< One that the format doesn't know counts as metres.
    int unitMultiplier = 1;        ///< As stored.
    std::string lastChange;        ///< Date and time as the tool wrote them.
    int projection = 0;            ///< Number of the map projection; 0 is a flat earth.
    int ellipsoid = 0;             ///< Number of the earth model; 0 is WGS 1984.
    int utmZone = 0;               ///< Of the projection UTM, below zero in the south; 0 if none is stored.
    double earthMajorAxis = 0;     ///< Metres, of the ellipsoid -1, which the header defines.
    double earthMinorAxis = 0;     ///< Metres.
    double delta[2] = {0, 0};      ///< What places the database among others, in x and y, in its unit.
    double originLatitude = 0;     ///< Degrees, of the database's origin.
    double originLongitude = 0;    ///< Degrees.
    double southWestLatitude = 0;  ///< Degrees, of the extents.
    double southWestLongitude = 0; ///< Degrees.
    double northEastLatitude = 0;  ///< Degrees.
    double northEastLongitude = 0; ///< Degrees.

    /// What FltLoader::origin took from all places, in the unit of the scene: a place of the database is that
    /// of the scene and this.
    double offset[3] = {0, 0, 0};

    std::uint64_t records = 0; ///< In the file itself, without those that it refers to.
    std::uint64_t bytes = 0;   ///< The size of the file.

    /// A unit as people read it, such as "nautical miles".
    VELLOREADER_API static char const* nameOf(Unit unit);
};

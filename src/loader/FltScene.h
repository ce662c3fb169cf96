#pragma once

#include "FltMessage.h"
#include "toolkit/VelloReaderExport.h"
#include "visual/FltDegreeOfFreedom.h"
#include "visual/FltSwitch.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class SoSeparator;

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
    double originLatitude = 0;     ///< Degrees, of the database's origin.
    double originLongitude = 0;    ///< Degrees.
    double southWestLatitude = 0;  ///< Degrees, of the extents.
    double southWestLongitude = 0; ///< Degrees.
    double northEastLatitude = 0;  ///< Degrees.
    double northEastLongitude = 0; ///< Degrees.
    std::uint64_t records = 0;     ///< In the file itself, without those that it refers to.
    std::uint64_t bytes = 0;       ///< The size of the file.

    /// A unit as people read it, such as "nautical miles".
    VELLOREADER_API static char const* nameOf(Unit unit);
};

/// A texture that a face of the scene uses.
struct FltTexture {
    std::string name;     ///< As the database names it.
    std::string database; ///< The file that names it.
    std::string path;     ///< Where it was found; empty if it wasn't.
    std::vector<std::string>
        tried; ///< If it wasn't found: the files that were looked for, the likeliest first.
};

/// A file that the database, or another external file, refers to.
struct FltReference {
    std::string name;      ///< As the database names it.
    std::string database;  ///< The file that names it.
    std::string path;      ///< Where it was found; empty if it wasn't.
    bool isLoaded = false; ///< Whether its scene is a part of this one.
};

/// What a database holds and the scene doesn't show.
struct FltOmission {
    std::string kind;        ///< What it is, such as "sound".
    std::uint64_t count = 0; ///< How many of them there are.
};

/// A loaded database: its scene graph, and what is to be known about it.
///
/// It owns one reference to the root. It can be moved, not copied. An object that was moved from, and one
/// made without a database, has a null root and empty lists.
class VELLOREADER_API FltScene
{
public:
    FltScene();
    ~FltScene();
    FltScene(FltScene&& other) noexcept;            ///< Takes the scene over.
    FltScene& operator=(FltScene&& other) noexcept; ///< The same; an earlier scene goes.
    FltScene(FltScene const&) = delete;
    FltScene& operator=(FltScene const&) = delete;

    /// The scene graph. It lives as long as this object, or longer if somebody else holds a reference to it,
    /// as a viewer does. Null after release().
    SoSeparator* root() const;

    /// Hands the scene graph over with this object's reference: call unref() on it some day. The lists stay.
    [[nodiscard]] SoSeparator* release();

    std::vector<FltMessage> const& messages() const;     ///< In the order in which they came.
    std::vector<FltTexture> const& textures() const;     ///< Each once, with its place, found or missing.
    std::vector<FltReference> const& references() const; ///< In the order of the records.
    std::vector<FltOmission> const& omissions() const;   ///< What the scene doesn't show, by kind.
    FltDatabaseInfo const& info() const;                 ///< From the header of the top-level file.

    /// @name What can be moved
    /// The exact conversion knows of none.
    /// @{
    std::vector<FltSwitch> switches() const; ///< All switches, as they are at present.

    /// Has all switches of a name show a mask. @return whether there is one that has it
    bool chooseMask(std::string const& switchName, int mask);

    /// All degrees of freedom, as they are at present.
    std::vector<FltDegreeOfFreedom> degreesOfFreedom() const;

    /// Moves the degree of freedom at a place in the list to the current values of @p values.
    /// @return whether there is one
    bool move(std::size_t index, FltDegreeOfFreedom const& values);
    /// @}

    /// What a scene is made of; for the loader.
    struct Content;
    explicit FltScene(std::unique_ptr<Content> content); ///< Takes the content over; for the loader.

private:
    std::unique_ptr<Content> content;
};

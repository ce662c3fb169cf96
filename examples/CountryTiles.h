#pragma once

#include "Model.h"

#include <array>
#include <string>

class CountryPlan;

/// The databases of a country's tiles: squares of land by Lake Constance, with farms, woods and masts.
///
/// Neighbours have the same numbers along the edge that they share: places, normals and colours. Each tile
/// has three levels of detail of its land and, on the finest, references to models in "models" and instances
/// of a haystack. Textures are in "textures". All lengths are metres: x east, y north, z up.
class CountryTiles
{
public:
    /// What the coordinates are.
    enum class Projection {
        flatEarth, ///< Of a plane that touches the earth at the header's origin, in which they are 0.
        utm,       ///< UTM zone 32 north. The header's origin is the same place.
    };

    CountryTiles(CountryPlan const& plan, Projection projection);

    /// The bytes of a tile's database.
    std::string make(int tile) const;

private:
    struct Land;

    FltWriter begin() const;
    void addModels(FltWriter& flt, Land const& land, int seed) const;
    void addReference(FltWriter& flt, char const* model, Point place, double degrees) const;

    CountryPlan const& plan;
    std::string wayBack; ///< From a tile's folder to that of the country.
    Projection projection;
    /// @name What is the same in all tiles
    /// @{
    VertexPalette commonVertices;
    std::string definition;            ///< Of the haystack.
    std::array<std::string, 3> levels; ///< The faces of the land, from fine to coarse.
    /// @}
};

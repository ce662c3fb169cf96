#pragma once

#include "FltDatabaseInfo.h"
#include "toolkit/VelloReaderExport.h"

#include <array>
#include <optional>
#include <string>

/// Where the places of a database are on the earth, by the map projection that its header names.
///
/// Known are:
/// - the flat earth: x goes east and y north from the header's origin, along the radii of curvature there. An
///   origin of 0 N, 0 E counts as none;
/// - UTM: x is the easting and y the northing, to which the header's deltas are added. The zone is the
///   header's (below zero in the south), or else that of its origin;
/// - geodetic: x is the longitude and y the latitude, in degrees;
/// - geocentric: x, y and z from the middle of the earth.
///
/// Latitude and longitude are those on the header's own ellipsoid; there is no shift of the datum.
class VELLOREADER_API FltProjection
{
public:
    /// A place on the earth.
    struct Place {
        double latitude = 0;  ///< Degrees, north is positive.
        double longitude = 0; ///< Degrees from -180 to 180, east is positive.
        double height = 0;    ///< Metres above the ellipsoid.
    };

    /// @param info of a loaded database
    explicit FltProjection(FltDatabaseInfo const& info);

    /// Whether places can be told.
    bool isKnown() const;

    /// "UTM, zone 33 north, on WGS 1984"; or, if it isn't known, why: "unknown projection, number 9".
    std::string const& describe() const;

    /// @param stored coordinates as the database stores them, in its unit
    /// @return none if the projection isn't known, and for what is no place in it
    std::optional<Place> placeOf(std::array<double, 3> const& stored) const;

    /// Metres in the unit in which the database stores its coordinates.
    double metresInUnit() const;

private:
    enum class Kind { unknown, flatEarth, utm, geodetic, geocentric };

    void takeEllipsoid(FltDatabaseInfo const& info);
    void takeProjection(FltDatabaseInfo const& info);
    void takeZone(FltDatabaseInfo const& info);
    Place fromFlatEarth(double east, double north, double height) const;
    std::optional<Place> fromUtm(double easting, double northing, double height) const;
    std::optional<Place> fromGeocentric(double x, double y, double z) const;

    Kind kind = Kind::unknown;
    std::string words;
    double unit;           ///< In metres.
    double majorAxis = 0;  ///< In metres; 0 for an unknown ellipsoid.
    double flattening = 0; ///< Of the ellipsoid.
    Place origin;          ///< Of the flat earth.
    int zone = 0;          ///< Of UTM; below zero in the south.
    std::array<double, 2> delta{};
};

#pragma once

#include "loader/FltProjection.h"

#include <Inventor/SbVec3f.h>
#include <QString>
#include <optional>

struct FltDatabaseInfo;

/// Says where a place of the scene is: in the scene, in the database, and on the earth.
class PlaceReadout
{
public:
    /// @param info          of the database
    /// @param isInMetres    whether the scene is in metres; else it is in the database's unit
    PlaceReadout(FltDatabaseInfo const& info, bool isInMetres);

    /// "x 1  y 2  z 0.5 m  |  database 3.28084  6.56168  1.64042 feet  |  48.5000090° N, 9.2500136° E, 0.5 m
    /// (flat earth, on WGS 1984)", or "(unknown projection, number 3)".
    QString textOf(SbVec3f const& place) const;

    QString unitName() const; ///< "m" or that of the database.

private:
    FltProjection projection;
    std::array<double, 3> offset;
    bool isInMetres;
    QString storedUnit;
};

#include "globe/FltGlobeFrame.h"

#include "globe/FltWgs84.h"

FltGlobeFrame::FltGlobeFrame(FltProjection::Place const& place) : zero(place)
{
    SbVec3d const east = FltWgs84::east(place);
    SbVec3d const up = FltWgs84::up(place);
    SbVec3d const rows[] = {east, up.cross(east), up, FltWgs84::geocentric(place)};
    toEarth = SbDPMatrix::identity();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 3; ++column)
            toEarth[row][column] = rows[row][column];
}

SbVec3d FltGlobeFrame::fromEarth(SbVec3d const& geocentric) const
{
    SbVec3d const way = geocentric - SbVec3d(toEarth[3][0], toEarth[3][1], toEarth[3][2]);
    SbVec3d place;
    for (int row = 0; row < 3; ++row)
        place[row] = way.dot(SbVec3d(toEarth[row][0], toEarth[row][1], toEarth[row][2]));
    return place;
}

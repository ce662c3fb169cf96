#pragma once

#include "globe/FltGlobeError.h"
#include "globe/FltGlobeFrame.h"
#include "loader/FltVisual.h"
#include "toolkit/VelloReaderExport.h"

#include <string>
#include <vector>

/// A visual on the globe.
struct FltGlobeTile {
    FltVisual visual;       ///< In metres, in the frame: z goes up from the ellipsoid at its zero.
    FltGlobeFrame frame;    ///< Its zero is the middle of what is to be seen, unless that is no place.
    std::string projection; ///< Of the database: as FltProjection::describe().

    /// What a person should know, a sentence each: that the ellipsoid is another one than that of globes.
    std::vector<std::string> remarks;
};

/// Puts visuals on the globe: the ellipsoid WGS 84, on which neighbours of any projection meet.
///
///     FltGlobeTile const tile = FltGlobe::place(loader.loadVisual("airfield.flt"));
///     FltGltf::write(tile.visual, "airfield.glb");
///
/// Each corner of what stands in the coordinates of the database goes through its projection, so that the
/// ground follows the bend of the earth; normals turn with it. Models that instances and references place
/// keep their shape, and so does what moves; they stand upright where they are placed. Latitudes and
/// longitudes on other ellipsoids are taken as those on WGS 84: there is no shift of the datum.
class VELLOREADER_API FltGlobe
{
public:
    /// @param visual with the levels of detail and the unit that were asked for. It stays as it is; the
    ///               result shares models with it. What has no place on the earth is counted in its
    ///               omissions.
    /// @throw FltGlobeError if the database's projection isn't known, or nothing in it has a place
    static FltGlobeTile place(FltVisual const& visual);
};

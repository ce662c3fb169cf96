#pragma once

#include "gltf/FltGltfOptions.h"
#include "gltf/FltGltfReport.h"
#include "loader/FltVisual.h"
#include "tiles/FltTile.h"
#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <string>
#include <vector>

/// Writes databases as .glb files for a tileset.
class VELLOREADER_API FltTileFiles
{
public:
    struct Written {
        FltTile tile;            ///< With files as seen from the directory of the first one.
        FltGltfReport report;    ///< Of the finest form; the files are all.
        std::size_t leftOut = 0; ///< Distances at which levels change that have no file of their own.
    };

    /// What the names of coarser forms end in, as many as there may be: ".1.glb" and so on.
    static std::vector<std::string> coarserEndings();

    /// Writes one file, or several by the distance.
    /// @param visual  in metres, on the globe if the options say where
    /// @param path    ends in ".glb"; coarser forms are "NAME.1.glb" and so on
    /// @param options those of the files
    /// @param splits  whether each distance at which levels at the top change has a file: the first one has
    ///                the finest alone then. Of many distances eight have one.
    /// @throw FltGltfError if a file can't be written
    static Written write(FltVisual const& visual, std::string const& path, FltGltfOptions const& options,
                         bool splits);
};

#pragma once

#include "loader/FltProjection.h"

#include <Inventor/SbBox3d.h>
#include <Inventor/SbDPMatrix.h>
#include <optional>
#include <string>
#include <vector>

/// What a tileset has to know of a database that became a .glb. Files are told by their paths, with slashes.
struct FltTile {
    /// A coarser form of it.
    struct Level {
        std::string file;    ///< Empty if nothing is seen of it.
        double distance = 0; ///< Metres from which it is seen in place of the finer one.
    };

    /// Another file that stands in it.
    struct Reference {
        std::string file;  ///< The .glb.
        SbDPMatrix matrix; ///< Brings what is in it to the frame of this one: place * matrix.
    };

    std::string file; ///< The .glb itself.

    /// Its zero on the globe; its frame is that of FltGlobeFrame. A model, which only stands where other
    /// databases refer to it, has none.
    std::optional<FltProjection::Place> place;

    SbBox3d box;                       ///< In metres, z up; empty if there is nothing to be seen.
    std::vector<Level> coarser;        ///< The finest first.
    std::vector<Reference> references; ///< In the order of the records.
};

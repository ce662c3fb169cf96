#pragma once

#include "FltLoadReport.h"
#include "toolkit/VelloReaderExport.h"
#include "visual/FltVisualNode.h"
#include "visual/FltVisualOptions.h"

#include <memory>
#include <string>
#include <vector>

/// A loaded database as plain data, from which any form of it can be made; the toolkit needn't be started.
///
/// Meshes name textures by their numbers in the list, and records name files by theirs. In a list of textures
/// one may stand several times.
struct VELLOREADER_API FltVisual : FltLoadReport {
    std::shared_ptr<FltVisualNode const> root; ///< In the unit that was asked for, unless a scale says so.
    double metresPerUnit = 1;                  ///< Of the root's coordinates.
    std::vector<std::string> files;            ///< The database first, then those that it refers to.

    /// Which nodes of its scene bear their names.
    FltVisualOptions::Names names = FltVisualOptions::Names::all;

    /// Each texture of the list once.
    std::vector<FltTexture> distinctTextures() const;
};

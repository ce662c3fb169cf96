#pragma once

#include "messages/FltLimits.h"
#include "model/FltLeftOut.h"
#include "model/FltModel.h"
#include "textures/FltTexture.h"
#include "visual/FltVisualOptions.h"
#include "visual/FltVisualPart.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What all files of a conversion have in common.
struct FltVisualSetting {
    FltVisualOptions::LevelsOfDetail levelsOfDetail = FltVisualOptions::LevelsOfDetail::all;
    FltVisualOptions::TimeOfDay time = FltVisualOptions::TimeOfDay::day;

    /// Gives the visual of an external file, in the units of the file that refers to it.
    std::function<FltVisualPart(FltModel const& from, std::string const& path, std::uint32_t overrides)>
        refer;

    /// Is told at which byte of its file the conversion is, now and then. It may end it by an exception.
    std::function<void(FltModel const& model, std::size_t offset)> progress;

    FltLeftOut leftOut;
    std::vector<std::string> files;   ///< That records come from, in the order of reading.
    std::vector<FltTexture> textures; ///< In use.
    std::size_t switches = 0;         ///< So far.
    std::size_t joints = 0;           ///< So far.
    std::size_t flipBooks = 0;        ///< So far.
    int levels = 0; ///< That are open, those of the files that lead to the present one included.

    /// Copies that replications may still make.
    std::int64_t copiesLeft = FltLimits::copies;

    /// Nodes that shared parts may still add to what a traversal visits: instances of instances could make a
    /// scene of a small file endless.
    std::int64_t visitsLeft = FltLimits::sceneNodes.floor;
};

#pragma once

#include "pictures/PictureStage.h"
#include "support/ScratchFolder.h"

#include <iosfwd>
#include <string>
#include <vector>

/// A small database of one feature, and how it is looked at.
struct PictureDatabase {
    std::string name;    ///< Of the feature: "lightModes". The kept picture is NAME.png.
    std::string options; ///< For fltshot, besides the size.
    void (*write)(ScratchFolder const& folder); ///< Writes "model.flt" and what it needs.
};

void PrintTo(PictureDatabase const& database, std::ostream* out);

/// Writes "model.flt" with a wall of narrow stripes, steps, and something of all that has a place.
/// @param at what its coordinates count from
void writeFarModel(ScratchFolder const& folder, PictureStage::Place const& at);

/// One for each feature of the complete conversion.
std::vector<PictureDatabase> const& pictureDatabases();

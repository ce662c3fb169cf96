#pragma once

#include "support/OutputFile.h"
#include "support/ProgressLine.h"

#include "loader/FltLoader.h"

#include <cstddef>
#include <string>
#include <vector>

/// How databases are converted, whatever they become.
struct ConversionOptions {
    std::size_t jobs = 1;       ///< Conversions at a time.
    bool measures = false;      ///< Whether a table of statistics is printed.
    bool readsTextures = false; ///< Whether pixels of textures become part of results.
    bool onlyIfNewer = false;   ///< Whether outputs are passed over that are newer than all they are made of.
    bool summarises = true;     ///< Whether to end with a count.
    OutputFile::Existing existing = OutputFile::Existing::replace; ///< Results that are there already.
    FltLoader::References references = FltLoader::References::follow;
    std::vector<std::string> beside; ///< As in ConversionForm.
    bool hasPictures = false;        ///< As in ConversionForm.
    std::string textureDirectory;    ///< Where results share their textures; empty if each has its own.
    std::string report;              ///< The report's file; empty for none.
    std::string optionsGiven;        ///< Those that have an effect on results, for the report.
    ProgressLine::Start progress = ProgressLine::Start::afterASecond;
};

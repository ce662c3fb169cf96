#pragma once

#include <string>
#include <vector>

/// A form of results, as a program offers it.
struct ConversionForm {
    std::string ending; ///< Of the names of such files: ".iv". Without the full stop it is the word for --to.
    std::string name;   ///< In a sentence: "Open Inventor".

    std::vector<std::string> beside = {}; ///< Of the names of files that belong to each result: ".bin".
    bool needsPlace = false;  ///< Whether it can't go into a pipe, such as what has other files beside it.
    bool hasPictures = false; ///< Whether there may be pictures beside it.
};

#pragma once

#include <string>

/// A form of results, as a program offers it.
struct ConversionForm {
    std::string ending; ///< Of the names of such files: ".iv". Without the full stop it is the word for --to.
    std::string name;   ///< In a sentence: "Open Inventor".

    std::string beside = {}; ///< Of the name of a file that belongs to each result: ".bin"; empty for none.
    bool needsPlace = false; ///< Whether it can't go into a pipe, such as what has other files beside it.
};

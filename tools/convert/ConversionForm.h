#pragma once

#include <string>

/// A form of results, as a program offers it.
struct ConversionForm {
    std::string ending; ///< Of the names of such files: ".iv". Without the full stop it is the word for --to.
    std::string name;   ///< In a sentence: "Open Inventor".

    bool hasOthersBeside = false; ///< Whether it is several files, which no pipe takes.
};

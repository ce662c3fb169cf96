#pragma once

#include <string>
#include <vector>

/// What the command line of fltview asks for.
struct ViewOptions {
    std::string input; ///< Empty for an empty window.
    std::vector<std::string> texturePath;
    std::string select;     ///< A part of the name of what is selected at first; empty for nothing.
    std::string screenshot; ///< Where to save a picture of the window before the program ends; empty to stay.
    std::string sizeText;
    int width = 1280;
    int height = 800;
    bool watches = false;
    bool prints = false;
    bool printsWidgets = false; ///< For tests.
    bool exact = false;

    /// Reads a command line. Help, the version and wrong usage are answered here.
    /// @return the exit code to end with; -1 to go on
    int parse(int argc, char** argv);
};

#pragma once

#include "support/LoaderOptions.h"

#include <string>
#include <vector>

/// What the command line of fltview asks for.
class ViewOptions
{
public:
    /// What the program says of itself.
    static ProgramDescription description();

    /// Adds the options.
    explicit ViewOptions(Program& program);

    ViewOptions(ViewOptions const&) = delete;
    ViewOptions& operator=(ViewOptions const&) = delete;

    /// Makes sure that the options can be obeyed, once the command line was parsed.
    /// @throw UsageError, or ToolError with the exit code for wrong usage
    void check();

    FltLoader makeLoader() const { return loaderOptions.makeCentringLoader(); }
    std::string const& input() const { return inputs.front(); } ///< Empty for an empty window.

    std::string select;     ///< A part of the name of what is selected at first; empty for nothing.
    std::string screenshot; ///< Where to save a picture of the window before the program ends; empty to stay.
    OutputFile::Existing existing = OutputFile::Existing::replace; ///< A screenshot that is there already.
    int width = 0;
    int height = 0;
    bool hasSize = false; ///< Whether somebody asked for that size.
    bool watches = false;
    bool lightsAll = false;
    bool prints = false;
    bool printsWidgets = false;

private:
    LoaderOptions loaderOptions;
    std::vector<std::string> inputs;
    std::string sizeText;
};

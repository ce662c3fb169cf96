#include "view/ViewOptions.h"

#include "support/OutputFile.h"
#include "view/ViewKeys.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr int smallestSide = 100;
constexpr int largestSide = 8192;
constexpr char defaultSize[] = "1280x800";

} // namespace

ProgramDescription ViewOptions::description()
{
    return {
        "fltview",
        "look at OpenFlight databases in a window",
        "[FILE.flt]",
        {"Shows the picture, the tree of the scene and the fields of its records side by side. Degrees of "
         "freedom, switches and levels of detail can be set by hand.",
         "Drag to turn, with the middle button to move, turn the wheel to zoom. A click in the picture or "
         "in the tree selects, a double click brings the selection into the picture. F1 in the window shows "
         "all "
         "keys.",
         "The files that were opened last, size, docks and style of the window are kept in "
         "~/.config/VelloReader/fltview.conf, and the files also in the desktop's own list."},
        {{"fltview airfield.flt", "look at a database"},
         {"fltview --watch airfield.flt", "load it again whenever it changes, from the same place"},
         {"fltview --texture-path ~/textures tower.flt", "look for its textures there too"},
         {"fltview --select hangar -o hangar.png airfield.flt", "save what the window shows, and end"}},
        ExitCode::wrongUsage,
        {"flt2iv", "flt2gltf", "fltshot", "fltinfo", "fltcheck"},
        ViewKeys::all()};
}

ViewOptions::ViewOptions(Program& program) : loaderOptions(program)
{
    program.flag("--watch", watches, "Load the database again when a file of it changes.");
    program.flag("--light", lightsAll, "Light all faces, also those that the database doesn't have lit.");
    program.value("--select", select, "NAME", "Select the first node whose name holds this.");
    program.value("-o,--screenshot", screenshot, "OUT.png",
                  "Save a picture of the window (.png, .jpg, .ppm), and end.", ".png");
    program.noClobberOption(existing);
    program.value(
        "--size", sizeText, "WxH",
        std::string("Width and height of the window in pixels. Default: as it was last, at first ") +
            defaultSize + ".");
    program.flag(
        "--print", prints,
        "Print a line on standard output for whatever gets loaded or selected, with its kind and the "
        "place of its record, and for the box around the selection when it changes.");
    program.flag("--print-widgets", printsWidgets,
                 "Print where fields and buttons are on the screen, for programs that press them.");
    program.inputs(inputs, false);
}

void ViewOptions::check()
{
    char rest;
    hasSize = !sizeText.empty();
    if (!hasSize)
        sizeText = defaultSize;
    if (std::sscanf(sizeText.c_str(), "%5dx%5d%c", &width, &height, &rest) != 2 ||
        std::min(width, height) < smallestSide || std::max(width, height) > largestSide)
        throw UsageError("--size " + sizeText + ": give width and height in pixels from " +
                         std::to_string(smallestSide) + " to " + std::to_string(largestSide) +
                         ", as in 1280x800");
    if (inputs.size() > 1)
        throw UsageError("one database at a time can be shown");
    if (inputs.empty() && !screenshot.empty())
        throw UsageError("--screenshot needs a database to show");
    if (!screenshot.empty())
        OutputFile::checkEnding(screenshot, {".png", ".jpg", ".jpeg", ".ppm"});
    inputs.resize(1);
}

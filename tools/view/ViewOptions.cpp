#include "view/ViewOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

namespace
{

constexpr int wrongUsage = 2;
constexpr int largestSide = 8192;

constexpr char description[] =
    "Examples:\n"
    "  fltview airfield.flt                          look at a database\n"
    "  fltview --watch airfield.flt                  load it again whenever it changes, from the same place\n"
    "  fltview --texture-path ~/textures tower.flt   look for its textures there too\n"
    "  fltview --select hangar -o hangar.png airfield.flt\n"
    "                                                save what the window shows, and end\n"
    "\n"
    "Shows an OpenFlight scene database (.flt) in a window: the picture, the tree of the scene and the "
    "fields\n"
    "of its records side by side.";

constexpr char footer[] =
    "Drag to turn, with the middle button to move, turn the wheel to zoom. A click in the "
    "picture or in the tree\n"
    "selects, a double click brings the selection into the picture.\n"
    "\n"
    "Exit codes: 0 done, 1 the database can't be loaded or the picture written, or there is "
    "no display, 2 wrong usage.";

} // namespace

int ViewOptions::parse(int argc, char** argv)
{
    CLI::App app(description, "fltview");
    app.footer(footer);
    app.add_option("IN.flt", input, "The database to show");
    app.add_option("--texture-path", texturePath,
                   "Look for textures in this directory too; may be given again")
        ->type_name("DIR")
        ->expected(1);
    app.add_flag("--watch", watches, "Load the database again when a file of it changes");
    app.add_option("--select", select, "Select the first node whose name holds this")->type_name("NAME");
    auto* const picture =
        app.add_option("-o,--screenshot", screenshot, "Save a picture of the window (.png, .jpg), and end")
            ->type_name("OUT.png");
    app.add_option("--size", sizeText, "Width and height of the window in pixels, as in 1280x800")
        ->type_name("WxH");
    app.add_flag("--print", prints,
                 "Print a line on standard output for whatever gets selected: name, kind and byte offset");
    app.add_flag("--print-widgets", printsWidgets)->group(""); // for tests, not in the help
    app.add_flag("--exact", exact, "Convert as the plug-in does, rather than to show as much as possible");
    app.set_version_flag("--version", "fltview " VELLOREADER_VERSION, "Print the version and exit");
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? 0 : wrongUsage;
    }
    char rest;
    if (!sizeText.empty() && (std::sscanf(sizeText.c_str(), "%5dx%5d%c", &width, &height, &rest) != 2 ||
                              std::min(width, height) < 100 || std::max(width, height) > largestSide)) {
        std::fprintf(stderr,
                     "fltview: --size %s: give width and height in pixels from 100 to %d, as in 1280x800.\n",
                     sizeText.c_str(), largestSide);
        return wrongUsage;
    }
    if (picture->count() > 0 && input.empty()) {
        std::fprintf(stderr, "fltview: --screenshot needs a database to show.\n");
        return wrongUsage;
    }
    return -1;
}

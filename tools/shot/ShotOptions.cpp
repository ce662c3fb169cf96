#include "shot/ShotOptions.h"

#include "shot/ContactSheet.h"
#include "shot/NamedView.h"
#include "support/DatabaseFiles.h"
#include "support/FileEnding.h"
#include "support/OutputFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace
{

constexpr int largestSide = 4096;
constexpr int largestThumbnail = 1024;

/// A sheet that holds more pixels would take too much memory.
constexpr long long mostPixelsOfSheet = 1LL << 26;

/// Of JPEG.
constexpr long long longestSideOfSheet = 65500;

/// Farther away floats don't hold a place.
constexpr double largestPlace = 1e30;

constexpr char const* defaultSize = "1280x720";
constexpr char const* defaultSizeInSheet = "320x180";

constexpr NamedView defaultView = {"", 150, 20};

std::vector<std::string> namesOfViews()
{
    std::vector<std::string> names;
    names.reserve(std::size(namedViews));
    for (NamedView const& view : namedViews)
        names.emplace_back(view.name);
    return names;
}

std::optional<SbVec3d> placeFromText(std::string const& text)
{
    std::array<double, 3> place{};
    char rest;
    if (std::sscanf(text.c_str(), "%lf,%lf,%lf%c", &place[0], &place[1], &place[2], &rest) != 3 ||
        !std::all_of(place.begin(), place.end(),
                     [](double number) { return std::abs(number) <= largestPlace; }))
        return std::nullopt;
    return SbVec3d(place.data());
}

/// "fltshot a.flt out.png" means an output.
std::string meantOutput(std::vector<std::string> const& inputs)
{
    std::string const& last = inputs.back();
    std::string const ending = FileEnding::of(last);
    bool const isPicture = ending == ".png" || ending == ".jpg" || ending == ".jpeg";
    return isPicture ? "; did you mean -o " + last + "?" : "";
}

} // namespace

ProgramDescription ShotOptions::description()
{
    return {
        "fltshot",
        "draw OpenFlight databases into pictures",
        "-o OUT.png FILE.flt|DIR...",
        {"Needs no window, X server or graphics card. The z axis points up and the y axis north, as is usual "
         "in "
         "OpenFlight.",
         "Several databases make a sheet of small pictures, each with its name below it; a directory stands "
         "for all in it and below it.",
         "The picture takes its place when it is whole; what stood there before stays until then. It never "
         "replaces the database, its log, or a file that the database refers to. A picture that would show "
         "nothing isn't written: the program says why, and exits with 1."},
        {{"fltshot airfield.flt -o airfield.png", "the whole scene, from the south-east and above"},
         {"fltshot airfield.flt -o top.png --view top", "straight from above, north at the top"},
         {"fltshot airfield.flt -o tower.jpg --fit tower", "a part of it, as JPEG"},
         {"fltshot wand.flt -o wand.png --transparent", "without a background"},
         {"fltshot *.flt -o all.png", "many databases on one sheet"}},
        ExitCode::wrongUsage,
        {"flt2iv", "flt2gltf", "fltinfo", "fltcheck"}};
}

ShotOptions::ShotOptions(Program& program)
{
    program.value("-o,--output", output, "OUT.png",
                  "The picture to write: PNG, or JPEG if the name ends in .jpg. - is standard output.",
                  ".png");
    program.value("--size", sizeText, "WxH",
                  std::string("Width and height in pixels, of each picture on a sheet. Default: ") +
                      defaultSize + ", on a sheet " + defaultSizeInSheet + ".");
    program.choice(
        "--view", viewText, namesOfViews(), "VIEW",
        "From where to look: top (north at the top), bottom (south at the top), front (from the "
        "south), back (from the north), left (from the west), right or side (from the east), or iso "
        "(from the south-east and above).");
    program.value(
        "--from", fromText, "AZ,EL",
        "The same in degrees: azimuth clockwise from north and elevation above the horizon. Default: "
        "150,20.");
    program.value("--eye", eyeText, "X,Y,Z",
                  "Where the viewer stands, in the coordinates of the database in metres.");
    program.value(
        "--look-at", lookAtText, "NAME|X,Y,Z",
        "What is in the middle of the picture: a node or a place. Default: the middle of the scene.");
    program.value("--fit", fitName, "NAME", "Fill the picture with the part of the scene below this node.");
    program.value(
        "--zoom", zoomText, "FACTOR",
        "Nearer (above 1) or farther (below 1) than the whole scene needs; with --eye, a narrower or a "
        "wider view.");
    program.value(
        "--background", backdropText, "COLOUR",
        "sky, #rrggbb, a name such as white, or two of them from the top: navy,#ffffff. Default: sky.");
    program.flag("--transparent", style.isTransparent, "No background: an alpha channel in the PNG.");
    program.flag("--wireframe", style.isWireframe, "Draw the edges of all faces alone.");
    program.flag("--two-sided", style.isTwoSided, "Draw both sides of all faces.");
    program.flag("--light", style.lightsAll,
                 "Light all faces, also those that the database doesn't have lit.");
    program.value("--columns", columnsText, "N",
                  "How many pictures to put side by side on a sheet. Default: about as many as rows.");
    program.value(
        "--thumbnail", thumbnailText, "N",
        "A picture of N by N pixels for a file manager: little time and memory, and no file from outside "
        "the database's directory.");
    program.noClobberOption(existing);
    program.inputs(inputs);
}

void ShotOptions::check()
{
    if (output.empty())
        throw UsageError("-o OUT.png is required" + meantOutput(inputs));
    OutputFile::checkEnding(output, {".png", ".jpg", ".jpeg"});
    findDatabases();
    checkContradictions();
    readDirection();
    readPlaces();
    readColumns();
    readSize();
    style.hasSmallPoints = isSheet() || isThumbnail;
    if (std::optional<Backdrop> const backdrop =
            Backdrop::fromText(backdropText.empty() ? "sky" : backdropText))
        style.backdrop = *backdrop;
    else
        throw UsageError("--background " + backdropText +
                         ": give sky, a colour such as #8090a0 or white, or two with a comma between them");
}

void ShotOptions::findDatabases()
{
    hasDirectory = std::any_of(inputs.begin(), inputs.end(), DatabaseFiles::isDirectory);
    DatabaseFiles found = DatabaseFiles::named(inputs);
    inputs = std::move(found.files);
    problems = std::move(found.problems);
}

bool ShotOptions::isJpeg() const
{
    std::string const ending = FileEnding::of(output);
    return ending == ".jpg" || ending == ".jpeg";
}

void ShotOptions::checkContradictions() const
{
    auto const refuseBoth = [](bool one, char const* nameOfOne, bool other, char const* nameOfOther) {
        if (one && other)
            throw UsageError(std::string(nameOfOne) + " and " + nameOfOther + " contradict each other");
    };
    bool const hasEye = !eyeText.empty();
    refuseBoth(!viewText.empty(), "--view", !fromText.empty(), "--from");
    refuseBoth(hasEye, "--eye", !viewText.empty(), "--view");
    refuseBoth(hasEye, "--eye", !fromText.empty(), "--from");
    refuseBoth(hasEye, "--eye", !fitName.empty(), "--fit");
    refuseBoth(!lookAtText.empty(), "--look-at", !fitName.empty(), "--fit");
    refuseBoth(style.isTransparent, "--transparent", !backdropText.empty(), "--background");
    refuseBoth(!thumbnailText.empty(), "--thumbnail", !sizeText.empty(), "--size");
    refuseBoth(!thumbnailText.empty(), "--thumbnail", isSheet(), "a sheet of several pictures");
    if (style.isTransparent && isJpeg())
        throw UsageError("--transparent: JPEG has no alpha channel. Give -o a name that ends in .png");
}

void ShotOptions::readSize()
{
    char rest;
    if (!thumbnailText.empty()) {
        isThumbnail = true;
        if (std::sscanf(thumbnailText.c_str(), "%5d%c", &style.width, &rest) != 1 || style.width < 1 ||
            style.width > largestThumbnail)
            throw UsageError("--thumbnail " + thumbnailText + ": give a number of pixels from 1 to " +
                             std::to_string(largestThumbnail));
        style.height = style.width;
        return;
    }
    std::string const text = !sizeText.empty() ? sizeText : isSheet() ? defaultSizeInSheet : defaultSize;
    if (std::sscanf(text.c_str(), "%5dx%5d%c", &style.width, &style.height, &rest) != 2 ||
        std::min(style.width, style.height) < 1 || std::max(style.width, style.height) > largestSide)
        throw UsageError("--size " + text + ": give width and height in pixels from 1 to " +
                         std::to_string(largestSide) + ", as in " + defaultSize);
    ContactSheet::Layout layout;
    layout.count = static_cast<int>(inputs.size());
    layout.columns = columns;
    layout.width = style.width;
    layout.height = style.height;
    if (isSheet() && (std::max(layout.sheetWidth(), layout.sheetHeight()) > longestSideOfSheet ||
                      layout.sheetWidth() * layout.sheetHeight() > mostPixelsOfSheet))
        throw UsageError("a sheet of " + std::to_string(inputs.size()) +
                         " pictures would be too large with " + text + " pixels each. Give a smaller --size");
}

void ShotOptions::readDirection()
{
    NamedView view = defaultView;
    for (NamedView const& one : namedViews)
        if (one.name == viewText)
            view = one;
    azimuth = view.azimuth;
    elevation = view.elevation;
    char rest;
    if (!fromText.empty() && (std::sscanf(fromText.c_str(), "%f,%f%c", &azimuth, &elevation, &rest) != 2 ||
                              !(std::abs(azimuth) <= 360) || !(std::abs(elevation) <= 90)))
        throw UsageError(
            "--from " + fromText +
            ": give azimuth and elevation in degrees, as in 150,20 (azimuth -360 to 360, elevation "
            "-90 to 90)");
    if (std::sscanf(zoomText.c_str(), "%f%c", &zoom, &rest) != 1 || !(zoom >= 0.01f) || !(zoom <= 100.0f))
        throw UsageError("--zoom " + zoomText + ": give a factor from 0.01 to 100");
}

void ShotOptions::readPlaces()
{
    eye = placeFromText(eyeText);
    if (!eyeText.empty() && !eye)
        throw UsageError("--eye " + eyeText + ": give three numbers, as in 100,-20,5");
    lookAtPlace = placeFromText(lookAtText);
    lookAtName = lookAtPlace ? "" : lookAtText;
}

void ShotOptions::readColumns()
{
    char rest;
    if (!columnsText.empty() &&
        (std::sscanf(columnsText.c_str(), "%5d%c", &columns, &rest) != 1 || columns < 1))
        throw UsageError("--columns " + columnsText + ": give a number from 1 on");
}

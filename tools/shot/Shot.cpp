#include "shot/Shot.h"

#include "shot/BlankShapes.h"
#include "shot/CameraPlace.h"
#include "shot/Ceilings.h"
#include "shot/DrawnPoints.h"
#include "shot/EmptyPicture.h"
#include "shot/NodeSearch.h"
#include "shot/SceneDrawing.h"
#include "support/ToolError.h"

#include "loader/FltLoadError.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SoPath.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cmath>
#include <filesystem>
#include <optional>

namespace
{

/// Enough for what people look at in folders; a file manager doesn't wait longer either.
constexpr Ceilings::Limits limitsOfThumbnail = {20, 30, std::uint64_t{2} << 30};
constexpr std::uint64_t largestFileOfThumbnail = std::uint64_t{256} << 20;

constexpr float heightAngle = 32 * static_cast<float>(M_PI / 180);

std::string listOf(std::vector<std::string> const& names)
{
    std::string list;
    for (std::string const& name : names)
        list += (list.empty() ? "" : ", ") + name;
    return list;
}

} // namespace

Shot::Shot(Program const& program, ShotOptions const& options, LoaderOptions const& loaderOptions,
           SceneMessages const& messages)
    : program(program), options(options), loaderOptions(loaderOptions), messages(messages)
{
}

Picture Shot::take(std::string const& database)
{
    std::optional<Ceilings> ceilings;
    if (options.isThumbnail)
        ceilings.emplace(limitsOfThumbnail, program.name() + ": " + database);
    FltScene const scene = load(database);
    std::vector<SbVec3f> const points = DrawnPoints::of(scene.root());
    if (points.empty())
        throw ToolError(database + ": " + EmptyPicture::reasonWithoutPoints(scene.root()));
    SoNodeRef<SoPerspectiveCamera> const camera = makeCamera(database, scene, points);
    Picture picture = SceneDrawing::draw(scene.root(), camera.get(), options.style);
    if (SceneDrawing::isEmpty(picture, options.style))
        throw ToolError(database + ": " + EmptyPicture::reason(scene.root(), camera.get(), options.style));
    return picture;
}

FltScene Shot::load(std::string const& database)
{
    program.detail("reading " + database);
    kept.push_back({database, "the input"});
    FltScene scene =
        options.isThumbnail ? loadCarefully(database) : loaderOptions.makeCentringLoader().load(database);
    messages.show(scene);
    tellOfBlankShapes(database, scene);
    for (KeptFile& file : loaderOptions.keptFiles(database, scene))
        kept.push_back(std::move(file));
    return scene;
}

/// A white blob looks like a mistake of the program, and is none.
void Shot::tellOfBlankShapes(std::string const& database, FltScene const& scene) const
{
    std::size_t const count = options.style.lightsAll ? 0 : BlankShapes::countIn(scene.root());
    if (count > 0)
        program.warn(database + ": " + std::to_string(count) +
                     (count == 1
                          ? " shape is plain white: it isn't lit, and its texture is missing."
                          : " shapes are plain white: they aren't lit, and their textures are missing.") +
                     " --light shows the form, --texture-path DIR finds textures.");
}

/// For a file manager. A database that is too large is no wrong usage: nobody chose it.
FltScene Shot::loadCarefully(std::string const& database) const
{
    FltLoader loader = loaderOptions.makeCentringLoader();
    loader.largestFile = largestFileOfThumbnail;
    loader.onlyBelow = std::filesystem::path(database).parent_path().string();
    try {
        return loader.load(database);
    } catch (FltLoadError const& problem) {
        throw ToolError(problem.what());
    }
}

SoNodeRef<SoPerspectiveCamera> Shot::makeCamera(std::string const& database, FltScene const& scene,
                                                std::vector<SbVec3f> const& points) const
{
    SoNodeRef<SoPerspectiveCamera> camera(new SoPerspectiveCamera);
    camera->viewportMapping = SoCamera::ADJUST_CAMERA;
    camera->heightAngle = heightAngle;
    camera->orientation = CameraPlace::lookingFrom(options.azimuth, options.elevation);
    float const aspect = static_cast<float>(options.style.width) / static_cast<float>(options.style.height);
    SbVec3d const offset(scene.info().offset);
    std::optional<SbVec3f> target;
    if (options.lookAtPlace)
        target = SbVec3f(*options.lookAtPlace - offset);
    if (!options.lookAtName.empty())
        target = CameraPlace::middleOf(pointsBelow(database, scene.root(), "--look-at", options.lookAtName));
    if (options.eye) {
        if (!CameraPlace::stand(*camera, SbVec3f(*options.eye - offset),
                                target ? *target : CameraPlace::middleOf(points), options.zoom))
            throw ToolError(database + ": --eye is the place to look at. Choose another one.",
                            ExitCode::wrongUsage);
    } else if (!options.fitName.empty()) {
        CameraPlace::fit(*camera, pointsBelow(database, scene.root(), "--fit", options.fitName), aspect,
                         options.zoom);
    } else if (target) {
        CameraPlace::fitAround(*camera, *target, points, aspect, options.zoom);
    } else {
        CameraPlace::fit(*camera, points, aspect, options.zoom);
    }
    CameraPlace::includeDepth(*camera, points);
    return camera;
}

/// The points of the part that an option names.
std::vector<SbVec3f> Shot::pointsBelow(std::string const& database, SoSeparator* scene, char const* option,
                                       std::string const& name) const
{
    SoPath* const path = NodeSearch::find(scene, name);
    if (path == nullptr) {
        std::string const like = listOf(NodeSearch::namesLike(scene, name));
        throw ToolError(database + ": " + option + " " + name + ": no node of the scene has this name. " +
                        (like.empty() ? "fltinfo --tree lists the names." : "Names like it: " + like + "."));
    }
    std::vector<SbVec3f> points = DrawnPoints::of(path);
    path->unref();
    if (points.empty())
        throw ToolError(database + ": " + option + " " + name +
                        ": nothing is drawn below this node: it is empty, or hidden by a switch.");
    return points;
}

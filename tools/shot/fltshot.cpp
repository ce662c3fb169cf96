// Draws an OpenFlight database into a PNG picture, without a window or an X server.

#include "shot/EglOffscreen.h"
#include "support/LoaderOptions.h"
#include "support/OutputFile.h"
#include "support/PngFile.h"
#include "support/Program.h"
#include "support/SceneMessages.h"
#include "support/ToolError.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDepthBuffer.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoEnvironment.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace
{

constexpr int largestSide = 4096;

struct Options {
    std::vector<std::string> inputs;
    std::string output;
    std::string sizeText = "1280x720";
    std::string fromText = "150,20";
    std::string zoomText = "1";
    int width = 0;
    int height = 0;
    float azimuth = 0;
    float elevation = 0;
    float zoom = 1;
};

ProgramDescription description()
{
    return {"fltshot",
            "draw OpenFlight databases into pictures",
            "-o OUT.png FILE.flt",
            {"Needs no window, X server or graphics card. The z axis points up and the y axis north, as is "
             "usual in OpenFlight.",
             "The picture takes its place when it is whole; what stood there before stays until then. It "
             "never replaces the database, its log, or a file that the database refers to."},
            {{"fltshot airfield.flt -o airfield.png", "the whole scene, from the south-east and above"},
             {"fltshot airfield.flt -o top.png --from 180,89", "straight from above, north at the top"},
             {"fltshot wand.flt -o icon.png --size 128x128", "a thumbnail"}},
            ExitCode::wrongUsage,
            {"flt2iv", "fltinfo", "fltcheck"}};
}

float radians(float degrees)
{
    return degrees * static_cast<float>(M_PI / 180);
}

/// Reads the numbers from their texts.
/// @throw ToolError if one of them is wrong
void readTexts(Options& options)
{
    char rest;
    if (std::sscanf(options.sizeText.c_str(), "%5dx%5d%c", &options.width, &options.height, &rest) != 2 ||
        std::min(options.width, options.height) < 1 || std::max(options.width, options.height) > largestSide)
        throw ToolError("--size " + options.sizeText + ": give width and height in pixels from 1 to " +
                            std::to_string(largestSide) + ", as in 1280x720.",
                        ExitCode::wrongUsage);
    if (std::sscanf(options.fromText.c_str(), "%f,%f%c", &options.azimuth, &options.elevation, &rest) != 2 ||
        !(std::abs(options.azimuth) <= 360) || !(std::abs(options.elevation) <= 90))
        throw ToolError("--from " + options.fromText +
                            ": give azimuth and elevation in degrees, as in 150,20 (azimuth -360 to 360, "
                            "elevation -90 to 90).",
                        ExitCode::wrongUsage);
    if (std::sscanf(options.zoomText.c_str(), "%f%c", &options.zoom, &rest) != 1 ||
        !(options.zoom >= 0.01f) || !(options.zoom <= 100.0f))
        throw ToolError("--zoom " + options.zoomText + ": give a factor from 0.01 to 100.",
                        ExitCode::wrongUsage);
}

/// The turn of a camera that looks from a compass direction and a height above the horizon, z up.
SbRotation viewFrom(float azimuth, float elevation)
{
    // A camera looks along -z with y up: raise it to the horizon, then turn it about the z axis.
    return SbRotation(SbVec3f(1, 0, 0), radians(90 - elevation)) *
           SbRotation(SbVec3f(0, 0, 1), radians(180 - azimuth));
}

/// The corners of all faces that are drawn: the picture is fitted to them, more tightly than to their box.
class DrawnPoints
{
public:
    explicit DrawnPoints(SoNode* scene)
    {
        SoCallbackAction action;
        action.addPreCallback(SoIndexedFaceSet::getClassTypeId(), take, this);
        action.apply(scene);
    }

    std::vector<SbVec3f> points;

private:
    static SoCallbackAction::Response take(void* self, SoCallbackAction* action, SoNode const* node)
    {
        auto& points = static_cast<DrawnPoints*>(self)->points;
        auto const* const faces = static_cast<SoIndexedFaceSet const*>(node);
        auto const* const property = static_cast<SoVertexProperty const*>(faces->vertexProperty.getValue());
        for (int i = 0; property != nullptr && i < faces->coordIndex.getNum(); ++i) {
            int const index = faces->coordIndex[i];
            if (index < 0 || index >= property->vertex.getNum())
                continue;
            SbVec3f point;
            action->getModelMatrix().multVecMatrix(property->vertex[index], point);
            if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]))
                points.push_back(point);
        }
        // No triangles are wanted, and the toolkit can't make them of faces without materials.
        return SoCallbackAction::PRUNE;
    }
};

/// Moves a camera of given orientation as near as all points still allow.
void fit(SoPerspectiveCamera& camera, std::vector<SbVec3f> const& points, float aspect, float zoom)
{
    SbMatrix turn;
    turn.setRotate(camera.orientation.getValue());
    SbMatrix const turnBack = turn.inverse();
    float const upSlope = std::tan(camera.heightAngle.getValue() / 2);
    float const slopes[2] = {upSlope * aspect, upSlope};

    // In each axis of the picture: how far the points reach to both sides, brought to the camera's depth 0.
    float above[2] = {-HUGE_VALF, -HUGE_VALF};
    float below[2] = {-HUGE_VALF, -HUGE_VALF};
    float nearest = -HUGE_VALF;
    float farthest = HUGE_VALF;
    for (SbVec3f const& place : points) {
        SbVec3f point;
        turnBack.multVecMatrix(place, point);
        for (int axis = 0; axis < 2; ++axis) {
            above[axis] = std::max(above[axis], point[axis] + slopes[axis] * point[2]);
            below[axis] = std::max(below[axis], -point[axis] + slopes[axis] * point[2]);
        }
        nearest = std::max(nearest, point[2]);
        farthest = std::min(farthest, point[2]);
    }
    float const tight =
        std::max((above[0] + below[0]) / (2 * slopes[0]), (above[1] + below[1]) / (2 * slopes[1]));
    float const middle = (nearest + farthest) / 2;
    float const distance = std::max((tight - middle) * 1.03f / zoom, 1e-6f);
    SbVec3f place((above[0] - below[0]) / 2, (above[1] - below[1]) / 2, middle + distance);
    turn.multVecMatrix(place, place);
    camera.position = place;

    float const reach = std::max((nearest - farthest) / 2, distance / 1000);
    camera.nearDistance = std::max((distance - reach) * 0.9f, distance / 1000);
    camera.farDistance = distance + reach * 1.1f;
    camera.focalDistance = distance;
}

/// A sky that is pale at the bottom of the picture.
SoSeparator* makeSky()
{
    auto* sky = new SoSeparator;
    auto* depth = new SoDepthBuffer;
    depth->test = false;
    depth->write = false;
    sky->addChild(depth);
    sky->addChild(new SoOrthographicCamera);
    auto* camera = static_cast<SoOrthographicCamera*>(sky->getChild(1));
    camera->viewportMapping = SoCamera::LEAVE_ALONE;
    camera->aspectRatio = 1;
    camera->height = 2;
    camera->position.setValue(0, 0, 1);
    camera->nearDistance = 0.5f;
    camera->farDistance = 2;
    auto* light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    sky->addChild(light);
    auto* material = new SoMaterial;
    SbColor const low(0.86f, 0.90f, 0.94f);
    SbColor const high(0.36f, 0.55f, 0.80f);
    SbColor const colors[4] = {low, low, high, high};
    material->diffuseColor.setValues(0, 4, colors);
    sky->addChild(material);
    auto* binding = new SoMaterialBinding;
    binding->value = SoMaterialBinding::PER_VERTEX;
    sky->addChild(binding);
    auto* corners = new SoCoordinate3;
    SbVec3f const points[4] = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    corners->point.setValues(0, 4, points);
    sky->addChild(corners);
    sky->addChild(new SoFaceSet);
    return sky;
}

/// A light that shines in a direction of the camera's own axes.
SoDirectionalLight* makeLight(SoCamera const& camera, SbVec3f direction, float intensity)
{
    auto* light = new SoDirectionalLight;
    camera.orientation.getValue().multVec(direction, direction);
    light->direction = direction;
    light->intensity = intensity;
    return light;
}

/// The scene below a sky, a camera and its headlights.
SoSeparator* makePicture(SoSeparator* scene, Options const& options)
{
    DrawnPoints const drawn(scene);
    if (drawn.points.empty())
        throw ToolError(options.inputs.front() + ": the database holds nothing that can be drawn.");

    auto* camera = new SoPerspectiveCamera;
    camera->viewportMapping = SoCamera::ADJUST_CAMERA;
    camera->heightAngle = radians(32);
    camera->orientation = viewFrom(options.azimuth, options.elevation);
    fit(*camera, drawn.points, static_cast<float>(options.width) / static_cast<float>(options.height),
        options.zoom);

    // The sun over the viewer's left shoulder, so that relief shows, and a weaker light against it. There is
    // hardly any ambient light: the toolkit takes the ambient colour of all faces of a set from the first.
    auto* surroundings = new SoEnvironment;
    surroundings->ambientIntensity = 0.05f;

    auto* picture = new SoSeparator;
    picture->addChild(makeSky());
    picture->addChild(camera);
    picture->addChild(surroundings);
    picture->addChild(makeLight(*camera, SbVec3f(0.62f, -0.55f, -0.56f), 1.0f));
    picture->addChild(makeLight(*camera, SbVec3f(-0.6f, -0.2f, -0.77f), 0.42f));
    picture->addChild(scene);
    return picture;
}

/// Draws at twice the size, and averages four pixels into one: smooth edges on every driver.
Picture draw(SoNode* scene, int width, int height)
{
    constexpr int fine = 2;
    SoOffscreenRenderer renderer(
        SbViewportRegion(static_cast<short>(width * fine), static_cast<short>(height * fine)));
    renderer.setComponents(SoOffscreenRenderer::RGB);
    renderer.getGLRenderAction()->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_SORTED_TRIANGLE_BLEND);
    if (!renderer.render(scene))
        throw ToolError("the picture can't be drawn off screen. Check the OpenGL driver: apt-get install "
                        "libegl-mesa0 libgl1-mesa-dri");

    Picture picture(width, height);
    unsigned char const* const buffer = renderer.getBuffer();
    auto const sample = [&](int x, int y) { return buffer + (std::size_t(y) * width * fine + x) * 3; };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < 3; ++channel) {
                int sum = 0;
                for (int i = 0; i < fine * fine; ++i)
                    sum += sample(x * fine + i % fine, (height - 1 - y) * fine + i / fine)[channel];
                picture.at(x, y)[channel] = static_cast<unsigned char>((sum + fine) / (fine * fine));
            }
    return picture;
}

ExitCode shoot(Program const& program, Options& options, LoaderOptions const& loaderOptions)
{
    EglOffscreen::install();
    readTexts(options);
    if (options.output.empty())
        throw UsageError("-o OUT.png is required");
    OutputFile::checkEnding(options.output, {".png"});
    if (options.inputs.size() > 1)
        throw UsageError("one database at a time, please");
    SceneMessages const messages(program);
    if (char const* problem = EglOffscreen::missing())
        throw ToolError(problem);
    std::string const& input = options.inputs.front();
    program.detail("reading " + input);
    FltScene const scene = loaderOptions.makeLoader().load(input);
    messages.show(scene);
    OutputFile output(options.output, loaderOptions.keptFiles(input, scene));
    if (output.isTerminal())
        throw ToolError("a picture would upset the terminal. Give -o a file.", ExitCode::wrongUsage);
    SoSeparator* const picture = makePicture(scene.root(), options);
    picture->ref();
    std::string const problem = writePng(draw(picture, options.width, options.height), output.stream());
    picture->unref();
    if (!problem.empty())
        throw ToolError(options.output + ": cannot write: " + problem + ". Choose another size.");
    output.commit();
    return ExitCode::success;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    Program program(description());
    program.value("-o,--output", options.output, "OUT.png", "The picture to write.", ".png");
    program.value("--size", options.sizeText, "WxH", "Width and height in pixels.");
    program.value("--from", options.fromText, "AZ,EL",
                  "Where the viewer stands: azimuth clockwise from north and elevation above the horizon, in "
                  "degrees.");
    program.value("--zoom", options.zoomText, "FACTOR",
                  "Nearer (above 1) or farther (below 1) than the whole scene needs.");
    LoaderOptions const loaderOptions(program);
    program.inputs(options.inputs);
    return program.run(argc, argv, [&] { return shoot(program, options, loaderOptions); });
}

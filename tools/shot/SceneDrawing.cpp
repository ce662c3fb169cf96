#include "shot/SceneDrawing.h"

#include "shot/BothSides.h"
#include "shot/FinerSizes.h"
#include "support/ToolError.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoEnvironment.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <algorithm>
#include <cstdlib>

namespace
{

/// How many pixels of the finer picture, which is drawn, lie side by side in one of the result.
constexpr int fineness = 2;

/// A light that shines in a direction of the camera's own axes.
SoDirectionalLight* makeLight(SoCamera const& camera, SbVec3f direction, float intensity)
{
    auto* light = new SoDirectionalLight;
    camera.orientation.getValue().multVec(direction, direction);
    light->direction = direction;
    light->intensity = intensity;
    return light;
}

/// What makes all shapes after it show both sides that nothing else is said of.
SoShapeHints* makeTwoSided()
{
    auto* hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    hints->shapeType = SoShapeHints::UNKNOWN_SHAPE_TYPE;
    hints->faceType.setIgnored(true);
    hints->creaseAngle.setIgnored(true);
    return hints;
}

/// What makes edges of all faces after it.
SoDrawStyle* makeWireframe()
{
    auto* lines = new SoDrawStyle;
    lines->style = SoDrawStyle::LINES;
    lines->lineWidth = static_cast<float>(fineness);
    lines->pointSize.setIgnored(true);
    lines->linePattern.setIgnored(true);
    lines->setOverride(true);
    return lines;
}

/// What makes all points after it as small as can be.
SoDrawStyle* makeSmallPoints()
{
    auto* points = new SoDrawStyle;
    points->pointSize = static_cast<float>(fineness);
    points->style.setIgnored(true);
    points->lineWidth.setIgnored(true);
    points->linePattern.setIgnored(true);
    points->setOverride(true);
    return points;
}

/// What has light fall on all shapes after it.
SoLightModel* makeLit()
{
    auto* const light = new SoLightModel;
    light->setOverride(true);
    return light;
}

/// The scene below a backdrop, a camera and its headlights.
SoNodeRef<SoSeparator> makePicture(SoNode* scene, SoPerspectiveCamera* camera, Backdrop const& backdrop,
                                   DrawingStyle const& style)
{
    // No side is black: the second light shines against the sun, the third from below, and the ambient light
    // is that of an SoEnvironment that a scene may have for its own lights.
    auto* const surroundings = new SoEnvironment;

    SoNodeRef<SoSeparator> picture(new SoSeparator);
    picture->addChild(backdrop.makeNodes());
    picture->addChild(camera);
    picture->addChild(surroundings);
    picture->addChild(makeLight(*camera, SbVec3f(0.62f, -0.55f, -0.56f), 0.75f));
    picture->addChild(makeLight(*camera, SbVec3f(-0.6f, -0.2f, -0.77f), 0.3f));
    picture->addChild(makeLight(*camera, SbVec3f(0.1f, 0.8f, -0.6f), 0.18f));
    picture->addChild(FinerSizes::makeUsual(fineness));
    if (style.lightsAll)
        picture->addChild(makeLit());
    if (style.isTwoSided || style.isWireframe)
        picture->addChild(makeTwoSided());
    if (style.isWireframe)
        picture->addChild(makeWireframe());
    if (style.hasSmallPoints)
        picture->addChild(makeSmallPoints());
    picture->addChild(scene);
    return picture;
}

/// Colours and their opacity, from the same picture before black and before white.
Picture withAlpha(Picture const& onBlack, Picture const& onWhite)
{
    Picture picture(onBlack.width, onBlack.height, 4);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            unsigned char const* const black = onBlack.at(x, y);
            unsigned char const* const white = onWhite.at(x, y);
            int clearest = 255;
            for (int channel = 0; channel < 3; ++channel)
                clearest = std::min(clearest, white[channel] - black[channel]);
            int const alpha = std::clamp(255 - clearest, 0, 255);
            for (int channel = 0; channel < 3 && alpha > 0; ++channel)
                picture.at(x, y)[channel] =
                    static_cast<unsigned char>(std::min(255, (black[channel] * 255 + alpha / 2) / alpha));
            picture.at(x, y)[3] = static_cast<unsigned char>(alpha);
        }
    return picture;
}

/// Whether there is a row that no backdrop has: that saves drawing one to compare.
bool hasUnevenRow(Picture const& picture)
{
    constexpr int roughness = 2; // of what is the same colour
    for (int y = 0; y < picture.height; ++y)
        for (int x = 1; x < picture.width; ++x)
            for (int channel = 0; channel < 3; ++channel)
                if (std::abs(picture.at(x, y)[channel] - picture.at(0, y)[channel]) > roughness)
                    return true;
    return false;
}

} // namespace

Picture SceneDrawing::drawNodes(SoNode* nodes, int width, int height, int fine)
{
    SoOffscreenRenderer renderer(
        SbViewportRegion(static_cast<short>(width * fine), static_cast<short>(height * fine)));
    renderer.setComponents(SoOffscreenRenderer::RGB);
    renderer.getGLRenderAction()->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_SORTED_TRIANGLE_BLEND);
    if (!renderer.render(nodes))
        throw ToolError("the picture can't be drawn off screen. Check the OpenGL driver: apt-get install "
                        "libegl-mesa0 libgl1-mesa-dri");

    Picture picture(width, height);
    unsigned char const* const buffer = renderer.getBuffer();
    auto const sample = [&](int x, int y) { return buffer + (std::size_t(y) * width * fine + x) * 3; };
    int const samples = fine * fine;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < 3; ++channel) {
                int sum = 0;
                for (int i = 0; i < samples; ++i)
                    sum += sample(x * fine + i % fine, (height - 1 - y) * fine + i / fine)[channel];
                picture.at(x, y)[channel] = static_cast<unsigned char>((sum + samples / 2) / samples);
            }
    return picture;
}

Picture SceneDrawing::draw(SoNode* scene, SoPerspectiveCamera* camera, DrawingStyle const& style)
{
    BothSides const sides(style.isTwoSided || style.isWireframe ? scene : nullptr);
    FinerSizes const sizes(scene, fineness);
    auto const drawBefore = [&](Backdrop const& backdrop) {
        return drawNodes(makePicture(scene, camera, backdrop, style).get(), style.width, style.height,
                         fineness);
    };
    if (!style.isTransparent)
        return drawBefore(style.backdrop);
    SbColor const black(0, 0, 0);
    SbColor const white(1, 1, 1);
    return withAlpha(drawBefore({black, black}), drawBefore({white, white}));
}

bool SceneDrawing::isEmpty(Picture const& picture, DrawingStyle const& style)
{
    if (picture.channels == 4) {
        for (std::size_t alpha = 3; alpha < picture.pixels.size(); alpha += 4)
            if (picture.pixels[alpha] != 0)
                return false;
        return true;
    }
    if (hasUnevenRow(picture))
        return false;
    SoNodeRef<SoSeparator> const backdrop(style.backdrop.makeNodes());
    return picture.pixels == drawNodes(backdrop.get(), picture.width, picture.height, fineness).pixels;
}

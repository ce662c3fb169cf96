#include "DrawnFrames.h"

#include "shot/EglOffscreen.h"

#include <GL/gl.h>
#include <Inventor/C/glue/gl.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace
{

constexpr short size = 512;
constexpr float angleOfFrame = 0.01F;
constexpr std::uint32_t context = 1;

} // namespace

void DrawnFrames::open(bool isDriverIdle)
{
    if (isDriverIdle)
        setenv("GALLIUM_NOOP", "1", 1);
    EglOffscreen::install();
    void* const place = cc_glglue_context_create_offscreen(size, size); // until the process ends
    if (place == nullptr || cc_glglue_context_make_current(place) != TRUE)
        throw std::runtime_error("there is no OpenGL driver to draw with");
}

DrawnFrames::DrawnFrames(SoNode* scene)
    : viewport(size, size), root(new SoSeparator), camera(new SoPerspectiveCamera), action(viewport)
{
    root->renderCaching = SoSeparator::OFF;
    root->addChild(camera);
    root->addChild(new SoDirectionalLight);
    root->addChild(scene);
    SoGetBoundingBoxAction measure(viewport);
    measure.apply(scene);
    box = measure.getBoundingBox();
    action.setCacheContext(context);
    action.setTransparencyType(SoGLRenderAction::SORTED_OBJECT_SORTED_TRIANGLE_BLEND);
}

void DrawnFrames::placeCamera(Way way)
{
    constexpr float nearest = 0.002F;
    constexpr float farthest = 4;
    float const angle = angleOfFrame * static_cast<float>(frame++);
    float const radius = (box.getMax() - box.getMin()).length() / 2;
    SbVec3f const direction(std::cos(angle), std::sin(angle), 0.4F);
    if (way == Way::outside) {
        camera->position = box.getCenter() + direction * (1.6F * radius);
        camera->pointAt(box.getCenter(), SbVec3f(0, 0, 1));
    } else {
        camera->position = box.getCenter();
        camera->pointAt(box.getCenter() + direction * SbVec3f(1, 1, 0).length(), SbVec3f(0, 0, 1));
    }
    camera->nearDistance = nearest * radius;
    camera->farDistance = farthest * radius;
}

void DrawnFrames::draw(int count, Way way)
{
    for (int i = 0; i < count; ++i) {
        placeCamera(way);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        action.apply(root.get());
        glFinish();
    }
}

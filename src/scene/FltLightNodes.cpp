#include "scene/FltLightNodes.h"

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>

namespace
{

SbVec3f narrow(SbVec3d const& place)
{
    return {static_cast<float>(place[0]), static_cast<float>(place[1]), static_cast<float>(place[2])};
}

SoLight* makeOfKind(FltVisualLight const& light)
{
    switch (light.kind) {
    case FltVisualLight::Kind::local: {
        auto* const node = new SoPointLight;
        node->location = narrow(light.position);
        return node;
    }
    case FltVisualLight::Kind::spot: {
        auto* const node = new SoSpotLight;
        node->location = narrow(light.position);
        node->direction = light.direction;
        node->cutOffAngle = light.cutOffAngle;
        node->dropOffRate = light.dropOffRate;
        return node;
    }
    case FltVisualLight::Kind::infinite:
        break;
    }
    auto* const node = new SoDirectionalLight;
    node->direction = light.direction;
    return node;
}

} // namespace

SoLight* FltLightNodes::make(FltVisualLight const& light)
{
    SoLight* const node = makeOfKind(light);
    node->color = light.color;
    return node;
}

SoEnvironment* FltLightNodes::fadingOf(FltVisualLight const& light, double worldPerUnit)
{
    auto const& [constant, linear, quadratic] = light.attenuation;
    bool const isSteady = constant == 1 && linear == 0 && quadratic == 0;
    if (light.kind == FltVisualLight::Kind::infinite || isSteady || !(worldPerUnit > 0))
        return nullptr;
    auto* const node = new SoEnvironment;
    auto const unit = static_cast<float>(worldPerUnit);
    node->attenuation.setValue(quadratic / (unit * unit), linear / unit, constant);
    return node;
}

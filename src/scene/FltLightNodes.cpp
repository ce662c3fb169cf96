#include "scene/FltLightNodes.h"

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>

namespace
{

SoLight* makeOfKind(FltVisualLight const& light, SbVec3d const& zero)
{
    switch (light.kind) {
    case FltVisualLight::Kind::local: {
        auto* const node = new SoPointLight;
        node->location = SbVec3f(light.position - zero);
        return node;
    }
    case FltVisualLight::Kind::spot: {
        auto* const node = new SoSpotLight;
        node->location = SbVec3f(light.position - zero);
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

SoLight* FltLightNodes::make(FltVisualLight const& light, SbVec3d const& zero)
{
    SoLight* const node = makeOfKind(light, zero);
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

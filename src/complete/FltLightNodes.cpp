#include "complete/FltLightNodes.h"

#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPointLight.h>
#include <Inventor/nodes/SoSpotLight.h>
#include <algorithm>
#include <cmath>

namespace
{

constexpr std::uint32_t enabledFlag = 1U << 31;
constexpr float radiansPerDegree = 0.017453292519943295F;
constexpr float exponentOfFullDropoff = 128;

SbVec3f positionOf(FltRecordView const& record)
{
    return {static_cast<float>(record.doubleAt(32)), static_cast<float>(record.doubleAt(40)),
            static_cast<float>(record.doubleAt(48))};
}

/// At no yaw and no pitch a light shines along y; the yaw turns it about z, the pitch lifts it.
SbVec3f directionOf(FltRecordView const& record)
{
    float const yaw = record.floatAt(56) * radiansPerDegree;
    float const pitch = record.floatAt(60) * radiansPerDegree;
    SbVec3f const direction(-std::sin(yaw) * std::cos(pitch), std::cos(yaw) * std::cos(pitch),
                            std::sin(pitch));
    return std::isfinite(direction.sqrLength()) ? direction : SbVec3f(0, 0, -1);
}

SoLight* makeLight(FltRecordView const& record, FltLightValues const& values)
{
    if (values.type == FltLightValues::local) {
        auto* const light = new SoPointLight;
        light->location = positionOf(record);
        return light;
    }
    if (values.type == FltLightValues::spot) {
        auto* const light = new SoSpotLight;
        light->location = positionOf(record);
        light->direction = directionOf(record);
        light->cutOffAngle = std::clamp(values.cutoffAngle, 0.0F, 90.0F) * radiansPerDegree;
        light->dropOffRate = std::clamp(values.dropoff / exponentOfFullDropoff, 0.0F, 1.0F);
        return light;
    }
    auto* const light = new SoDirectionalLight;
    light->direction = directionOf(record);
    return light;
}

} // namespace

FltScenePart FltLightNodes::make(FltRecordView const& record, FltPaletteSet const& palettes)
{
    if ((record.word32At(24) & enabledFlag) == 0)
        return {};
    auto const found = palettes.lights->find(record.int32At(16));
    FltLightValues const values = found != palettes.lights->end() ? found->second : FltLightValues();
    SoLight* const light = makeLight(record, values);
    auto const part = [](float value) { return value >= 0 ? std::min(value, 1.0F) : 0.0F; };
    light->color.setValue(part(values.diffuse[0]), part(values.diffuse[1]), part(values.diffuse[2]));
    return {SoNodeRef<SoNode>(light), SbBox3f(), 1, 1};
}

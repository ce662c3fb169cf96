#include "visual/FltLightReader.h"

#include "records/FltRecordLightSource.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr unsigned enabledFlag = 0x80; // of the first byte
constexpr float radiansPerDegree = 0.017453292519943295F;
constexpr float exponentOfFullDropoff = 128;

SbVec3d positionOf(FltRecordLightSource const& record)
{
    return {record.localOrSpotPositionCoordinateX, record.localOrSpotPositionCoordinateY,
            record.localOrSpotPositionCoordinateZ};
}

/// At no yaw and no pitch a light shines along y; the yaw turns it about z, the pitch lifts it.
SbVec3f directionOf(FltRecordLightSource const& record)
{
    float const yaw = record.infiniteOrSpotYaw * radiansPerDegree;
    float const pitch = record.infiniteOrSpotPitch * radiansPerDegree;
    SbVec3f const direction(-std::sin(yaw) * std::cos(pitch), std::cos(yaw) * std::cos(pitch),
                            std::sin(pitch));
    return std::isfinite(direction.sqrLength()) ? direction : SbVec3f(0, 0, -1);
}

FltVisualLight::Kind kindOf(std::int32_t type)
{
    using Kind = FltVisualLight::Kind;
    return type == FltLightValues::local  ? Kind::local
           : type == FltLightValues::spot ? Kind::spot
                                          : Kind::infinite;
}

/// Fills how a light fades. Numbers by which it would grow, or be without end, count as none.
void fillAttenuation(FltVisualLight& light, FltLightValues const& values)
{
    float sum = 0;
    for (float const part : values.attenuation) {
        if (!std::isfinite(part) || part < 0)
            return;
        sum += part;
    }
    if (sum > 0)
        std::copy(std::begin(values.attenuation), std::end(values.attenuation), light.attenuation);
}

float partOfOne(float value)
{
    return value >= 0 ? std::min(value, 1.0F) : 0.0F;
}

} // namespace

std::optional<FltVisualLight> FltLightReader::read(FltRecordView const& bytes, FltPaletteSet const& palettes)
{
    FltDecoded<FltRecordLightSource> const record(bytes);
    if ((record.flags[0] & enabledFlag) == 0)
        return std::nullopt;
    auto const found = palettes.lights->find(record.indexIntoLightPalette);
    FltLightValues const values = found != palettes.lights->end() ? found->second : FltLightValues();
    FltVisualLight light;
    light.kind = kindOf(values.type);
    light.position = positionOf(record);
    light.direction = directionOf(record);
    light.color.setValue(partOfOne(values.diffuse[0]), partOfOne(values.diffuse[1]),
                         partOfOne(values.diffuse[2]));
    light.cutOffAngle = std::clamp(values.cutoffAngle, 0.0F, 90.0F) * radiansPerDegree;
    light.dropOffRate = std::clamp(values.dropoff / exponentOfFullDropoff, 0.0F, 1.0F);
    fillAttenuation(light, values);
    return light;
}

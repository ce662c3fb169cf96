#include "ReportJson.h"

#include "visual/FltVisualControls.h"

#include <cstdio>

namespace
{

using ReportJson::Json;

char const* nameOf(FltMessage::Level level)
{
    return level == FltMessage::Level::remark  ? "remark"
           : level == FltMessage::Level::error ? "error"
                                               : "warning";
}

/// A number, or null for one that stands for "none".
Json known(std::int64_t number)
{
    return number >= 0 ? Json(number) : Json();
}

Json textOrNull(std::string const& text)
{
    return text.empty() ? Json() : Json(text);
}

Json messagesOf(std::vector<FltMessage> const& messages)
{
    Json json = Json::array();
    for (FltMessage const& message : messages)
        json.push_back({{"level", nameOf(message.level)},
                        {"text", message.text},
                        {"file", message.file},
                        {"offset", known(message.offset)},
                        {"opcode", known(message.opcode)},
                        {"times", message.count}});
    return json;
}

Json texturesOf(std::vector<FltTexture> const& textures)
{
    Json json = Json::array();
    for (FltTexture const& texture : textures)
        json.push_back({{"name", texture.name},
                        {"database", texture.database},
                        {"path", textOrNull(texture.path)},
                        {"tried", texture.tried}});
    return json;
}

Json referencesOf(std::vector<FltReference> const& references)
{
    Json json = Json::array();
    for (FltReference const& reference : references)
        json.push_back({{"name", reference.name},
                        {"database", reference.database},
                        {"path", textOrNull(reference.path)},
                        {"loaded", reference.isLoaded}});
    return json;
}

Json omissionsOf(std::vector<FltOmission> const& omissions)
{
    Json json = Json::object();
    for (FltOmission const& omission : omissions)
        json[omission.kind] = omission.count;
    return json;
}

Json infoOf(FltDatabaseInfo const& info)
{
    return {{"name", info.name},
            {"revision", info.revision},
            {"unit", FltDatabaseInfo::nameOf(info.unit)},
            {"unit_multiplier", info.unitMultiplier},
            {"last_change", info.lastChange},
            {"projection", info.projection},
            {"ellipsoid", info.ellipsoid},
            {"origin", {info.originLatitude, info.originLongitude}},
            {"south_west", {info.southWestLatitude, info.southWestLongitude}},
            {"north_east", {info.northEastLatitude, info.northEastLongitude}},
            {"offset", info.offset},
            {"records", info.records},
            {"bytes", info.bytes}};
}

/// The masks as hexadecimal numbers, in which bit i is that of child i.
Json masksOf(FltVisualSwitch const& choice)
{
    Json masks = Json::array();
    for (int mask = 0; mask < choice.getMaskCount(); ++mask) {
        std::uint32_t const* const words =
            choice.masks.data() + static_cast<std::size_t>(mask) * choice.wordsPerMask;
        std::string digits;
        for (std::size_t word = choice.wordsPerMask; word-- > 0;) {
            char part[9];
            std::snprintf(part, sizeof part, "%08x", words[word]);
            digits += part;
        }
        masks.push_back(std::move(digits));
    }
    return masks;
}

Json switchesOf(std::vector<FltVisualSwitch const*> const& switches)
{
    Json json = Json::array();
    for (FltVisualSwitch const* choice : switches)
        json.push_back({{"name", choice->name},
                        {"mask", choice->currentMask},
                        {"masks", masksOf(*choice)},
                        {"mask_names", choice->maskNames}});
    return json;
}

Json rangeOf(FltDegreeOfFreedom::Range const& range)
{
    return {range.minimum, range.maximum, range.current, range.step, range.isLimited};
}

Json rangesOf(FltDegreeOfFreedom::Range const (&ranges)[3])
{
    return {rangeOf(ranges[0]), rangeOf(ranges[1]), rangeOf(ranges[2])};
}

Json jointsOf(std::vector<FltVisualJoint const*> const& joints)
{
    Json json = Json::array();
    for (FltVisualJoint const* joint : joints)
        json.push_back({{"name", joint->name},
                        {"translation", rangesOf(joint->translation)},
                        {"pitch", rangeOf(joint->pitch)},
                        {"roll", rangeOf(joint->roll)},
                        {"yaw", rangeOf(joint->yaw)},
                        {"scale", rangesOf(joint->scale)}});
    return json;
}

} // namespace

ReportJson::Json ReportJson::of(FltScene const& scene)
{
    return {{"messages", messagesOf(scene.messages())},
            {"textures", texturesOf(scene.textures())},
            {"references", referencesOf(scene.references())},
            {"omissions", omissionsOf(scene.omissions())},
            {"info", infoOf(scene.info())},
            {"switches", Json::array()},
            {"joints", Json::array()}};
}

ReportJson::Json ReportJson::of(FltVisual const& visual)
{
    FltVisualControls const controls(*visual.root);
    return {{"messages", messagesOf(visual.messages)},
            {"textures", texturesOf(visual.distinctTextures())},
            {"references", referencesOf(visual.references)},
            {"omissions", omissionsOf(visual.omissions)},
            {"info", infoOf(visual.info)},
            {"switches", switchesOf(controls.switches)},
            {"joints", jointsOf(controls.joints)}};
}

#include "info/InfoJson.h"

#include "records/FltOpcodeName.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

/// JSON has no infinite numbers.
Json number(double value)
{
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

Json numbers(std::array<double, 3> const& values)
{
    return {number(values[0]), number(values[1]), number(values[2])};
}

Json place(double latitude, double longitude)
{
    return {{"latitude", number(latitude)}, {"longitude", number(longitude)}};
}

Json headerOf(DatabaseReport const& report)
{
    FltInventory::Header const& header = report.inventory.header;
    return {{"name", header.name},
            {"revision", header.revision},
            {"editRevision", header.editRevision},
            {"lastChange", header.lastChange},
            {"units", report.units()},
            {"unitMultiplier", header.unitMultiplier},
            {"projection", report.projection()},
            {"ellipsoid", report.ellipsoid()},
            {"origin", place(header.originLatitude, header.originLongitude)},
            {"southWest", place(header.southWestLatitude, header.southWestLongitude)},
            {"northEast", place(header.northEastLatitude, header.northEastLongitude)}};
}

Json geometryOf(DatabaseReport const& report)
{
    Json forms = Json::object();
    for (auto const& [form, count] : report.verticesByForm())
        forms[form] = count;
    return {{"faces", report.inventory.faces.size()},
            {"meshes", report.inventory.meshes.size()},
            {"triangles", report.inventory.triangles()},
            {"vertices", std::move(forms)}};
}

Json paletteOf(FltInventory::Palette const& palette)
{
    Json list = Json::array();
    for (auto const& [index, entry] : palette)
        list.push_back(
            {{"index", index}, {"name", entry.name}, {"uses", entry.uses}, {"offset", entry.offset}});
    return list;
}

Json levelsOfDetailOf(FltInventory const& inventory)
{
    Json list = Json::array();
    for (FltInventory::LevelOfDetail const& lod : inventory.levelsOfDetail)
        list.push_back({{"name", inventory.nodes[lod.node].name},
                        {"switchIn", number(lod.switchIn)},
                        {"switchOut", number(lod.switchOut)},
                        {"centre", numbers(lod.centre)},
                        {"offset", inventory.nodes[lod.node].offset}});
    return list;
}

Json switchesOf(FltInventory const& inventory)
{
    Json list = Json::array();
    for (FltInventory::Switch const& one : inventory.switches) {
        Json masks = Json::array();
        auto const wordsPerMask = static_cast<std::size_t>(std::max(one.wordsPerMask, 0));
        for (std::size_t i = 0; wordsPerMask != 0 && i < one.words.size(); i += wordsPerMask)
            masks.push_back(std::vector<std::uint32_t>(
                one.words.begin() + static_cast<std::ptrdiff_t>(i),
                one.words.begin() +
                    static_cast<std::ptrdiff_t>(std::min(i + wordsPerMask, one.words.size()))));
        list.push_back({{"name", inventory.nodes[one.node].name},
                        {"currentMask", one.currentMask},
                        {"maskCount", one.maskCount},
                        {"children", inventory.nodes[one.node].children},
                        {"masks", std::move(masks)},
                        {"offset", inventory.nodes[one.node].offset}});
    }
    return list;
}

Json degreesOfFreedomOf(FltInventory const& inventory)
{
    Json list = Json::array();
    for (FltInventory::DegreeOfFreedom const& dof : inventory.degreesOfFreedom) {
        Json ranges = Json::object();
        for (std::size_t i = 0; i < dof.ranges.size(); ++i)
            ranges[FltInventory::DegreeOfFreedom::nameOf(i)] = {{"least", number(dof.ranges[i].least)},
                                                                {"most", number(dof.ranges[i].most)},
                                                                {"current", number(dof.ranges[i].current)},
                                                                {"isLimited", dof.ranges[i].isLimited}};
        list.push_back({{"name", inventory.nodes[dof.node].name},
                        {"ranges", std::move(ranges)},
                        {"offset", inventory.nodes[dof.node].offset}});
    }
    return list;
}

Json instancesOf(FltInventory const& inventory, std::vector<FltInventory::Instance> const& instances)
{
    Json list = Json::array();
    for (FltInventory::Instance const& instance : instances)
        list.push_back({{"number", instance.number}, {"offset", inventory.nodes[instance.node].offset}});
    return list;
}

Json recordsOf(FltInventory const& inventory)
{
    Json list = Json::array();
    for (auto const& [opcode, facts] : inventory.opcodes)
        list.push_back({{"opcode", opcode},
                        {"name", FltOpcodeName::of(opcode)},
                        {"count", facts.count},
                        {"bytes", facts.bytes}});
    return list;
}

Json sceneOf(SceneMeasure const& scene)
{
    Json box;
    if (!scene.isEmpty)
        box = {{"least", numbers(scene.least)}, {"greatest", numbers(scene.most)}};
    return {{"nodes", scene.statistics.nodes},
            {"faces", scene.statistics.faces},
            {"triangles", scene.statistics.triangles},
            {"bytes", scene.bytes},
            {"box", std::move(box)}};
}

/// What stands beside a texture; null if there is nothing.
Json attributesOf(FltTextureAttributes const& attributes)
{
    if (attributes.path.empty())
        return nullptr;
    return {{"path", attributes.path},
            {"wrapU", DatabaseReport::nameOf(attributes.wrapU)},
            {"wrapV", DatabaseReport::nameOf(attributes.wrapV)},
            {"environment", DatabaseReport::nameOf(attributes.environment)},
            {"minification", DatabaseReport::nameOf(attributes.minification)},
            {"magnification", DatabaseReport::nameOf(attributes.magnification)},
            {"problems", attributes.problems}};
}

} // namespace

nlohmann::ordered_json InfoJson::of(DatabaseReport const& report)
{
    FltInventory const& inventory = report.inventory;
    Json files = filesOf(report.dependencies);
    return {{"file", inventory.path()},
            {"bytes", inventory.bytes()},
            {"recordCount", inventory.records()},
            {"isDamaged", inventory.fault() != FltFraming::Fault::none},
            {"header", headerOf(report)},
            {"geometry", geometryOf(report)},
            {"nodeCount", inventory.nodes.size()},
            {"levelsOfDetail", levelsOfDetailOf(inventory)},
            {"switches", switchesOf(inventory)},
            {"degreesOfFreedom", degreesOfFreedomOf(inventory)},
            {"instanceDefinitions", instancesOf(inventory, inventory.instanceDefinitions)},
            {"instanceReferences", instancesOf(inventory, inventory.instanceReferences)},
            {"lightSources", instancesOf(inventory, inventory.lightSources)},
            {"materials", paletteOf(inventory.materials)},
            {"lights", paletteOf(inventory.lights)},
            {"textures", std::move(files["textures"])},
            {"references", std::move(files["references"])},
            {"scene", report.scene ? sceneOf(*report.scene) : Json()},
            {"records", recordsOf(inventory)}};
}

nlohmann::ordered_json InfoJson::treeOf(FltInventory const& inventory, std::uint32_t depth)
{
    Json list = Json::array();
    for (FltInventory::Node const& node : inventory.nodes)
        if (node.depth <= depth)
            list.push_back({{"type", FltOpcodeName::of(node.opcode)},
                            {"opcode", node.opcode},
                            {"name", node.name},
                            {"depth", node.depth},
                            {"children", node.children},
                            {"faces", node.faces},
                            {"offset", node.offset},
                            {"bytes", node.end - node.offset}});
    return list;
}

nlohmann::ordered_json InfoJson::filesOf(FltDependencies const& dependencies)
{
    Json textures = Json::array();
    for (FltDependencies::Texture const& texture : dependencies.textures())
        textures.push_back({{"name", texture.name},
                            {"database", texture.database},
                            {"path", texture.path.empty() ? Json() : Json(texture.path)},
                            {"uses", texture.uses},
                            {"attributes", attributesOf(texture.attributes)}});
    Json references = Json::array();
    for (FltDependencies::Reference const& reference : dependencies.references())
        references.push_back({{"name", reference.name},
                              {"database", reference.database},
                              {"path", reference.path.empty() ? Json() : Json(reference.path)},
                              {"state", DatabaseReport::stateOf(reference.state)}});
    return {{"textures", std::move(textures)}, {"references", std::move(references)}};
}

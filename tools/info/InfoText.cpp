#include "info/InfoText.h"

#include "support/Numbers.h"

#include "messages/FltText.h"
#include "records/FltOpcodeName.h"

#include <algorithm>
#include <vector>

namespace
{

constexpr std::size_t nameWidth = 22;

/// Of a list only so many lines are shown.
constexpr std::size_t mostLines = 20;

std::string degrees(double latitude, double longitude)
{
    return Numbers::plain(latitude) + " N, " + Numbers::plain(longitude) + " E";
}

std::string triple(std::array<double, 3> const& place)
{
    return Numbers::plain(place[0]) + "  " + Numbers::plain(place[1]) + "  " + Numbers::plain(place[2]);
}

/// "10 x 20 x 2.5 m"
std::string sizeOf(SceneMeasure const& scene)
{
    std::string size;
    for (std::size_t axis = 0; axis < scene.least.size(); ++axis)
        size += (axis == 0 ? "" : " x ") + Numbers::plain(scene.most[axis] - scene.least[axis]);
    return size + " m";
}

/// ", 2 missing" and the like; empty for none.
std::string part(std::uint64_t count, std::string const& what)
{
    return count == 0 ? "" : ", " + Numbers::grouped(count) + " " + what;
}

/// "repeat, clamp in v; modulate; mipmap trilinear, bilinear where it is larger"
std::string wordsOf(FltTextureAttributes const& attributes)
{
    auto const both = [](std::string const& one, std::string const& other, char const* whichOther) {
        return one == other ? one : one + ", " + other + whichOther;
    };
    auto const nameOf = [](auto value) { return DatabaseReport::nameOf(value); };
    return both(nameOf(attributes.wrapU), nameOf(attributes.wrapV), " in v") + "; " +
           nameOf(attributes.environment) + "; " +
           both(nameOf(attributes.minification), nameOf(attributes.magnification), " where it is larger");
}

} // namespace

void InfoText::heading(std::string_view title)
{
    text += "\n" + colours.bold(title) + "\n";
}

void InfoText::heading(std::string_view title, std::uint64_t count, std::string const& more)
{
    heading(std::string(title) + ": " + Numbers::grouped(count) + more);
}

void InfoText::line(std::string_view name, std::string_view value)
{
    lineInColour(name, FltText::printable(value));
}

void InfoText::lineInColour(std::string_view name, std::string const& colouredValue)
{
    std::string const label = FltText::printable(name);
    text += "  " + colours.dim(label) +
            std::string(label.size() + 2 < nameWidth ? nameWidth - label.size() - 2 : 1, ' ') +
            colouredValue + "\n";
}

void InfoText::andMore(std::size_t more)
{
    if (more != 0)
        line("", "and " + Numbers::grouped(more) + " more; --json has all");
}

std::string InfoText::lineOf(DatabaseReport const& report) const
{
    FltInventory const& inventory = report.inventory;
    std::string const head = ": revision " + std::to_string(inventory.header.revision) + ", " +
                             report.units() + ", " +
                             Numbers::counted(report.vertices(), "vertex", "vertices") + ", " +
                             Numbers::counted(inventory.faces.size(), "face", "faces") + ", " +
                             Numbers::counted(inventory.triangles(), "triangle", "triangles") + ", ";
    std::string missing = Numbers::counted(report.missingTextures(), "texture", "textures") + " missing";
    if (std::uint64_t const references = report.missingReferences())
        missing += ", " + Numbers::counted(references, "reference", "references") + " missing";
    std::string extent;
    if (report.scene)
        extent = report.scene->isEmpty ? ", nothing to be seen" : ", " + sizeOf(*report.scene);
    std::string const damaged =
        inventory.fault() != FltFraming::Fault::none ? ", " + colours.red("damaged") : "";
    return colours.bold(FltText::printable(inventory.path())) + head + missing + extent + damaged + "\n";
}

std::string InfoText::of(DatabaseReport const& report)
{
    text = colours.bold(FltText::printable(report.inventory.path())) + "\n";
    writeHeader(report);
    writeGeometry(report);
    writeHierarchy(report);
    writeMaterials(report.inventory);
    writeTextures(report);
    writeReferences(report);
    writeScene(report);
    writeRecords(report.inventory);
    return std::move(text);
}

void InfoText::writeHeader(DatabaseReport const& report)
{
    FltInventory::Header const& header = report.inventory.header;
    line("name", header.name);
    line("revision",
         std::to_string(header.revision) + ", edited " +
             Numbers::counted(static_cast<std::uint64_t>(std::max(header.editRevision, 0)), "time", "times"));
    line("last change", header.lastChange);
    line("size", Numbers::bytes(report.inventory.bytes()) + ", " +
                     Numbers::counted(report.inventory.records(), "record", "records"));
    line("units", report.units());
    line("projection", report.projection() + ", ellipsoid " + report.ellipsoid());
    line("origin", degrees(header.originLatitude, header.originLongitude));
    line("extents", degrees(header.southWestLatitude, header.southWestLongitude) + " to " +
                        degrees(header.northEastLatitude, header.northEastLongitude));
    if (report.inventory.fault() != FltFraming::Fault::none)
        lineInColour("damaged",
                     colours.red("from byte offset " + Numbers::grouped(report.inventory.faultOffset()) +
                                 " on; see fltcheck"));
}

void InfoText::writeGeometry(DatabaseReport const& report)
{
    FltInventory const& inventory = report.inventory;
    heading("Geometry");
    line("faces", Numbers::grouped(inventory.faces.size()));
    line("meshes", Numbers::grouped(inventory.meshes.size()));
    line("triangles", Numbers::grouped(inventory.triangles()));
    auto const forms = report.verticesByForm();
    if (forms.size() != 1)
        line("vertices", Numbers::grouped(report.vertices()));
    for (auto const& [form, count] : forms)
        line(forms.size() == 1 ? "vertices" : "", Numbers::grouped(count) + "  " + form);
}

void InfoText::writeHierarchy(DatabaseReport const& report)
{
    FltInventory const& inventory = report.inventory;
    heading("Hierarchy");
    std::uint32_t depth = 0;
    std::map<int, std::uint64_t> byOpcode;
    for (FltInventory::Node const& node : inventory.nodes) {
        depth = std::max(depth, node.depth);
        ++byOpcode[node.opcode];
    }
    line("nodes", Numbers::grouped(inventory.nodes.size()) + ", " + std::to_string(depth) + " deep");
    for (auto const& [opcode, count] : byOpcode)
        if (opcode != 1)
            line(FltOpcodeName::of(opcode), Numbers::grouped(count));
    writeLevelsOfDetail(inventory);
    writeSwitches(inventory);
    writeDegreesOfFreedom(inventory);
}

std::string InfoText::labelOf(FltInventory const& inventory, std::uint32_t node) const
{
    std::string const& name = inventory.nodes[node].name;
    return name.empty() ? "(no name)" : name;
}

void InfoText::writeLevelsOfDetail(FltInventory const& inventory)
{
    if (inventory.levelsOfDetail.empty())
        return;
    heading("Levels of detail", inventory.levelsOfDetail.size());
    std::size_t const shown = std::min(inventory.levelsOfDetail.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i) {
        FltInventory::LevelOfDetail const& lod = inventory.levelsOfDetail[i];
        line(labelOf(inventory, lod.node), "from " + Numbers::plain(lod.switchOut) + " to " +
                                               Numbers::plain(lod.switchIn) + ", around  " +
                                               triple(lod.centre));
    }
    andMore(inventory.levelsOfDetail.size() - shown);
}

void InfoText::writeSwitches(FltInventory const& inventory)
{
    constexpr int mostMasks = 8;
    constexpr std::uint32_t mostChildren = 64;
    if (inventory.switches.empty())
        return;
    heading("Switches", inventory.switches.size());
    std::size_t const shown = std::min(inventory.switches.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i) {
        FltInventory::Switch const& one = inventory.switches[i];
        std::uint32_t const children = inventory.nodes[one.node].children;
        line(labelOf(inventory, one.node), "mask " + std::to_string(one.currentMask) + " of " +
                                               std::to_string(one.maskCount) + ", " +
                                               Numbers::counted(children, "child", "children"));
        for (int mask = 0; mask < std::min(one.maskCount, mostMasks); ++mask)
            line("", std::string(mask == one.currentMask ? "* " : "  ") + "mask " + std::to_string(mask) +
                         " shows " + DatabaseReport::childrenOf(one, mask, std::min(children, mostChildren)));
    }
    andMore(inventory.switches.size() - shown);
}

void InfoText::writeDegreesOfFreedom(FltInventory const& inventory)
{
    if (inventory.degreesOfFreedom.empty())
        return;
    heading("Degrees of freedom", inventory.degreesOfFreedom.size());
    std::size_t const shown = std::min(inventory.degreesOfFreedom.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i) {
        FltInventory::DegreeOfFreedom const& dof = inventory.degreesOfFreedom[i];
        std::string ranges;
        for (std::size_t k = 0; k < dof.ranges.size(); ++k) {
            auto const& range = dof.ranges[k];
            if (range.least != range.most)
                ranges += (ranges.empty() ? "" : ", ") +
                          (FltInventory::DegreeOfFreedom::nameOf(k) + (" " + Numbers::plain(range.least))) +
                          " to " + Numbers::plain(range.most);
        }
        line(labelOf(inventory, dof.node), ranges.empty() ? "no range" : ranges);
    }
    andMore(inventory.degreesOfFreedom.size() - shown);
}

/// Those that are used come first: of a palette of the old form most of the 64 entries are empty.
void InfoText::writeMaterials(FltInventory const& inventory)
{
    using Material = FltInventory::Palette::value_type;
    std::vector<Material const*> list;
    for (Material const& material : inventory.materials)
        if (!inventory.hasOldMaterialPalette || material.second.uses != 0)
            list.push_back(&material);
    if (list.empty())
        return;
    auto const firstUnused = std::stable_partition(
        list.begin(), list.end(), [](Material const* material) { return material->second.uses != 0; });
    heading("Materials", list.size(), part(static_cast<std::uint64_t>(list.end() - firstUnused), "not used"));
    std::size_t const shown = std::min(list.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i) {
        auto const& [index, material] = *list[i];
        line(std::to_string(index), material.name + (material.name.empty() ? "" : ", ") + "used " +
                                        Numbers::counted(material.uses, "time", "times"));
    }
    andMore(list.size() - shown);
}

void InfoText::writeFile(std::string const& name, std::string const& where, std::string const& problem)
{
    text += "  " + FltText::printable(name) + "\n" + std::string(nameWidth, ' ') +
            (problem.empty() ? colours.green("found ") + FltText::printable(where) : colours.red(problem)) +
            "\n";
}

void InfoText::writeTextures(DatabaseReport const& report)
{
    std::vector<FltDependencies::Texture const*> list;
    std::uint64_t missing = 0, unused = 0;
    for (FltDependencies::Texture const& texture : report.dependencies.textures()) {
        if (texture.database != report.inventory.path())
            continue;
        list.push_back(&texture);
        missing += texture.path.empty() ? 1 : 0;
        unused += texture.uses == 0 ? 1 : 0;
    }
    if (list.empty())
        return;
    heading("Textures", list.size(), part(missing, "missing") + part(unused, "not used"));
    for (FltDependencies::Texture const* const texture : list) {
        writeFile(texture->name + (texture->uses == 0 ? " (not used)" : ""), texture->path,
                  texture->path.empty() ? "missing" : "");
        if (!texture->attributes.path.empty())
            text += std::string(nameWidth, ' ') + "attributes " +
                    FltText::printable(texture->attributes.path) + ": " + wordsOf(texture->attributes) + "\n";
    }
}

void InfoText::writeReferences(DatabaseReport const& report)
{
    using State = FltDependencies::State;
    std::vector<FltDependencies::Reference const*> list;
    std::uint64_t found = 0;
    for (FltDependencies::Reference const& reference : report.dependencies.references()) {
        if (reference.database != report.inventory.path())
            continue;
        list.push_back(&reference);
        found += reference.state == State::found ? 1 : 0;
    }
    if (list.empty())
        return;
    heading("External references", list.size(), part(list.size() - found, "not found"));
    for (FltDependencies::Reference const* const reference : list)
        writeFile(reference->name, reference->path,
                  reference->state == State::found ? "" : DatabaseReport::stateOf(reference->state));
}

void InfoText::writeScene(DatabaseReport const& report)
{
    if (!report.scene)
        return;
    SceneMeasure const& scene = *report.scene;
    heading("Scene");
    line("nodes", Numbers::grouped(scene.statistics.nodes));
    line("faces", Numbers::grouped(scene.statistics.faces));
    line("triangles", Numbers::grouped(scene.statistics.triangles));
    line("memory", "about " + Numbers::bytes(scene.bytes));
    if (scene.isEmpty) {
        line("box", "empty: nothing is to be seen");
        return;
    }
    line("box, least", triple(scene.least) + "  metres");
    line("box, greatest", triple(scene.most));
    line("box, size", triple({scene.most[0] - scene.least[0], scene.most[1] - scene.least[1],
                              scene.most[2] - scene.least[2]}));
}

void InfoText::writeRecords(FltInventory const& inventory)
{
    heading("Records");
    for (auto const& [opcode, facts] : inventory.opcodes) {
        std::string const count = Numbers::grouped(facts.count);
        std::string const number = std::to_string(opcode);
        text += "  " + std::string(number.size() < 4 ? 4 - number.size() : 0, ' ') + colours.dim(number) +
                "  " + std::string(count.size() < 12 ? 12 - count.size() : 0, ' ') + count + "  " +
                FltOpcodeName::of(opcode) + colours.dim(", " + Numbers::bytes(facts.bytes)) + "\n";
    }
}

std::string InfoText::treeOf(FltInventory const& inventory, std::uint32_t depth)
{
    constexpr std::uint32_t deepestIndent = 60;
    text.clear();
    for (FltInventory::Node const& node : inventory.nodes) {
        if (node.depth > depth)
            continue;
        text += std::string(std::size_t(2) * std::min(node.depth, deepestIndent), ' ') +
                colours.blue(FltOpcodeName::of(node.opcode));
        if (!node.name.empty())
            text += " " + colours.bold(FltText::printable(node.name));
        text += colours.dim("  " + Numbers::bytes(node.end - node.offset));
        if (node.faces != 0)
            text += colours.dim(", " + Numbers::counted(node.faces, "face", "faces"));
        if (node.depth == depth && node.children != 0)
            text += colours.dim(", " + Numbers::counted(node.children, "child", "children"));
        text += "\n";
    }
    return std::move(text);
}

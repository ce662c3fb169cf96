#include "view/SelectionStatistics.h"

#include "support/Numbers.h"
#include "support/SceneMeasure.h"
#include "support/SceneNodes.h"
#include "view/TextureList.h"

#include "inspect/FltInventory.h"

#include <Inventor/nodes/SoNode.h>
#include <algorithm>
#include <stdexcept>

namespace
{

using Inventory = FltInventory;

/// Vertices of the faces between two bytes, each once, and those of meshes.
std::uint64_t verticesBetween(Inventory const& inventory, std::uint64_t begin, std::uint64_t end)
{
    std::set<std::uint32_t> different;
    for (Inventory::Face const& face : inventory.faces)
        if (face.offset >= begin && face.offset < end)
            for (std::uint32_t i = 0; i < face.vertexCount; ++i)
                if (std::uint32_t const vertex = inventory.faceVertices[face.firstVertex + i];
                    vertex != Inventory::none)
                    different.insert(vertex);
    std::uint64_t count = different.size();
    for (Inventory::Mesh const& mesh : inventory.meshes)
        if (mesh.offset >= begin && mesh.offset < end)
            count += mesh.wholeVertices;
    return count;
}

/// All that a file holds, whether a face uses it or not.
std::uint64_t verticesOf(Inventory const& inventory)
{
    std::uint64_t count = inventory.vertices.size();
    for (Inventory::Mesh const& mesh : inventory.meshes)
        count += mesh.wholeVertices;
    return count;
}

} // namespace

std::string SelectionStatistics::Numbers::describe() const
{
    using namespace ::Numbers;
    return (hasRecord ? counted(faces, "face", "faces") + ", " : "") +
           counted(triangles, "triangle", "triangles") + ", " +
           (hasRecord ? counted(vertices, "vertex", "vertices") + ", " : "") +
           counted(textures, "texture", "textures") + ", about " + ::Numbers::bytes(this->bytes);
}

SelectionStatistics::SelectionStatistics(FltScene const& scene) : scene(scene) {}
SelectionStatistics::~SelectionStatistics() = default;

FltInventory const* SelectionStatistics::inventoryOf(std::string const& file)
{
    auto const [known, isNew] = inventories.try_emplace(file);
    if (isNew) {
        try {
            known->second = std::make_unique<FltInventory>(file);
        } catch (std::runtime_error const&) {
            known->second = nullptr; // it isn't there any more
        }
    }
    return known->second.get();
}

void SelectionStatistics::addReferences(FltInventory const& inventory, std::uint64_t begin, std::uint64_t end,
                                        Numbers& numbers, std::set<std::string>& seen)
{
    for (FltInventory::Reference const& stored : inventory.references) {
        if (stored.offset < begin || stored.offset >= end)
            continue;
        for (FltReference const& reference : scene.references())
            if (reference.isLoaded && reference.database == inventory.path() &&
                reference.name == stored.path) {
                addRecords({reference.path, 0, true}, numbers, seen);
                break;
            }
    }
}

void SelectionStatistics::addRecords(FltRecordPlace const& place, Numbers& numbers,
                                     std::set<std::string>& seen)
{
    FltInventory const* const inventory = inventoryOf(place.file);
    if (inventory == nullptr)
        return;
    auto const node = std::lower_bound(
        inventory->nodes.begin(), inventory->nodes.end(), place.offset,
        [](FltInventory::Node const& each, std::uint64_t offset) { return each.offset < offset; });
    if (node == inventory->nodes.end() || node->offset != place.offset)
        return;
    bool const isWholeFile = node == inventory->nodes.begin();
    if (isWholeFile && !seen.insert(place.file).second)
        return;
    std::uint64_t const end = isWholeFile ? inventory->bytes() : node->end;
    numbers.hasRecord = true;
    numbers.faces += static_cast<std::uint64_t>(
        std::count_if(inventory->faces.begin(), inventory->faces.end(), [&](FltInventory::Face const& face) {
            return face.offset >= place.offset && face.offset < end;
        }));
    numbers.vertices += isWholeFile ? verticesOf(*inventory) : verticesBetween(*inventory, place.offset, end);
    addReferences(*inventory, place.offset, end, numbers, seen);
}

SelectionStatistics::Numbers SelectionStatistics::of(SoNode& node, std::optional<FltRecordPlace> const& place)
{
    Numbers numbers;
    SceneMeasure measure;
    SceneNodes::forEach(&node, [&measure](SoNode& each) { measure.add(each); });
    numbers.triangles = measure.statistics.triangles;
    numbers.bytes = measure.bytes;
    numbers.textures = TextureList(&node).textures().size();
    std::set<std::string> seen;
    if (place && place->isOwn)
        addRecords(*place, numbers, seen);
    return numbers;
}

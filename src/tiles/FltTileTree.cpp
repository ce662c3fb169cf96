#include "tiles/FltTileTree.h"

#include "globe/FltGlobeFrame.h"
#include "tiles/FltTileEntries.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace
{

/// In a file.
constexpr std::size_t mostEntries = 10'000;

/// In a node that has no quarters.
constexpr std::size_t mostTiles = 4;

/// Further down tiles are parted by their numbers: they stand in one place.
constexpr std::size_t deepest = 32;

/// In metres: more than the last bits of places on the earth.
constexpr double slack = 1e-3;

/// The geometric error of a node, in parts of the diagonal of its box.
constexpr double errorInDiagonal = 1.0 / 20;

} // namespace

FltTileTree::FltTileTree(std::vector<FltProjection::Place> const& places, EntryOf entryOf, FileOf fileOf)
    : places(places), entryOf(std::move(entryOf)), fileOf(std::move(fileOf))
{
}

FltTileEntry FltTileTree::make()
{
    Tiles all(places.size());
    std::iota(all.begin(), all.end(), std::size_t(0));
    return make(all, 0);
}

FltTileEntry FltTileTree::make(Tiles const& tiles, std::size_t level)
{
    std::vector<FltTileEntry> parts;
    if (tiles.size() <= mostTiles)
        for (std::size_t const tile : tiles)
            parts.push_back(entryOf(tile));
    else
        for (Tiles const& quarter : quartersOf(tiles, level))
            if (!quarter.empty())
                parts.push_back(make(quarter, level + 1));
    if (parts.size() == 1 && level > 0)
        return std::move(parts.front());
    return joined(tiles, std::move(parts));
}

/// Parts tiles where the middle of their places is; those that stand in one place by their numbers.
std::vector<FltTileTree::Tiles> FltTileTree::quartersOf(Tiles const& tiles, std::size_t level) const
{
    auto const parted = [&](auto const& of) {
        auto const [least, most] =
            std::minmax_element(tiles.begin(), tiles.end(),
                                [&](std::size_t one, std::size_t other) { return of(one) < of(other); });
        return std::pair((of(*least) + of(*most)) / 2, of(*least) < of(*most));
    };
    auto const latitude = [this](std::size_t tile) { return places[tile].latitude; };
    auto const longitude = [this](std::size_t tile) { return places[tile].longitude; };
    auto const [middleLatitude, hasHeight] = parted(latitude);
    auto const [middleLongitude, hasWidth] = parted(longitude);
    bool const isOnePlace = level >= deepest || (!hasHeight && !hasWidth);
    std::vector<Tiles> quarters(4);
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        bool const isNorth = latitude(tiles[i]) > middleLatitude,
                   isEast = longitude(tiles[i]) > middleLongitude;
        std::size_t const byPlace = (isNorth ? 2U : 0U) + (isEast ? 1U : 0U);
        quarters[isOnePlace ? i * quarters.size() / tiles.size() : byPlace].push_back(tiles[i]);
    }
    return quarters;
}

FltProjection::Place FltTileTree::middleOf(Tiles const& tiles) const
{
    FltProjection::Place middle;
    auto const count = static_cast<double>(tiles.size());
    for (std::size_t const tile : tiles) {
        middle.latitude += places[tile].latitude / count;
        middle.longitude += places[tile].longitude / count;
    }
    return middle;
}

/// A node around parts, the largest of which move out while they are too many entries together.
FltTileEntry FltTileTree::joined(Tiles const& tiles, std::vector<FltTileEntry> parts)
{
    FltGlobeFrame const frame(middleOf(tiles));
    SbBox3d around;
    FltTileEntry node{{}, "", FltTileBox(around), 0, 1};
    for (FltTileEntry const& part : parts) {
        for (SbVec3d const& corner : part.box.corners())
            around.extendBy(frame.fromEarth(corner));
        node.entries += part.entries;
    }
    SbVec3d const more(slack, slack, slack);
    node.box = FltTileBox(SbBox3d(around.getMin() - more, around.getMax() + more)).movedBy(frame.matrix());
    node.error = node.box.diagonal() * errorInDiagonal;
    for (FltTileEntry& part : parts)
        finish(part, node.error);
    while (node.entries > mostEntries) {
        auto const largest = std::max_element(
            parts.begin(), parts.end(),
            [](FltTileEntry const& one, FltTileEntry const& other) { return one.entries < other.entries; });
        node.entries -= largest->entries - 1;
        moveOut(*largest);
    }
    FltTileEntries::Json json = FltTileEntries::begin(node.box, node.error);
    json["refine"] = "ADD";
    node.text = json.dump();
    node.text.back() = ',';
    node.text += "\"children\":[\n";
    node.text.reserve(std::accumulate(
        parts.begin(), parts.end(), node.text.size() + 2,
        [](std::size_t size, FltTileEntry const& part) { return size + part.text.size() + 2; }));
    for (FltTileEntry& part : parts) {
        node.text += std::exchange(part.text, {}); // let go of at once: near the root they are large
        node.text += &part == &parts.back() ? "" : ",\n";
    }
    node.text += "]}";
    return node;
}

/// Makes the text of a tile.
/// @param mostError that of what is around it
void FltTileTree::finish(FltTileEntry& part, double mostError)
{
    if (part.json.is_null())
        return;
    FltTileEntries::limitErrors(part.json, mostError);
    part.error = std::min(part.error, mostError);
    part.text = part.json.dump();
    part.json = nullptr;
}

void FltTileTree::moveOut(FltTileEntry& part) const
{
    FltTileEntries::Json json = FltTileEntries::begin(part.box, part.error);
    json["content"] = {{"uri", fileOf(part)}};
    part.text = json.dump();
    part.entries = 1;
}

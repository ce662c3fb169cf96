#include "tiles/FltTileEntries.h"

#include "globe/FltGlobeFrame.h"
#include "gltf/FltGltfFiles.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

using Json = FltTileEntries::Json;

/// Viewers take a finer form where the error is seen as more than this many of the picture's 1080 lines.
constexpr double mostLines = 16, linesOfPicture = 1080, halfOfPicture = 0.57735026918962576;

/// How much may stand in a file: what any may, and for each reference that there is. Models in models grow
/// without end otherwise.
constexpr std::size_t entriesOfAny = 10'000, entriesPerReference = 10;

/// Deeper down nothing is placed.
constexpr std::size_t deepest = 32;

double errorAt(double distance)
{
    return distance * mostLines * 2 * halfOfPicture / linesOfPicture;
}

/// A tileset tells matrices column by column, which is row by row what acts on a place from the right.
Json transformOf(SbDPMatrix const& matrix)
{
    Json numbers = Json::array();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            numbers.push_back(matrix[row][column]);
    return numbers;
}

Json contentOf(std::string const& file)
{
    return {{"uri", FltGltfFiles::addressOf(file)}};
}

bool isFinite(SbDPMatrix const& matrix)
{
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (!std::isfinite(matrix[row][column]))
                return false;
    return true;
}

void addOnce(std::set<std::string>& known, std::vector<std::string>& list, std::string const& file)
{
    if (known.insert(file).second)
        list.push_back(file);
}

} // namespace

FltTileEntries::FltTileEntries(std::vector<FltTile> const& tiles, FltTilesetReport& report)
    : report(report), mostEntries(entriesOfAny)
{
    for (FltTile const& tile : tiles) {
        byFile.emplace(tile.file, &tile);
        mostEntries += entriesPerReference * tile.references.size();
    }
}

Json FltTileEntries::begin(FltTileBox const& box, double error)
{
    return {{"boundingVolume", {{"box", box.numbers()}}}, {"geometricError", error}};
}

std::optional<FltTileEntry> FltTileEntries::of(FltTile const& tile)
{
    Made made = make(tile);
    if (made.box.isEmpty() || !tile.place)
        return std::nullopt;
    SbDPMatrix const matrix = FltGlobeFrame(*tile.place).matrix();
    Json json = {{"transform", transformOf(matrix)}};
    json.update(made.json);
    return FltTileEntry{std::move(json), "", FltTileBox(made.box).movedBy(matrix), made.error, made.entries};
}

void FltTileEntries::limitErrors(Json& entry, double most)
{
    entry["geometricError"] = std::min(entry["geometricError"].get<double>(), most);
    if (entry.contains("children"))
        for (Json& child : entry["children"])
            limitErrors(child, most);
}

/// A file and its coarser forms, each of which gives way to the finer one as a whole.
FltTileEntries::Made FltTileEntries::chainOf(FltTile const& tile)
{
    Made made;
    if (tile.box.isEmpty())
        return made;
    made.box = tile.box;
    made.json = begin(FltTileBox(tile.box), 0);
    made.json["content"] = contentOf(tile.file);
    made.entries = 1 + tile.coarser.size();
    for (FltTile::Level const& level : tile.coarser) {
        made.error = std::max(made.error, errorAt(level.distance));
        Json coarser = begin(FltTileBox(tile.box), made.error);
        coarser["refine"] = "REPLACE";
        if (!level.file.empty())
            coarser["content"] = contentOf(level.file);
        coarser["children"] = Json::array({std::move(made.json)});
        made.json = std::move(coarser);
    }
    return made;
}

FltTileEntries::Made FltTileEntries::make(FltTile const& tile)
{
    constexpr double partOfDiagonal = 20;
    Made made = chainOf(tile);
    Json children = Json::array();
    for (FltTile::Reference const& reference : tile.references) {
        Made const* const model = isFinite(reference.matrix) ? modelOf(reference.file) : nullptr;
        if (model == nullptr || model->box.isEmpty())
            continue;
        if (made.entries + model->entries > mostEntries) {
            addOnce(tooMany, report.tooMany, tile.file);
            continue;
        }
        Json child = {{"transform", transformOf(reference.matrix)}};
        child.update(model->json);
        children.push_back(std::move(child));
        for (SbVec3d const& corner : FltTileBox(model->box).movedBy(reference.matrix).corners())
            made.box.extendBy(corner);
        made.error = std::max(made.error, model->error);
        made.entries += model->entries;
        ++report.placed;
    }
    if (children.empty())
        return made;
    FltTileBox const box(made.box);
    made.error = std::max(made.error, box.diagonal() / partOfDiagonal);
    if (!tile.box.isEmpty())
        children.insert(children.begin(), std::move(made.json));
    made.json = begin(box, made.error);
    made.json["refine"] = "ADD";
    made.json["children"] = std::move(children);
    ++made.entries;
    return made;
}

/// A file that others refer to. @return null if it isn't there, or can't stand there
FltTileEntries::Made const* FltTileEntries::modelOf(std::string const& file)
{
    auto const tile = byFile.find(file);
    if (tile == byFile.end()) {
        addOnce(missing, report.missing, file);
        return nullptr;
    }
    if (tile->second->place) {
        addOnce(placedTwice, report.placedTwice, file);
        return nullptr;
    }
    if (auto const known = models.find(file); known != models.end())
        return &known->second;
    if (inWork.size() >= deepest || !inWork.insert(file).second) {
        addOnce(tooMany, report.tooMany, file);
        return nullptr;
    }
    Made made = make(*tile->second);
    inWork.erase(file);
    return &(models[file] = std::move(made));
}

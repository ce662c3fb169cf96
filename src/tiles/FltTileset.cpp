#include "tiles/FltTileset.h"

#include "gltf/FltGltfError.h"
#include "gltf/FltGltfFiles.h"
#include "tiles/FltTileEntries.h"
#include "tiles/FltTileTree.h"
#include "toolkit/WholeFile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

namespace
{

namespace fs = std::filesystem;

/// The files of a tileset, none of which takes its place before all are written.
class Files
{
public:
    explicit Files(std::string path) : path(std::move(path)) {}

    /// Writes a part into a file beside the main one. @return its address
    std::string add(FltTileEntry const& part)
    {
        fs::path const main = path;
        fs::path const name =
            main.stem().string() + '-' + std::to_string(files.size() + 1) + main.extension().string();
        write((main.parent_path() / name).string(), part);
        return FltGltfFiles::addressOf(name.string());
    }

    void write(std::string const& file, FltTileEntry const& root)
    {
        auto whole = std::make_unique<WholeFile>(file);
        if (whole->stream() == nullptr)
            fail(file, whole->problem());
        FltTileEntries::Json const head = {{"asset", {{"version", "1.1"}}},
                                           {"geometricError", std::max(root.error, root.box.diagonal())}};
        std::string text = head.dump();
        text.back() = ',';
        text += "\n\"root\":";
        for (std::string_view const piece :
             {std::string_view(text), std::string_view(root.text), std::string_view("}\n")})
            std::fwrite(piece.data(), 1, piece.size(), whole->stream());
        files.emplace_back(file, std::move(whole));
    }

    std::vector<std::string> commit()
    {
        std::vector<std::string> names;
        for (auto const& [file, whole] : files) {
            if (int const reason = whole->commit())
                fail(file, reason);
            names.push_back(file);
        }
        return names;
    }

    std::string const path;

private:
    [[noreturn]] static void fail(std::string const& file, int reason)
    {
        throw FltGltfError(file,
                           std::string("cannot write: ") + std::strerror(reason) +
                               ". Check the directory, its permissions and the space on the disk.",
                           reason);
    }

    std::vector<std::pair<std::string, std::unique_ptr<WholeFile>>> files;
};

void checkFiles(std::vector<FltTile> const& tiles, std::string const& path)
{
    std::set<std::string> known;
    auto const add = [&](std::string const& file) {
        if (!known.insert(file).second)
            throw FltGltfError(path, file +
                                         " is of two databases: a coarser level of one has the name of the "
                                         "other. Rename one of them.");
    };
    for (FltTile const& tile : tiles) {
        add(tile.file);
        for (FltTile::Level const& level : tile.coarser)
            if (!level.file.empty())
                add(level.file);
    }
}

} // namespace

FltTileset::FltTileset(std::vector<FltTile> given) : tiles(std::move(given))
{
    std::sort(tiles.begin(), tiles.end(),
              [](FltTile const& one, FltTile const& other) { return one.file < other.file; });
}

FltTilesetReport FltTileset::write(std::string const& path) const
{
    checkFiles(tiles, path);
    FltTilesetReport report;
    FltTileEntries entries(tiles, report);
    std::vector<FltProjection::Place> places;
    std::vector<FltTile const*> shown;
    for (FltTile const& tile : tiles) {
        (tile.place ? report.tiles : report.models) += 1;
        // What of it stands in the tree is made when its turn comes: all at once would take much memory.
        if (tile.place && (!tile.box.isEmpty() || entries.of(tile))) {
            places.push_back(*tile.place);
            shown.push_back(&tile);
        }
    }
    if (shown.empty())
        throw FltGltfError(path,
                           "none of the databases has a place on the globe and something to show there, "
                           "so there is nothing to put into a tileset.");
    report.placed = 0;
    Files files(path);
    FltTileTree tree(
        places, [&](std::size_t tile) { return *entries.of(*shown[tile]); },
        [&](FltTileEntry const& part) { return files.add(part); });
    files.write(path, tree.make());
    report.files = files.commit();
    return report;
}

#include "convert/TilesetRun.h"

#include "convert/ReportReader.h"
#include "support/Numbers.h"
#include "support/ToolError.h"
#include "tiles/FltTileset.h"
#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

namespace
{

namespace fs = std::filesystem;

/// A name beside a file, as seen from where that is seen from.
std::string beside(std::string const& file, std::string const& name)
{
    return (fs::path(file).parent_path() / name).lexically_normal().generic_string();
}

FltTile tileOf(ReportLine const& line)
{
    FltTile tile = *line.facts.tile;
    tile.file = fs::path(line.output).lexically_normal().generic_string();
    for (FltTile::Level& level : tile.coarser)
        level.file = level.file.empty() ? "" : beside(tile.file, level.file);
    for (FltTile::Reference& reference : tile.references)
        reference.file = beside(tile.file, reference.file);
    return tile;
}

/// What the reports of all parts tell, each database once: the last line of it counts.
struct Results {
    std::map<std::string, FltTile> tiles; ///< By their files.
    std::size_t failed = 0;
    std::size_t withoutTile = 0;

    void add(std::string const& report)
    {
        struct Result {
            std::string output;
            bool hasFailed = false;
            std::optional<FltTile> tile;
        };
        std::vector<Result> results;
        ReportReader::read(
            report, [&results](std::size_t database, ReportLine const& line, ReportReader::Place const&) {
                results.resize(std::max(results.size(), database + 1));
                results[database] = {line.output, line.exitCode != 0, std::nullopt};
                if (line.exitCode == 0 && line.facts.tile)
                    results[database].tile = tileOf(line);
            });
        for (Result& result : results) {
            if (result.hasFailed)
                ++failed;
            else if (!result.tile)
                ++withoutTile;
            else
                tiles.insert_or_assign(std::move(result.output), std::move(*result.tile));
        }
    }
};

void warnOf(Program const& program, std::vector<std::string> const& files, std::string const& text)
{
    if (files.empty())
        return;
    std::string const more =
        files.size() == 1 ? "" : " and " + Numbers::counted(files.size() - 1, "more", "more");
    program.warn(files.front() + more + ": " + text);
}

} // namespace

ExitCode TilesetRun::write(std::vector<std::string> const& reports, std::string const& output) const
{
    Results results;
    for (std::string const& path : reports)
        results.add(path);
    if (results.tiles.empty() && results.withoutTile != 0)
        throw ToolError(output + ": the reports tell nothing of tiles. Convert with flt2gltf --tileset.");
    std::vector<FltTile> tiles;
    tiles.reserve(results.tiles.size());
    for (auto& [file, tile] : results.tiles)
        tiles.push_back(std::move(tile));
    FltTilesetReport const report = FltTileset(std::move(tiles)).write(output);
    TemporaryName::removeAbandoned(report.files);
    warnOf(program, report.missing, "other databases refer to it, but the reports have no such result");
    warnOf(program, report.placedTwice,
           "has a place on the globe of its own, so it doesn't stand where others refer to it");
    warnOf(program, report.tooMany, "too much stands in it, or it stands in itself: some of it is left out");
    program.detail(output + ": " + Numbers::counted(report.tiles, "tile", "tiles") + ", " +
                   Numbers::counted(report.models, "model", "models") + " in " +
                   Numbers::counted(report.placed, "place", "places") + ", " +
                   Numbers::counted(report.files.size(), "file", "files"));
    std::vector<std::string> problems;
    if (results.failed != 0)
        problems.push_back(output + ": " + Numbers::counted(results.failed, "database", "databases") +
                           " couldn't be converted, and aren't in it");
    if (results.withoutTile != 0)
        problems.push_back(output + ": of " + Numbers::counted(results.withoutTile, "database", "databases") +
                           " the reports tell nothing, so that they aren't in it. Convert them with "
                           "flt2gltf --tileset");
    return program.reported(problems);
}

// Writes a country: a tree of databases that are tiles of land, with models and textures that all of them
// share.
//
//     make_country [--tiles N] [--folders rows|quads] [--utm] [--damaged PERCENT] [--force] OUT
//
// The same bytes come out every time. Tile 0 is in the south-west; rows go to the east, then to the north.

#include "CountryModels.h"
#include "CountryPlan.h"
#include "CountryTiles.h"
#include "DamagedBytes.h"
#include "ExampleProgram.h"
#include "Textures.h"
#include "support/ToolError.h"

#include <CLI/CLI.hpp>
#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

namespace
{

using Folders = CountryPlan::Folders;
using Projection = CountryTiles::Projection;

struct Wishes {
    std::filesystem::path out;
    int tiles = 100;
    Folders folders = Folders::rows;
    Projection projection = Projection::flatEarth;
    double damaged = 0; ///< In a hundred.
    bool force = false;
};

void writeShared(std::filesystem::path const& out)
{
    std::filesystem::create_directories(out / "models");
    std::filesystem::create_directories(out / "textures");
    writeGround(out / "textures/ground.png");
    writeWindows(out / "textures/windows.png");
    writeCorrugation(out / "textures/corrugation.rgb");
    saveFile(makeFarm(), out / "models/farm.flt");
    saveFile(makeWood(), out / "models/wood.flt");
    saveFile(makeMast(), out / "models/mast.flt");
}

void makeCountry(Wishes const& wishes)
{
    constexpr std::array<Damage, 4> damages = {Damage::cut, Damage::zeroLength, Damage::text, Damage::empty};
    if (!wishes.force && std::filesystem::exists(wishes.out) && !std::filesystem::is_empty(wishes.out))
        throw ToolError(
            wishes.out.string() +
                ": something is in there already. Add --force to write over it, or choose another.",
            ExitCode::wrongUsage);
    writeShared(wishes.out);
    CountryPlan const plan(wishes.tiles, wishes.folders);
    CountryTiles const tiles(plan, wishes.projection);
    std::size_t damaged = 0;
    for (int tile = 0; tile < plan.size(); ++tile) {
        std::filesystem::path const folder = wishes.out / plan.folderOf(tile);
        std::filesystem::create_directories(folder);
        std::string bytes = tiles.make(tile);
        if (CountryPlan::isOneOf(wishes.damaged, tile))
            bytes = damagedBytes(bytes, damages.at(damaged++ % damages.size()));
        saveFile(bytes, folder / plan.nameOf(tile));
    }
    std::printf("%d tiles, %zu of them damaged\n", plan.size(), damaged);
}

} // namespace

int main(int argc, char** argv)
{
    constexpr int mostTiles = 1000000; // numbers of rows have four digits
    Wishes wishes;
    bool isUtm = false;
    CLI::App app(
        "Writes a country by Lake Constance: a tree of databases that are tiles of 1200 m, meet at their "
        "edges, and share models and textures.",
        "make_country");
    app.add_option("OUT", wishes.out, "The folder to write into")->required();
    app.add_option("--tiles", wishes.tiles, "How many tiles")
        ->check(CLI::Range(1, mostTiles))
        ->capture_default_str();
    std::map<std::string, Folders> const folders = {{"rows", Folders::rows}, {"quads", Folders::quads}};
    app.add_option("--folders", wishes.folders,
                   "How tiles are spread over folders: one for each row (row_0003/tile_0003_0007.flt), or "
                   "the quarters "
                   "of a square and their quarters (quad/0/2/1/tile_0003_0007.flt). By default rows")
        ->transform(CLI::CheckedTransformer(folders).description("rows|quads"));
    app.add_flag("--utm", isUtm, "Coordinates of UTM zone 32, and not of a plane that touches the earth");
    app.add_option(
           "--damaged", wishes.damaged,
           "How many tiles in a hundred are damaged: in turn cut in half, with a record of no length in the "
           "middle, a text of another kind, empty")
        ->check(CLI::Range(0.0, 100.0))
        ->capture_default_str();
    app.add_flag("--force", wishes.force, "Write into a folder that isn't empty");
    return ExampleProgram::run(app, argc, argv, [&] {
        wishes.projection = isUtm ? Projection::utm : Projection::flatEarth;
        makeCountry(wishes);
    });
}

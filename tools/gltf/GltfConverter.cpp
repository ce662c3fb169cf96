#include "gltf/GltfConverter.h"

#include "convert/ConversionWarnings.h"
#include "convert/FactsOfLoad.h"
#include "convert/ReferenceNames.h"
#include "gltf/FltGltfPage.h"
#include "obj/FltObj.h"
#include "support/LoadMessages.h"
#include "support/Numbers.h"
#include "support/OutputFile.h"
#include "support/SceneStatistics.h"
#include "support/ToolError.h"
#include "tiles/FltTileFiles.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <utility>

GltfConverter::GltfConverter(Program const& program, ConversionCommand const& command,
                             GltfChoices const& choices)
    : program(program), command(command), choices(choices)
{
}

FltLoader GltfConverter::makeLoader(FltLoader::Progress const& progress) const
{
    FltLoader loader = command.loaderOptions().makeLoader();
    loader.levelsOfDetail = choices.levelsToLoad();
    loader.progress = progress;
    return loader;
}

FltGltfOptions GltfConverter::makeOptions(FltLoader const& loader) const
{
    FltGltfOptions options = choices.options();
    options.onlyBelow = loader.onlyBelow;
    options.largestFile = loader.largestFile;
    if (!command.options().textureDirectory.empty())
        options.textureDirectory = command.options().textureDirectory;
    return options;
}

/// Writes into a pipe, or what else isn't a plain file.
FltGltfReport GltfConverter::writeStream(FltVisual const& visual, std::string const& output,
                                         FltGltfOptions const& options) const
{
    OutputFile file(output);
    bool const isPage = command.form().ending == ".html";
    if (!isPage && file.isTerminal())
        throw ToolError(
            "a .glb file would upset the terminal. Add -o FILE.glb, or send it into a file with >.",
            ExitCode::wrongUsage);
    FltGltfReport report = isPage ? FltGltfPage::writeStream(visual, file.stream(), options)
                                  : FltGltf::writeGlb(visual, file.stream(), options);
    file.commit();
    return report;
}

FltGltfReport GltfConverter::writeForm(FltVisual const& visual, std::string const& output,
                                       FltGltfOptions const& options) const
{
    if (OutputFile::isStream(output))
        return writeStream(visual, output, options);
    return command.form().ending == ".obj" ? FltObj::write(visual, output, options)
                                           : FltGltf::write(visual, output, options);
}

/// Puts a visual on the globe, if that is wanted. Of a tileset's databases those that have no place there are
/// models.
std::optional<FltGlobeTile> GltfConverter::placedOnGlobe(FltVisual const& visual,
                                                         std::string const& input) const
{
    if (!choices.areOnGlobe())
        return std::nullopt;
    try {
        FltGlobeTile tile = FltGlobe::place(visual);
        for (std::string const& remark : tile.remarks)
            program.warn(std::string(input).append(": ").append(remark));
        return tile;
    } catch (FltGlobeError const& error) {
        if (!choices.makeTileset())
            throw ToolError(input + ": " + error.what());
        program.detail(input + ": a model, since " + error.what());
        return std::nullopt;
    }
}

/// Writes a file of a tileset, and coarser ones.
/// @param tile becomes what the tileset has to know
FltGltfReport GltfConverter::writeTile(FltVisual const& visual, Conversion const& conversion,
                                       FltGltfOptions const& options, std::optional<FltTile>& tile) const
{
    FltTileFiles::Written written =
        FltTileFiles::write(visual, conversion.output, options, choices.areSplit());
    if (written.leftOut != 0)
        program.warn(conversion.input + ": " + Numbers::counted(written.leftOut, "distance", "distances") +
                     " at which levels of detail change have no file of their own");
    tile = std::move(written.tile);
    return std::move(written.report);
}

/// @param options how, but for the names of references
/// @param tile    becomes what a tileset has to know, if the result may be part of one
FltGltfReport GltfConverter::write(FltVisual const& visual, Conversion const& conversion,
                                   FltGltfOptions options, std::optional<FltTile>& tile) const
{
    ReferenceNames const names(conversion.referenceOutputs,
                               std::filesystem::path(conversion.output).parent_path().string());
    std::size_t leftOut = 0;
    options.addressOf = [&](std::string const& database) {
        std::optional<std::string> name = names.nameOf(database);
        leftOut += name ? 0 : 1;
        return name;
    };
    bool const isTile = (choices.areOnGlobe() || choices.areSplit()) && command.form().ending == ".glb" &&
                        !OutputFile::isStream(conversion.output);
    FltGltfReport report =
        isTile ? writeTile(visual, conversion, options, tile) : writeForm(visual, conversion.output, options);
    ConversionWarnings const warnings(program, conversion.input);
    warnings.ofReferencesLeftOut(leftOut);
    warnings.ofLosses(command.form().ending == ".obj" ? "OBJ" : "glTF", report.omissions);
    return report;
}

void GltfConverter::warnOfUnit(FltVisual const& visual, FltLoader const& loader,
                               std::string const& input) const
{
    using Unit = FltDatabaseInfo::Unit;
    if (loader.units == FltLoader::Units::stored && visual.info.unit != Unit::metres)
        program.warn(input + ": places are in " + FltDatabaseInfo::nameOf(visual.info.unit) +
                     ", which readers take for metres: leave --units stored out unless that is wanted");
}

ConversionResult GltfConverter::convert(Conversion const& conversion, FltLoader::Progress const& progress,
                                        std::function<void()> const& loaded) const
{
    auto const begin = std::chrono::steady_clock::now();
    std::optional<FactsOfLoad> facts;
    if (!command.options().report.empty())
        facts.emplace(conversion.input);
    program.detail("reading " + conversion.input);
    FltLoader const loader = makeLoader(progress);
    FltVisual const stored = loader.loadVisual(conversion.input);
    loaded();
    std::optional<FltGlobeTile> const onGlobe = placedOnGlobe(stored, conversion.input);
    FltVisual const& visual = onGlobe ? onGlobe->visual : stored;
    LoadMessages(program).show(visual);
    if (!onGlobe) // there all is in metres
        warnOfUnit(visual, loader, conversion.input);
    FltGltfOptions options = makeOptions(loader);
    if (onGlobe)
        options.globe = onGlobe->frame.place();
    std::optional<FltTile> tile;
    FltGltfReport const report = write(visual, conversion, options, tile);
    if (facts) {
        facts->take(visual);
        if (tile)
            facts->take(*std::move(tile));
        facts->takeWritten(report.files, conversion.output);
    }
    ConversionStatistics statistics;
    statistics.nodes = report.nodes;
    statistics.triangles = report.triangles;
    if (command.options().measures)
        statistics.faces = SceneStatistics::facesOf(visual.references, conversion.input);
    statistics.textures = report.images;
    statistics.bytesIn = visual.info.bytes;
    statistics.bytesOut = report.bytes;
    statistics.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return {statistics, facts ? facts->facts() : ConversionFacts{}};
}

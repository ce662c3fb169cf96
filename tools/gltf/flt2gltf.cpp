// Converts OpenFlight databases into glTF files.

#include "convert/ConversionCommand.h"
#include "convert/TilesetRun.h"
#include "gltf/GltfConverter.h"
#include "tiles/FltTileFiles.h"

#include <filesystem>

namespace
{

ProgramDescription description()
{
    return {
        "flt2gltf",
        "convert OpenFlight databases into glTF files",
        "FILE.flt|DIR...",
        {"OpenFlight is the usual format of flight and driving simulators for terrain, buildings and "
         "vehicles; glTF is the format that browsers, globes, game engines and modellers read. A .glb file "
         "is all of a model in one file; a .gltf file is text, and has a .bin file and its textures "
         "beside it. A page (.html) shows the model in a browser, from a disk as well; above 100 MB take a "
         ".glb. OBJ (.obj) is for programs that read nothing newer.",
         "The result is in metres and y is up, as glTF wants it. It holds the finest level of detail and "
         "what is shown of the database, by rules that all readers know; more is there if asked for. What "
         "glTF can't tell is listed.",
         "Of a directory all databases are converted, and those of the directories below it. Their files "
         "stand in the output's directory as they stood there, and share their textures in \"textures\". "
         "Files that the database refers to are converted with it. With --xref file each becomes a file of "
         "its own; a node names it in its \"extras\", which no reader draws by itself.",
         "A result takes its place when it is whole; what stood there before stays until then. When many "
         "databases are converted, those that can't be are reported in the end, and the rest is "
         "converted all the same."},
        {{"flt2gltf -o airfield.glb airfield.flt", "one file for a browser or an engine"},
         {"flt2gltf -o airfield.gltf airfield.flt", "text, with textures beside it"},
         {"flt2gltf -o airfield.html airfield.flt", "a page that shows it, without a network"},
         {"flt2gltf -o converted/ models/", "a whole directory"},
         {"flt2gltf --if-newer -o converted/ models/", "again, but only what has changed"},
         {"flt2gltf --lod all -o a.glb airfield.flt", "with the coarser levels of detail"},
         {"flt2gltf --tileset --lod split --xref file -o globe/ terrain/", "3D Tiles for a globe"}},
        ExitCode::wrongUsage,
        {"flt2iv", "flttileset", "fltreport", "fltshot", "fltinfo", "fltcheck"}};
}

/// The forms that results can have.
std::vector<ConversionForm> forms()
{
    return {{".glb", "glTF in one file"},
            {".gltf", "glTF as text", {".bin"}, true, true},
            {".html", "a page for browsers"},
            {".obj", "OBJ", {".mtl"}, true, true}};
}

/// Where the files of a run share their textures; empty where each has its own.
std::string sharedTextures(ConversionCommand const& command)
{
    std::string const ending = command.form().ending;
    bool const isGltf = ending == ".glb" || ending == ".gltf";
    std::filesystem::path const output = command.outputName();
    if (isGltf && command.goesToDirectory())
        return (output / "textures").string();
    bool const areSeveral = command.options().references == FltLoader::References::asFile;
    return isGltf && areSeveral ? (output.parent_path() / "textures").string() : "";
}

/// The tileset of the results.
std::string tilesetOf(ConversionCommand const& command)
{
    std::filesystem::path const output = command.outputName();
    return ((command.goesToDirectory() ? output : output.parent_path()) / "tileset.json").string();
}

/// Has a run write the report that a tileset is made of.
void prepareTileset(ConversionCommand& command)
{
    if (command.loaderOptions().makeLoader().units == FltLoader::Units::stored)
        throw UsageError("--tileset needs --units metres: globes know no other unit");
    if (!command.options().report.empty() || command.isPlan())
        return;
    if (command.isPart())
        throw UsageError("--tileset needs --report where a part is converted alone: flttileset makes the "
                         "tileset of the reports of all parts");
    if (OutputFile::isStream(command.outputName()))
        throw UsageError("--tileset needs results with a place: add -o FILE.glb or -o DIR/");
    std::filesystem::path const report =
        std::filesystem::path(tilesetOf(command)).replace_extension(".jsonl");
    std::filesystem::create_directories(report.parent_path().empty() ? "." : report.parent_path());
    command.options().report = report.string();
}

} // namespace

int main(int argc, char** argv)
{
    Program program(description());
    ConversionCommand command(program, forms());
    GltfChoices choices;
    choices.add(program);
    command.leaveOut({"levels", "exact", "names"});
    command.addOptions();
    return program.run(argc, argv, [&] {
        if (choices.makeTileset())
            prepareTileset(command);
        command.check();
        choices.check(command.form().ending);
        if (choices.areSplit())
            command.options().beside = FltTileFiles::coarserEndings();
        command.options().readsTextures = true;
        command.options().textureDirectory = sharedTextures(command);
        ExitCode const code = command.run(GltfConverter(program, command, choices));
        if (!choices.makeTileset() || command.isPart() || command.isPlan())
            return code;
        ExitCode const ofTileset = TilesetRun(program).write({command.options().report}, tilesetOf(command));
        return code != ExitCode::success ? code : ofTileset;
    });
}

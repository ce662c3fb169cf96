// Converts OpenFlight databases into Open Inventor files.

#include "convert/ConversionCommand.h"
#include "iv/SceneConverter.h"

namespace
{

ProgramDescription description()
{
    return {"flt2iv",
            "convert OpenFlight databases into Open Inventor files",
            "FILE.flt|DIR...",
            {"OpenFlight is the usual format of flight and driving simulators for terrain, buildings and "
             "vehicles; Open Inventor is a scene graph that viewers and programs on the Coin toolkit read "
             "directly.",
             "Of a directory all databases are converted, and those of the directories below it. Their files "
             "stand in the output's directory as they stood there.",
             "Files that the database refers to are converted with it. Textures are named in the result, not "
             "copied.",
             "A result takes its place when it is whole; what stood there before stays until then. When many "
             "databases are converted, those that can't be are reported in the end, and the rest is "
             "converted all the same."},
            {{"flt2iv airfield.flt", "look at the scene graph as text"},
             {"flt2iv -o airfield.iv airfield.flt", "write it into a file"},
             {"flt2iv -b -o airfield.iv tower.flt", "the same, smaller and faster to load"},
             {"flt2iv -o airfield.wrl airfield.flt", "write VRML97"},
             {"flt2iv --embed-textures -z -o one.iv airfield.flt", "all in one file, compressed"},
             {"flt2iv -o converted/ models/", "a whole directory"},
             {"flt2iv --if-newer -o converted/ models/", "again, but only what has changed"},
             {"flt2iv --xref file -o city.iv city.flt", "each referenced database in a file of its own"}},
            ExitCode::wrongUsage,
            {"flt2gltf", "fltreport", "fltshot", "fltinfo", "fltcheck"}};
}

/// Takes over the form of the results.
void choose(SceneForm& form, ConversionCommand& command)
{
    form.isVrml = command.form().ending == ".wrl";
    if (form.isVrml && form.isBinary)
        throw UsageError("VRML97 has no binary form: leave -b out, or take -z instead");
    command.options().readsTextures = form.embedsTextures;
}

} // namespace

int main(int argc, char** argv)
{
    Program program(description());
    ConversionCommand command(program, {{".iv", "Open Inventor"}, {".wrl", "VRML97", {}, false, true}});
    SceneForm form;
    program.flag("-b,--binary", form.isBinary, "Write the binary form instead of text.");
    program.flag("-z,--compress", form.isCompressed,
                 "Compress the result by gzip. The toolkit reads it as it is.");
    program.flag("--embed-textures", form.embedsTextures,
                 "Write the pixels of textures into the result instead of their names.");
    command.addOptions();
    return program.run(argc, argv, [&] {
        command.check();
        choose(form, command);
        return command.run(SceneConverter(program, command.loaderOptions(), command.options(), form));
    });
}

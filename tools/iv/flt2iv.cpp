// Converts an OpenFlight database into an Open Inventor file.

#include "support/LoaderOptions.h"
#include "support/OutputFile.h"
#include "support/Program.h"
#include "support/SceneMessages.h"
#include "support/ToolError.h"

#include "toolkit/SceneWriter.h"

#include <Inventor/nodes/SoSeparator.h>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

struct Options {
    std::vector<std::string> inputs;
    std::string output = "-";
    bool isBinary = false;
};

ProgramDescription description()
{
    return {"flt2iv",
            "convert OpenFlight databases into Open Inventor files",
            "FILE.flt",
            {"OpenFlight is the usual format of flight and driving simulators for terrain, buildings and "
             "vehicles; Open Inventor is a scene graph that viewers and programs on the Coin toolkit read "
             "directly.",
             "Files that the database refers to are converted with it. Textures are named in the result, not "
             "copied.",
             "The result takes its place when it is whole; what stood there before stays until then."},
            {{"flt2iv airfield.flt", "look at the scene graph as text"},
             {"flt2iv -o airfield.iv airfield.flt", "write it into a file"},
             {"flt2iv -b -o airfield.iv tower.flt", "the same, smaller and faster to load"}},
            ExitCode::wrongUsage,
            {"fltshot", "fltinfo", "fltcheck"}};
}

void writeScene(SoNode* root, FILE* file, bool isBinary)
{
    SceneWriter::Output output;
    output.setFilePointer(file);
    output.setBinary(isBinary);
    SceneWriter::write(root, output);
}

ExitCode convert(Program const& program, Options const& options, LoaderOptions const& loaderOptions)
{
    OutputFile::checkEnding(options.output, {".iv"});
    if (options.inputs.size() > 1)
        throw UsageError("one database at a time, please");
    SceneMessages const messages(program);
    FltLoader loader = loaderOptions.makeLoader();
    if (options.output != "-")
        loader.textureNamesFrom = std::filesystem::path(options.output).parent_path().string();
    std::string const& input = options.inputs.front();
    program.detail("reading " + input);
    FltScene const scene = loader.load(input);
    messages.show(scene);
    OutputFile output(options.output, loaderOptions.keptFiles(input, scene));
    if (options.isBinary && output.isTerminal())
        throw ToolError(
            "binary output would upset the terminal. Add -o FILE.iv, or send it into a file with >.",
            ExitCode::wrongUsage);
    writeScene(scene.root(), output.stream(), options.isBinary);
    output.commit();
    return ExitCode::success;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    Program program(description());
    program.value("-o,--output", options.output, "FILE.iv", "Where to write; - is standard output.", ".iv");
    program.flag("-b,--binary", options.isBinary, "Write the binary form instead of text.");
    LoaderOptions const loaderOptions(program);
    program.inputs(options.inputs);
    return program.run(argc, argv, [&] { return convert(program, options, loaderOptions); });
}

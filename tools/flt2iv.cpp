// Converts an OpenFlight database into an Open Inventor file.

#include "support/LoaderOptions.h"
#include "support/OutputFile.h"
#include "support/Tool.h"

#include "toolkit/SceneWriter.h"

#include <CLI/CLI.hpp>
#include <Inventor/nodes/SoSeparator.h>
#include <cstdio>
#include <filesystem>
#include <string>

namespace
{

constexpr char description[] =
    "Converts an OpenFlight scene database (.flt) into an Open Inventor file (.iv).\n"
    "\n"
    "OpenFlight is the usual format of flight and driving simulators for terrain, buildings and vehicles; "
    "Open\n"
    "Inventor is a scene graph that viewers and programs on the Coin toolkit read directly.";

constexpr char footer[] =
    "Examples:\n"
    "  flt2iv airfield.flt                 look at the scene graph as text\n"
    "  flt2iv -o airfield.iv airfield.flt  write it into a file\n"
    "  flt2iv -b -o airfield.iv tower.flt  the same, smaller and faster to load\n"
    "\n"
    "Files that the database refers to are converted with it. Textures are named in the result, not\n"
    "copied. With --log a listing of every record goes to IN.flt.log, next to the input. The result\n"
    "takes its place when it is whole; what stood there before stays until then.\n"
    "\n"
    "Exit codes: 0 done, 1 the file can't be read or written, 2 wrong usage.";

struct Options {
    std::string input;
    std::string output = "-";
    bool binary = false;
    bool quiet = false;
};

void writeScene(SoNode* root, FILE* file, bool binary)
{
    SceneWriter::Output output;
    output.setFilePointer(file);
    output.setBinary(binary);
    SceneWriter::write(root, output);
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app(description, "flt2iv");
    app.footer(footer);
    app.add_option("IN.flt", options.input, "The database to convert")->required();
    app.add_option("-o,--output", options.output, "Where to write; - is standard output")
        ->type_name("FILE.iv")
        ->capture_default_str();
    app.add_flag("-b,--binary", options.binary, "Write the binary form instead of text");
    app.add_flag("-q,--quiet", options.quiet, "Show errors only, no warnings");
    LoaderOptions const loaderOptions(app);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return static_cast<int>(app.exit(error) == 0 ? ExitCode::success : ExitCode::wrongUsage);
    }

    Tool const tool("flt2iv", options.quiet);
    return tool.run([&] {
        OutputFile::checkEnding(options.output, {".iv"});
        FltLoader loader = loaderOptions.makeLoader();
        if (options.output != "-")
            loader.textureNamesFrom = std::filesystem::path(options.output).parent_path().string();
        FltScene const scene = tool.load(loader, options.input);
        OutputFile output(options.output, loaderOptions.keptFiles(options.input, scene));
        if (options.binary && output.isTerminal())
            throw ToolError(
                "binary output would upset the terminal. Add -o FILE.iv, or send it into a file with >.",
                ExitCode::wrongUsage);
        writeScene(scene.root(), output.stream(), options.binary);
        output.commit();
        return ExitCode::success;
    });
}

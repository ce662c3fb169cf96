// Converts an OpenFlight database into an Open Inventor file.

#include "FltHost.h"

#include "toolkit/SceneWriter.h"

#include <CLI/CLI.hpp>
#include <Inventor/nodes/SoSeparator.h>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

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
    "A listing of every record in the database goes to IN.flt.log, next to the input. Files that\n"
    "the database refers to are converted with it. Textures are named in the result, not copied:\n"
    "keep IN.flt and the result in the same directory.\n"
    "\n"
    "Exit codes: 0 done, 1 the file can't be read or written, 2 wrong usage.";

struct Options {
    std::string input;
    std::string output = "-";
    bool binary = false;
    bool quiet = false;
};

[[noreturn]] void failToWrite(std::string const& name, int reason)
{
    throw FltHostError(name + ": cannot write: " + std::strerror(reason) +
                       ". Check the directory, its permissions and the space on the disk.");
}

void writeScene(SoNode* root, FILE* file, bool binary)
{
    SceneWriter::Output output;
    output.setFilePointer(file);
    output.setBinary(binary);
    SceneWriter::write(root, output);
}

void writeToStandardOutput(SoNode* root, bool binary)
{
    writeScene(root, stdout, binary);
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        failToWrite("standard output", errno != 0 ? errno : EIO);
}

void writeToFile(SoNode* root, std::string const& name, bool binary)
{
    FILE* file = std::fopen(name.c_str(), "wb");
    if (file == nullptr)
        failToWrite(name, errno);
    writeScene(root, file, binary);
    errno = 0;
    bool const bad = std::ferror(file) != 0;
    if (std::fclose(file) == 0 && !bad)
        return;
    int const reason = errno != 0 ? errno : EIO;
    // Half a file is worse than none.
    std::error_code ignored;
    if (std::filesystem::is_regular_file(name, ignored))
        std::filesystem::remove(name, ignored);
    failToWrite(name, reason);
}

/// What is wrong with a command line that can be parsed, or an empty text.
std::string misuse(Options const& options)
{
    if (options.output == "-")
        return options.binary && isatty(STDOUT_FILENO) != 0
                   ? "binary output would upset the terminal. Add -o FILE, or send it into a file with >."
                   : "";
    std::error_code ignored;
    if (std::filesystem::equivalent(options.input, options.output, ignored))
        return "the output would replace the input. Choose another name for -o.";
    return "";
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app(description, "flt2iv");
    app.footer(footer);
    app.add_option("IN.flt", options.input, "The database to convert")->required();
    app.add_option("-o,--output", options.output, "Where to write; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app.add_flag("-b,--binary", options.binary, "Write the binary form instead of text");
    app.add_flag("-q,--quiet", options.quiet, "Show errors only, no warnings");
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? FltHost::success : FltHost::wrongUsage;
    }

    FltHost host("flt2iv", options.quiet);
    if (std::string const problem = misuse(options); !problem.empty()) {
        host.error(problem);
        return FltHost::wrongUsage;
    }
    return host.run([&] {
        SoSeparator* root = host.load(options.input);
        if (options.output == "-")
            writeToStandardOutput(root, options.binary);
        else
            writeToFile(root, options.output, options.binary);
        root->unref();
        return FltHost::success;
    });
}

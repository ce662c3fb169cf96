// Says what OpenFlight databases hold.

#include "info/DatabaseReport.h"
#include "info/InfoJson.h"
#include "info/InfoText.h"
#include "support/JsonText.h"
#include "support/Program.h"
#include "support/TextureFinder.h"
#include "support/ToolError.h"

#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "messages/FltText.h"

#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> texturePath;
    std::string tree;
    std::string records;
    std::string deps;
    bool isJson = false;
    bool isFast = false;
};

constexpr char all[] = "all";

ProgramDescription description()
{
    return {"fltinfo",
            "say what OpenFlight databases hold",
            "FILE.flt...",
            {"The database is read, and unless --fast is given its scene graph is made, for its box and its "
             "memory. "
             "Nothing is written but to standard output.",
             "Distances are in the units of the database, those of the scene's box in metres.",
             "Textures and references are listed with where they were found, as programs on the toolkit find "
             "them."},
            {{"fltinfo airfield.flt", "what it holds: header, geometry, hierarchy, files"},
             {"fltinfo --tree 2 airfield.flt", "the upper two levels of its hierarchy"},
             {"fltinfo --records 73 airfield.flt", "its levels of detail, all fields, as JSON"},
             {"fltinfo --deps airfield.flt", "all files that it needs"},
             {"fltinfo --deps=make airfield.flt", "the same as a rule for make"},
             {"fltinfo --json *.flt", "everything, for a program"}},
            ExitCode::wrongUsage,
            {"fltcheck", "flt2iv", "fltshot"}};
}

bool isNumber(std::string const& text)
{
    return !text.empty() && text.size() <= 9 && std::all_of(text.begin(), text.end(), [](char character) {
        return character >= '0' && character <= '9';
    });
}

void print(std::string const& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

std::uint32_t depthOf(std::string const& option)
{
    return isNumber(option) ? static_cast<std::uint32_t>(std::stoul(option))
                            : std::numeric_limits<std::uint32_t>::max();
}

void printRecords(std::string const& file, std::string const& wanted)
{
    for (FltRecordReader reader(file); reader.next();)
        if (wanted == all || std::to_string(reader.opcode()) == wanted)
            print(reader.json() + "\n");
}

/// A file's name as make takes it.
std::string makeName(std::string const& name)
{
    std::string escaped;
    for (char const character : name) {
        if (character == ' ' || character == '#')
            escaped += '\\';
        escaped += character == '$' ? "$$" : std::string(1, character);
    }
    return escaped;
}

void warnOfMissing(Program const& program, FltDependencies const& dependencies)
{
    for (FltDependencies::Texture const& texture : dependencies.textures())
        if (texture.path.empty())
            program.warn(texture.database + ": texture " + texture.name + " is missing");
    for (FltDependencies::Reference const& reference : dependencies.references())
        if (reference.state != FltDependencies::State::found)
            program.warn(reference.database + ": reference " + reference.name + " is " +
                         DatabaseReport::stateOf(reference.state));
}

/// Whether a name can stand in a rule: make has no way to quote some characters, and some would be commands.
bool isForMake(std::string const& name)
{
    return name.find_first_of(";:=") == std::string::npos && FltText::printable(name) == name;
}

void printRule(Program const& program, std::string const& database, FltDependencies const& dependencies)
{
    if (!isForMake(database))
        throw ToolError(database + ": make knows no such name. Give the file another one.", ExitCode::failed);
    std::string text = makeName(database) + ":";
    for (std::string const& file : dependencies.files())
        if (isForMake(file))
            text += " \\\n  " + makeName(file);
        else
            program.warn(database + ": " + file + " isn't in the rule: make knows no such name");
    print(text + "\n");
}

void printFiles(std::string const& database, FltDependencies const& dependencies)
{
    std::string text = FltText::printable(database) + "\n";
    for (std::string const& file : dependencies.files())
        text += FltText::printable(file) + "\n";
    print(text);
}

/// @param problem takes why there is no scene
std::optional<SceneMeasure> measureScene(Options const& options, std::string const& file,
                                         std::string& problem)
{
    try {
        FltLoader loader;
        loader.texturePath = options.texturePath;
        FltScene const scene = loader.load(file);
        return SceneMeasure::of(scene.root());
    } catch (FltLoadError const& error) {
        problem = error.what();
    }
    return std::nullopt;
}

/// @param list takes what is to be printed as JSON
void describe(Program const& program, Options const& options, std::string const& file, Json& list)
{
    if (!options.records.empty()) {
        printRecords(file, options.records);
        return;
    }
    program.detail("reading " + file);
    std::string problem;
    std::optional<SceneMeasure> scene;
    // Before the inventory, so that the memory of only one of them is taken at a time.
    if (!options.isFast && options.tree.empty() && options.deps.empty())
        scene = measureScene(options, file, problem);
    FltInventory const inventory(file);
    if (!options.tree.empty()) {
        std::uint32_t const depth = depthOf(options.tree);
        if (options.isJson)
            list.push_back({{"file", file}, {"nodes", InfoJson::treeOf(inventory, depth)}});
        else
            print(InfoText(program.colours()).treeOf(inventory, depth));
        return;
    }
    FltDependencies const dependencies(inventory, TextureFinder(file, options.texturePath));
    if (!options.deps.empty()) {
        warnOfMissing(program, dependencies);
        if (options.isJson)
            list.push_back({{"file", file}, {"files", InfoJson::filesOf(dependencies)}});
        else if (options.deps == "make")
            printRule(program, file, dependencies);
        else
            printFiles(file, dependencies);
        return;
    }
    if (!problem.empty())
        program.warn("no scene: " + problem);
    DatabaseReport const report{inventory, dependencies, scene};
    if (options.isJson)
        list.push_back(InfoJson::of(report));
    else
        print(InfoText(program.colours()).of(report));
}

ExitCode describeAll(Program const& program, Options const& options)
{
    ExitCode code = ExitCode::success;
    Json list = Json::array();
    for (std::size_t i = 0; i < options.files.size(); ++i) {
        if (i != 0 && !options.isJson && options.deps.empty() && options.records.empty())
            print("\n");
        try {
            describe(program, options, options.files[i], list);
        } catch (std::exception const& problem) {
            program.error(problem.what());
            code = ExitCode::failed;
        }
    }
    // One file gives one object, several a list.
    if (options.isJson && options.records.empty() && !list.empty())
        print(JsonText::of(options.files.size() == 1 ? list[0] : list));
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    Program program(description());
    program.optionalValue("--tree", options.tree, all, "DEPTH", isNumber,
                          "Print the hierarchy, down to a depth: types, names, sizes.");
    program.optionalValue("--records", options.records, all, "OPCODE", isNumber,
                          "Print the records, or those of an opcode: one JSON object a line.");
    program.optionalValue(
        "--deps", options.deps, "list", "FORM",
        [](std::string const& word) { return word == "list" || word == "make"; },
        "Print the database and all files that it needs, recursively: as a list, or as a rule for make.");
    program.flag("--json", options.isJson, "Print JSON: an object, or a list of objects for several files.");
    program.flag("--fast", options.isFast, "Make no scene graph: no box, no memory.");
    program.values("--texture-path", options.texturePath, "DIR",
                   "Look for textures there as well. May be repeated.", "/");
    program.colourOption();
    program.inputs(options.files);
    return program.run(argc, argv, [&] { return describeAll(program, options); });
}

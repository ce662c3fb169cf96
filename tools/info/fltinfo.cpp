// Says what OpenFlight databases hold.

#include "info/DatabaseReport.h"
#include "info/InfoJson.h"
#include "info/InfoText.h"
#include "support/DatabaseFiles.h"
#include "support/FreedMemory.h"
#include "support/JsonText.h"
#include "support/Program.h"
#include "support/TextureFinder.h"
#include "support/ToolError.h"

#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "messages/FltText.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

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
    bool isBrief = false;
};

constexpr char all[] = "all";

ProgramDescription description()
{
    return {"fltinfo",
            "say what OpenFlight databases hold",
            "FILE.flt|DIR...",
            {"The database is read, and unless --fast is given its scene graph is made, for its box and its "
             "memory. "
             "Nothing is written but to standard output.",
             "Distances are in the units of the database, those of the scene's box in metres.",
             "Textures and references are listed with where they were found, as programs on the toolkit find "
             "them.",
             "Of a directory all databases are described, and those of the directories below it."},
            {{"fltinfo airfield.flt", "what it holds: header, geometry, hierarchy, files"},
             {"fltinfo --tree 2 airfield.flt", "the upper two levels of its hierarchy"},
             {"fltinfo --records 73 airfield.flt", "its levels of detail, all fields, as JSON"},
             {"fltinfo --deps airfield.flt", "all files that it needs"},
             {"fltinfo --deps=make airfield.flt", "the same as a rule for make"},
             {"fltinfo --brief models/", "a line for each of a directory"},
             {"fltinfo --json *.flt", "everything, for a program"}},
            ExitCode::wrongUsage,
            {"fltcheck", "flt2iv", "flt2gltf", "fltshot"}};
}

bool isNumber(std::string const& text)
{
    return !text.empty() && text.size() <= 9 && std::all_of(text.begin(), text.end(), [](char character) {
        return character >= '0' && character <= '9';
    });
}

bool isFormOfFiles(std::string const& word)
{
    return word == "list" || word == "make";
}

void print(std::string const& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

/// Refuses what can't be obeyed.
void check(Options const& options)
{
    if (!options.records.empty() && options.records != all && !isNumber(options.records))
        throw UsageError("--records " + options.records +
                         ": give the number of an opcode, as in --records 73");
    if (!options.tree.empty() && options.tree != all && !isNumber(options.tree))
        throw UsageError("--tree " + options.tree + ": give a number of levels, as in --tree 2");
    if (!options.deps.empty() && !isFormOfFiles(options.deps))
        throw UsageError("--deps " + options.deps + ": give list or make");
    bool const isOther =
        options.isJson || !options.tree.empty() || !options.records.empty() || !options.deps.empty();
    if (options.isBrief && isOther)
        throw UsageError("--brief is a form of its own: leave out --json, --tree, --records and --deps");
}

std::uint32_t depthOf(std::string const& option)
{
    return isNumber(option) ? static_cast<std::uint32_t>(std::stoul(option))
                            : std::numeric_limits<std::uint32_t>::max();
}

/// Does something with each database, and reports what it throws.
ExitCode forEach(Program const& program, std::vector<std::string> const& files,
                 std::function<void(std::string const& file)> const& work)
{
    ExitCode code = ExitCode::success;
    for (std::string const& file : files)
        try {
            work(file);
        } catch (std::exception const& problem) {
            program.error(problem.what());
            code = ExitCode::failed;
        }
    return code;
}

/// Prints the records of an opcode, or all of them.
ExitCode printRecords(Program const& program, std::vector<std::string> const& files,
                      std::string const& option)
{
    constexpr std::size_t printedAtOnce = 1 << 16;
    bool const wantsAll = option == all;
    int const wanted = wantsAll ? 0 : std::stoi(option);
    std::set<int> opcodes;
    ExitCode const code = forEach(program, files, [&](std::string const& file) {
        std::string lines;
        for (FltRecordReader reader(file); reader.next();) {
            if (!wantsAll)
                opcodes.insert(reader.opcode());
            if (!wantsAll && reader.opcode() != wanted)
                continue;
            reader.addJson(lines);
            lines += '\n';
            if (lines.size() < printedAtOnce)
                continue;
            print(lines);
            lines.clear();
        }
        print(lines);
    });
    if (wantsAll || opcodes.empty() || opcodes.count(wanted) != 0)
        return code;
    std::string known;
    for (int const opcode : opcodes)
        known += (known.empty() ? "" : ", ") + std::to_string(opcode);
    program.warn("--records " + option + ": no record has this opcode. There are " + known);
    return code;
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
    auto const tellOf = [&](std::string const& file) {
        program.warn(database + ": " + file + " isn't in the rule: make knows no such name");
    };
    for (std::string const& file : dependencies.files())
        if (isForMake(file))
            (text += " \\\n  ") += makeName(file);
        else
            tellOf(file);
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
        loader.origin = FltLoader::Origin::centre; // there the toolkit's floats give the box as it is
        FltScene scene = loader.load(file);
        FltDatabaseInfo const info = scene.info();
        SceneMeasure measure = SceneMeasure::of(std::move(scene), file);
        for (std::size_t axis = 0; axis < 3 && !measure.isEmpty; ++axis) {
            measure.least[axis] += info.offset[axis];
            measure.most[axis] += info.offset[axis];
        }
        return measure;
    } catch (FltLoadError const& error) {
        problem = error.what();
    }
    return std::nullopt;
}

/// @param list takes what is to be printed as JSON
void describe(Program const& program, Options const& options, std::string const& file, Json& list)
{
    program.detail("reading " + file);
    std::string problem;
    std::optional<SceneMeasure> scene;
    // Before the inventory, so that the memory of only one of them is taken at a time.
    if (!options.isFast && options.tree.empty() && options.deps.empty())
        scene = measureScene(options, file, problem);
    FreedMemory::giveBack();
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
    else if (options.isBrief)
        print(InfoText(program.colours()).lineOf(report));
    else
        print(InfoText(program.colours()).of(report));
}

ExitCode describeAll(Program const& program, Options const& options)
{
    check(options);
    DatabaseFiles const databases = DatabaseFiles::named(options.files);
    ExitCode const found = program.reported(databases.problems);
    if (!options.records.empty())
        return std::max(found, printRecords(program, databases.files, options.records));
    bool const hasGaps = !options.isJson && !options.isBrief && options.deps.empty();
    Json list = Json::array();
    ExitCode const described = forEach(program, databases.files, [&](std::string const& file) {
        if (hasGaps && &file != &databases.files.front())
            print("\n");
        describe(program, options, file, list);
    });
    // One file gives one object, several a list.
    if (options.isJson && !list.empty())
        print(JsonText::of(DatabaseFiles::isOneFile(options.files) ? list[0] : list));
    return std::max(found, described);
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
        "--deps", options.deps, "list", "FORM", isFormOfFiles,
        "Print the database and all files that it needs, recursively: as a list, or as a rule for make.");
    program.flag(
        "--brief", options.isBrief,
        "Print a line a file: revision, unit, vertices, faces, triangles, missing textures, extent.");
    program.flag("--json", options.isJson, "Print JSON: an object, or a list of objects for several files.");
    program.flag("--fast", options.isFast, "Make no scene graph: no box, no memory.");
    program.values("--texture-path", options.texturePath, "DIR",
                   "Look for textures there as well. May be repeated.", "/");
    program.colourOption();
    program.inputs(options.files);
    return program.run(argc, argv, [&] { return describeAll(program, options); });
}

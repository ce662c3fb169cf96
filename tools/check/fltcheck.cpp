// Judges OpenFlight databases: what in them is damaged, and what won't be seen.

#include "check/CheckJson.h"
#include "check/CheckText.h"
#include "support/DatabaseFiles.h"
#include "support/FreedMemory.h"
#include "support/JsonText.h"
#include "support/Program.h"
#include "support/TextureFinder.h"

#include "inspect/FltCheck.h"
#include "loader/FltLoader.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

namespace
{

using Json = nlohmann::ordered_json;

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> texturePath;
    std::vector<std::string> ignored;
    std::vector<std::string> explained;
    bool isTable = false;
    bool isJson = false;
    bool isSarif = false;
    bool isStrict = false;
    bool isForgiving = false;
    bool isExact = false;
    bool isFast = false;
};

ProgramDescription description()
{
    return {
        "fltcheck",
        "say what is damaged in OpenFlight databases, and what won't be seen",
        "FILE.flt|DIR...",
        {"Every finding has a code that never changes, a severity, the byte offset of its record, and the "
         "name of "
         "its node. What is found several times in a node is one finding with a count. An error is damage, a "
         "warning something that isn't seen or not as it was meant, a note something that is better done "
         "otherwise.",
         "A code is explained by --explain CODE; --codes lists them all.",
         "Each file is judged by itself. Of the files that it refers to only those are named that are "
         "missing, "
         "can't be read, or lead back to it.",
         "Of a directory all databases are judged, and those of the directories below it. The last line "
         "counts "
         "what was found in several files."},
        {{"fltcheck airfield.flt", "what is wrong with it"},
         {"fltcheck --strict models/", "a directory; exit with 3 for warnings, too"},
         {"fltcheck --ignore FLT-205 airfield.flt", "all but faces that aren't flat"},
         {"fltcheck --exact airfield.flt", "and what the exact conversion loses"},
         {"fltcheck --sarif *.flt >check.sarif", "for a service that reads SARIF"},
         {"fltcheck --explain FLT-601", "what a code means, and what to do"}},
        ExitCode::findings,
        {"fltinfo", "flt2iv", "flt2gltf", "fltshot"}};
}

void print(std::string const& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void print(Json const& json)
{
    print(JsonText::of(json));
}

FltFindingKind const& kindOf(std::string const& code)
{
    FltFindingKind const* kind = FltFindingTable::find(code);
    if (kind == nullptr)
        kind = FltFindingTable::find("FLT-" + code);
    if (kind == nullptr)
        throw UsageError("there is no code " + code + "; --codes lists them");
    return *kind;
}

/// What only a load tells.
struct Loaded {
    std::vector<FltTexture> textures; ///< Its own.
    std::vector<FltOmission> omissions;
};

/// Of a database that can't be loaded nothing: it has other findings.
std::optional<Loaded> load(Program const& program, Options const& options, std::string const& file)
{
    try {
        FltLoader loader;
        loader.texturePath = options.texturePath;
        FltVisual const visual = loader.loadVisual(file);
        std::vector<FltTexture> own = visual.distinctTextures();
        auto const isOthers = [&](FltTexture const& texture) {
            return texture.database != visual.files.front();
        };
        own.erase(std::remove_if(own.begin(), own.end(), isOthers), own.end());
        return Loaded{std::move(own), visual.omissions};
    } catch (FltLoadError const& problem) {
        program.detail(std::string("no scene: ") + problem.what());
    }
    return std::nullopt;
}

void checkScene(Loaded const& loaded, Options const& options, FltCheck& check)
{
    check.checkPictures(loaded.textures);
    for (FltOmission const& omission : loaded.omissions)
        if (!options.isExact)
            check.addOmission(omission.kind, omission.count);
}

void drop(std::set<int> const& ignored, CheckedFile& checked)
{
    auto const isIgnored = [&](FltFinding const& finding) {
        return ignored.count(finding.kind->number) != 0;
    };
    checked.findings.erase(std::remove_if(checked.findings.begin(), checked.findings.end(), isIgnored),
                           checked.findings.end());
    for (int const number : ignored)
        checked.leftOut.erase(number);
}

CheckedFile check(Program const& program, Options const& options, std::string const& file)
{
    program.detail("reading " + file);
    std::optional<Loaded> loaded;
    // Before the inventory, so that the memory of only one of them is taken at a time.
    if (!options.isFast)
        loaded = load(program, options, file);
    FreedMemory::giveBack();
    FltInventory const inventory(file, options.isExact ? FltInventory::Offsets::bySums
                                                       : FltInventory::Offsets::byPlace);
    FltCheck check(inventory);
    check.checkRecords();
    check.checkGeometry();
    check.checkPalettes();
    check.checkFiles(FltDependencies(inventory, TextureFinder(file, options.texturePath)));
    check.checkHierarchy();
    check.checkVisibility();
    if (options.isExact)
        check.checkExactConversion();
    if (loaded)
        checkScene(*loaded, options, check);
    return {file, "", check.findings(), check.leftOut()};
}

/// What is wrong with a file, also if it can't be read.
CheckedFile judge(Program const& program, Options const& options, std::string const& file)
{
    try {
        return check(program, options, file);
    } catch (std::exception const& problem) {
        program.error(problem.what());
        return {file, problem.what(), {}, {}};
    }
}

std::set<int> ignoredIn(Options const& options)
{
    std::set<int> numbers;
    for (std::string const& code : options.ignored)
        numbers.insert(kindOf(code).number);
    return numbers;
}

bool isBad(Options const& options, FindingCounts const& counts)
{
    return !options.isForgiving && (counts.errors != 0 || (options.isStrict && counts.warnings != 0));
}

ExitCode checkAll(Program const& program, Options const& options)
{
    std::set<int> const ignored = ignoredIn(options);
    DatabaseFiles const databases = DatabaseFiles::named(options.files);
    CheckText const text(program.colours(), program.isQuiet());
    std::vector<CheckedFile> all;
    FindingCounts total;
    std::size_t unreadable = 0;
    for (std::string const& file : databases.files) {
        CheckedFile checked = judge(program, options, file);
        drop(ignored, checked);
        unreadable += checked.problem.empty() ? 0 : 1;
        total += checked.counts();
        if (options.isJson || options.isSarif)
            all.push_back(std::move(checked));
        else
            print(text.of(checked));
    }
    if (options.isSarif)
        print(CheckJson::sarifOf(all));
    else if (options.isJson)
        print(CheckJson::of(all));
    else if (!DatabaseFiles::isOneFile(options.files))
        print(text.totalOf(total, databases.files.size() - unreadable, unreadable));
    bool const isRead = program.reported(databases.problems) == ExitCode::success && unreadable == 0;
    return !isRead ? ExitCode::failed : isBad(options, total) ? ExitCode::findings : ExitCode::success;
}

ExitCode obey(Program const& program, Options const& options)
{
    if (!options.explained.empty()) {
        for (std::string const& code : options.explained)
            print(CheckText::pageOf(kindOf(code)));
        return ExitCode::success;
    }
    if (options.isTable) {
        print(CheckText(program.colours(), false).table());
        return ExitCode::success;
    }
    if (options.files.empty())
        throw UsageError("FILE is required");
    if (options.isJson && options.isSarif)
        throw UsageError("--json and --sarif exclude each other");
    if (options.isStrict && options.isForgiving)
        throw UsageError("--strict and --exit-zero contradict each other");
    return checkAll(program, options);
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    Program program(description());
    program.flag("--strict", options.isStrict, "Exit with 3 for warnings as well as for errors.");
    program.flag("--exit-zero", options.isForgiving,
                 "Exit with 0 whatever is found. A file that can't be read still gives 1.");
    program.values("--ignore", options.ignored, "CODE", "Say nothing of a kind of finding. May be repeated.");
    program.flag("--exact", options.isExact,
                 "Judge what the exact conversion loses, in place of the complete one.");
    program.flag("--fast", options.isFast,
                 "Don't load it: nothing is said of its pictures, nor of what isn't shown.");
    program.flag("--json", options.isJson, "Print a JSON object.");
    program.flag("--sarif", options.isSarif, "Print SARIF 2.1.0.");
    program.values("--explain", options.explained, "CODE",
                   "Explain a code: what, why it matters, how to mend it.");
    program.flag("--codes", options.isTable, "List all codes.");
    program.values("--texture-path", options.texturePath, "DIR",
                   "Look for textures there as well. May be repeated.", "/");
    program.colourOption();
    program.inputs(options.files, false);
    return program.run(argc, argv, [&] { return obey(program, options); });
}

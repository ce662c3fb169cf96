// The conversions whose instructions "./dev bench --check" counts: see check_budgets.py.
//
// "counted_conversions FOLDER write" makes the databases, and "counted_conversions FOLDER" converts them and
// prints a line for each: the process that did it, how many items there are, and what they are.

#include "BenchDatabase.h"
#include "BenchTime.h"
#include "SceneCase.h"
#include "convert/FltToInventor.h"
#include "dump/FltDumpOutput.h"
#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "parser/FltFileInput.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SoDB.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

namespace
{

constexpr int terrainVertices = 30'000;

/// A tenth of what the times are taken of, and that: under a counter everything takes fifty times as long.
constexpr int divisors[] = {10, 1};

/// What becomes of a database.
enum class As { sceneWithLog, scene, completeScene, json };

/// Holds a node beyond the work that is counted: nothing is let go in it.
SoSeparator* kept(SoNodeRef<SoSeparator> const& node)
{
    node->ref();
    return node.get();
}

} // namespace

/// The counter looks for this name.
extern "C" [[gnu::noinline]] void convertCounted(char const* path, As as, SoSeparator** root)
{
    switch (as) {
    case As::sceneWithLog:
        *root = FltToInventor::convertFromFile(path);
        return;
    case As::completeScene:
        *root = kept(SoNodeRef<SoSeparator>(FltLoader().load(path).root()));
        return;
    case As::json:
        *root = kept(SoNodeRef<SoSeparator>(new SoSeparator)); // what the caller takes for success
        for (FltRecordReader records(path); records.next();)
            records.json();
        return;
    case As::scene:
        break;
    }
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(path);
    input.dropBytesWhenParsed();
    FltToInventor converter;
    *root = new SoSeparator;
    (*root)->ref();
    converter.setResult(*root);
    converter.setFltInputToconvert(&input);
    converter.convert();
    (*root)->unrefNoDelete();
}

namespace
{

/// Converts in a process of its own: what one conversion leaves in the toolkit's tables is no matter of the
/// next.
void convert(std::string const& path, As as, int count, std::string const& name)
{
    BenchTime::apart(1, [&] {
        Silence const silence;
        SoSeparator* root = nullptr;
        convertCounted(path.c_str(), as, &root);
        if (root == nullptr)
            throw std::runtime_error("no scene of " + path);
        std::printf("%d %d %s\n", static_cast<int>(getpid()), count, name.c_str());
        std::fflush(stdout);
    });
}

void writeAll(std::filesystem::path const& folder)
{
    BenchDatabase::writeTerrain(folder / "terrain.flt", terrainVertices, BenchDatabase::Vertices::shared);
    SceneCase::writeOther(folder / "other.flt");
    SceneCase::writeEmpty(folder / "empty.flt");
    for (SceneCase const& item : SceneCase::all())
        for (int const divisor : divisors) {
            std::filesystem::path const own = folder / item.name / std::to_string(divisor);
            std::filesystem::create_directories(own);
            SceneCase::writeOther(own / "other.flt");
            item.write(own / "scene.flt", item.count / divisor);
        }
}

void convertAll(std::filesystem::path const& folder)
{
    SoDB::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr); // the textures don't exist
    {
        Silence const silence; // the first conversion makes what all others use again
        FltToInventor::convertFromFile((folder / "empty.flt").c_str());
    }
    convert(folder / "empty.flt", As::sceneWithLog, 0, "nothing");
    convert(folder / "terrain.flt", As::sceneWithLog, terrainVertices, "terrain with log");
    convert(folder / "terrain.flt", As::scene, terrainVertices, "terrain without log");
    convert(folder / "terrain.flt", As::completeScene, terrainVertices, "terrain, completely");
    convert(folder / "terrain.flt", As::json, terrainVertices, "terrain as JSON");
    for (SceneCase const& item : SceneCase::all())
        for (int const divisor : divisors)
            convert(folder / item.name / std::to_string(divisor) / "scene.flt", As::sceneWithLog,
                    item.count / divisor, item.name);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3 || (argc == 3 && std::string_view(argv[2]) != "write")) {
        std::fputs("Usage: counted_conversions FOLDER [write]\n", stderr);
        return 2;
    }
    try {
        if (argc == 3)
            writeAll(argv[1]);
        else
            convertAll(argv[1]);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "counted_conversions: %s\n", problem.what());
        return 1;
    }
}

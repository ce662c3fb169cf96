// Converts databases of many kinds and sizes as a host does, with and without a log, and tells the time
// beside that of plain work: copying and writing the same log into a new file, and the toolkit's own reading
// of the same scene. Ratios are of processor time: they hold on a busy machine too.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "convert/FltToInventor.h"
#include "dump/FltDumpOutput.h"
#include "parser/FltFileInput.h"
#include "support/ScratchFolder.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

using BenchDatabase::Appearance;
using BenchDatabase::Names;
using BenchDatabase::Vertices;

constexpr double megabyte = 1e6;
constexpr double microseconds = 1e6;
constexpr std::size_t blockSize = 65536;
constexpr int facesOfTile = 50;

struct Case {
    char const* name;
    int count; ///< Of what the times are told for each.
    std::size_t (*write)(std::string const& path, int count);
    bool isLarge;
    bool hasLog = true; ///< The largest log would fill the disk.
};

std::size_t sharedTerrain(std::string const& path, int count)
{
    return BenchDatabase::writeTerrain(path, count, Vertices::shared);
}

std::size_t sequentialTerrain(std::string const& path, int count)
{
    return BenchDatabase::writeTerrain(path, count, Vertices::ownOfEachFace);
}

std::size_t randomTerrain(std::string const& path, int count)
{
    return BenchDatabase::writeTerrain(path, count, Vertices::random);
}

std::size_t oldTerrain(std::string const& path, int count)
{
    return BenchDatabase::writeTerrain(path, count, Vertices::old);
}

std::size_t changingTerrain(std::string const& path, int count)
{
    return BenchDatabase::writeTerrain(path, count, Vertices::shared, Appearance::changesAtEachFace);
}

std::size_t tiles(std::string const& path, int count)
{
    return BenchDatabase::writeTiles(path, count, facesOfTile);
}

std::size_t distinctObjects(std::string const& path, int count)
{
    return BenchDatabase::writeObjects(path, count, Names::distinct);
}

std::size_t equalObjects(std::string const& path, int count)
{
    return BenchDatabase::writeObjects(path, count, Names::equal);
}

constexpr Case cases[] = {
    {"shared vertices", 30'000, sharedTerrain, false},
    {"shared vertices", 300'000, sharedTerrain, false},
    {"shared vertices", 1'000'000, sharedTerrain, false},
    {"vertices of one face each", 300'000, sequentialTerrain, false},
    {"random vertices", 30'000, randomTerrain, false},
    {"random vertices", 300'000, randomTerrain, false},
    {"textures and materials", 300'000, changingTerrain, false},
    {"old vertices", 300'000, oldTerrain, false},
    {"tiles of 50 faces", 1'000, tiles, false},
    {"objects of distinct names", 20'000, distinctObjects, false},
    {"objects of equal names", 20'000, equalObjects, false},
    {"objects of distinct names", 200'000, distinctObjects, true},
    {"objects of equal names", 200'000, equalObjects, true},
    {"shared vertices", 10'000'000, sharedTerrain, true, false},
};

/// A conversion, the release of its scene and the end of the process.
struct Conversion {
    BenchTime work;
    BenchTime release;
    BenchTime end;

    static Conversion best(Conversion const& a, Conversion const& b)
    {
        return {BenchTime::best(a.work, b.work), BenchTime::best(a.release, b.release),
                BenchTime::best(a.end, b.end)};
    }
};

struct Result {
    Case const* item;
    double fileSize;
    double logSize;
    double sceneSize; ///< Of the binary file.
    Conversion withLog;
    Conversion withoutLog;
    BenchTime copying;  ///< cat LOG > COPY, a new file.
    BenchTime writing;  ///< As many bytes as the log's in blocks, into a new file.
    BenchTime reading;  ///< cat DATABASE > /dev/null.
    Conversion toolkit; ///< Its reading of the scene.
};

SoSeparator* convertWithoutLog(std::string const& path)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(path.c_str());
    input.dropBytesWhenParsed();
    FltToInventor converter;
    auto* const root = new SoSeparator;
    root->ref();
    converter.setResult(root);
    converter.setFltInputToconvert(&input);
    converter.convert();
    root->unrefNoDelete();
    return root;
}

SoSeparator* readWithToolkit(std::string const& path)
{
    SoInput in;
    if (!in.openFile(path.c_str()))
        return nullptr;
    SoSeparator* const root = SoDB::readAll(&in);
    if (root != nullptr)
        root->ref();
    return root;
}

template <class Load>
Conversion measureLoad(Load load)
{
    SoSeparator* root = nullptr;
    std::vector<BenchTime> const times = BenchTime::stepsApart({[&] {
                                                                    Silence const silence;
                                                                    root = load();
                                                                    if (root == nullptr)
                                                                        throw std::runtime_error("no scene");
                                                                },
                                                                [&] { root->unref(); }});
    return {times[0], times[1], times[2]};
}

void saveScene(std::string const& database, std::string const& path)
{
    BenchTime::apart(1, [&] {
        Silence const silence;
        SoSeparator* const root = convertWithoutLog(database);
        SoOutput out;
        if (!out.openFile(path.c_str()))
            throw std::runtime_error("cannot write " + path);
        out.setBinary(TRUE);
        SoWriteAction(&out).apply(root);
    });
}

/// Makes a new file of a size, in blocks. What the bytes are makes no difference.
void writeInBlocks(std::string const& path, std::size_t size)
{
    std::string const block(blockSize, '0');
    int const file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    for (std::size_t at = 0; at < size; at += blockSize) {
        std::size_t const part = std::min(blockSize, size - at);
        if (write(file, block.data(), part) != static_cast<ssize_t>(part))
            throw std::runtime_error("cannot write " + path);
    }
    close(file);
}

void measureOnce(Result& result, std::string const& path, std::string const& scene, std::string const& copy,
                 bool isFirst)
{
    auto const keep = [isFirst](auto& best, auto const& time) {
        best = isFirst ? time : std::remove_reference_t<decltype(best)>::best(best, time);
    };
    std::string const log = path + ".log";
    if (result.item->hasLog) {
        std::filesystem::remove(log);
        keep(result.withLog, measureLoad([&] { return FltToInventor::convertFromFile(path.c_str()); }));
        result.logSize = static_cast<double>(std::filesystem::file_size(log));
        keep(result.copying, BenchTime::ofCommand(1, "cat '" + log + "' > '" + copy + "'"));
        std::filesystem::remove(copy);
        keep(result.writing,
             BenchTime::apart(1, [&] { writeInBlocks(copy, static_cast<std::size_t>(result.logSize)); }));
        std::filesystem::remove(copy);
    }
    keep(result.withoutLog, measureLoad([&] { return convertWithoutLog(path); }));
    keep(result.reading, BenchTime::ofCommand(1, "cat '" + path + "' > /dev/null"));
    keep(result.toolkit, measureLoad([&] { return readWithToolkit(scene); }));
}

Result measure(Case const& item, int runs)
{
    ScratchFolder const folder;
    std::string const path = folder / "database.flt";
    std::string const scene = folder / "scene.iv";
    Result result{};
    result.item = &item;
    result.fileSize = static_cast<double>(item.write(path, item.count));
    saveScene(path, scene);
    result.sceneSize = static_cast<double>(std::filesystem::file_size(scene));
    for (int run = 0; run < runs; ++run)
        measureOnce(result, path, scene, folder / "copy", run == 0);
    return result;
}

void printTitle()
{
    std::printf("%-26s %9s %7s %7s | %7s %6s %7s %6s %6s | %7s %6s %6s %6s %6s | %7s %7s\n", "", "number",
                "file MB", "log MB", "log: s", "/ cat", "/ write", "us ea.", "peak", "none: s", "/ iv",
                "/ read", "us ea.", "peak", "release", "end");
}

void print(Result const& result)
{
    double const log = result.withLog.work.cpu;
    double const none = result.withoutLog.work.cpu;
    int const count = result.item->count;
    std::printf("%-26s %9d %7.1f %7.1f | ", result.item->name, count, result.fileSize / megabyte,
                result.logSize / megabyte);
    if (result.item->hasLog)
        std::printf("%7.3f %6.2f %7.2f %6.2f %6.2f | ", log, log / result.copying.cpu,
                    log / result.writing.cpu, log / count * microseconds,
                    result.withLog.work.peakMemory / result.fileSize);
    else
        std::printf("%7s %6s %7s %6s %6s | ", "-", "-", "-", "-", "-");
    std::printf("%7.3f %6.2f %6.1f %6.2f %6.2f | %7.3f %7.3f\n", none, none / result.toolkit.work.cpu,
                none / result.reading.cpu, none / count * microseconds,
                result.withoutLog.work.peakMemory / result.fileSize, result.withoutLog.release.cpu,
                result.withoutLog.end.cpu);
    std::fflush(stdout);
}

nlohmann::ordered_json toJson(Conversion const& conversion)
{
    return {{"seconds", conversion.work.wall},
            {"cpuSeconds", conversion.work.cpu},
            {"peakBytes", static_cast<std::int64_t>(conversion.work.peakMemory)},
            {"releaseCpuSeconds", conversion.release.cpu},
            {"endCpuSeconds", conversion.end.cpu}};
}

nlohmann::ordered_json toJson(Result const& result)
{
    nlohmann::ordered_json json = {{"name", result.item->name},
                                   {"count", result.item->count},
                                   {"fileBytes", static_cast<std::int64_t>(result.fileSize)},
                                   {"sceneBytes", static_cast<std::int64_t>(result.sceneSize)},
                                   {"withoutLog", toJson(result.withoutLog)},
                                   {"toolkit", toJson(result.toolkit)},
                                   {"readCpuSeconds", result.reading.cpu}};
    if (result.item->hasLog) {
        json["logBytes"] = static_cast<std::int64_t>(result.logSize);
        json["withLog"] = toJson(result.withLog);
        json["catCpuSeconds"] = result.copying.cpu;
        json["writeCpuSeconds"] = result.writing.cpu;
    }
    return json;
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    auto* const ignore = +[](SoError const*, void*) {}; // the textures don't exist
    SoDebugError::setHandlerCallback(ignore, nullptr);
    SoReadError::setHandlerCallback(ignore, nullptr);
    nlohmann::ordered_json results = nlohmann::ordered_json::array();
    if (!options.json)
        printTitle();
    try {
        for (Case const& item : cases) {
            if (item.isLarge && !options.large)
                continue;
            Result const result = measure(item, options.runs);
            results.push_back(toJson(result));
            if (!options.json)
                print(result);
        }
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "convert_bench: %s\n", problem.what());
        return 1;
    }
    if (options.json)
        std::printf("%s\n", results.dump(2).c_str());
}

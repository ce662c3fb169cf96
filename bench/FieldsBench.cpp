// What the fields of all records take: as JSON, beside a conversion with a log in the same run, and in
// columns of each kind of record. Processor time, each in a process of its own.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "convert/FltToInventor.h"
#include "loader/FltRecordReader.h"
#include "support/ScratchFolder.h"

#include <Inventor/SoDB.h>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

namespace
{

constexpr int vertexCount = 300'000;
constexpr double microseconds = 1e6;
constexpr std::size_t writtenAtOnce = 1 << 16;

/// All records of a terrain but its header.
struct Kind {
    char const* name;
    int opcode;
};
constexpr Kind kinds[] = {
    {"vertices", 69}, {"faces", 5}, {"lists of vertices", 72}, {"beginnings of levels", 10}};

/// Writes the records as programs do, a line each, to where nothing keeps them.
void writeJson(std::string const& path)
{
    std::FILE* const nowhere = std::fopen("/dev/null", "w");
    std::string lines;
    for (FltRecordReader records(path); records.next();) {
        records.addJson(lines);
        lines += '\n';
        if (lines.size() < writtenAtOnce)
            continue;
        std::fwrite(lines.data(), 1, lines.size(), nowhere);
        lines.clear();
    }
    std::fclose(nowhere);
}

std::size_t countOf(std::string const& path, int opcode)
{
    std::size_t count = 0;
    for (FltRecordReader records(path); records.next();)
        count += records.opcode() == opcode ? 1 : 0;
    return count;
}

/// The same for an opcode that no record has is what the pass over the file takes.
double secondsOfColumns(std::string const& path, int opcode, int runs)
{
    return BenchTime::apart(runs, [&] { FltRecordReader(path).columns(opcode); }).cpu;
}

void measure(BenchOptions const& options)
{
    constexpr int noOpcode = 9999;
    ScratchFolder const folder;
    std::string const path = folder / "terrain.flt";
    BenchDatabase::writeTerrain(path, vertexCount, BenchDatabase::Vertices::shared);
    BenchTime log;
    BenchTime json;
    for (int run = 0; run < options.runs; ++run) {
        std::filesystem::remove(path + ".log");
        BenchTime const ofLog = BenchTime::apart(1, [&] {
            Silence const silence;
            FltToInventor::convertFromFile(path.c_str());
        });
        BenchTime const ofJson = BenchTime::apart(1, [&] { writeJson(path); });
        log = run == 0 ? ofLog : BenchTime::best(log, ofLog);
        json = run == 0 ? ofJson : BenchTime::best(json, ofJson);
    }
    std::printf(options.json
                    ? "{\"vertices\": %d, \"logSeconds\": %.4f, \"jsonSeconds\": %.4f, \"ratio\": %.2f}\n"
                    : "shared vertices, %d: with log %.3f s, as JSON %.3f s, ratio %.2f\n",
                vertexCount, log.cpu, json.cpu, json.cpu / log.cpu);
    double const pass = secondsOfColumns(path, noOpcode, options.runs);
    for (Kind const& kind : kinds) {
        auto const count = static_cast<double>(countOf(path, kind.opcode));
        double const each = (secondsOfColumns(path, kind.opcode, options.runs) - pass) / count * microseconds;
        std::printf(options.json ? "{\"columns\": \"%s\", \"count\": %.0f, \"microseconds\": %.3f}\n"
                                 : "columns of %s, %.0f: %.3f us each\n",
                    kind.name, count, each);
    }
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    try {
        measure(options);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "fields_bench: %s\n", problem.what());
        return 1;
    }
    return 0;
}

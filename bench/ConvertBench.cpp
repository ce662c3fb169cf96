// Converts terrains of growing size as a host does, and tells the time beside that of the plain work on the
// same bytes. Ratios are of processor time: they hold on a busy machine too.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "plugin/Plugin.h"
#include "support/ScratchFolder.h"

#include <Inventor/SoDB.h>
#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

constexpr double megabyte = 1e6;
constexpr std::size_t blockSize = 65536;

struct Result {
    int vertices;
    double fileSize;
    double logSize;
    BenchTime conversion;
    BenchTime copying; ///< cat LOG > COPY
    BenchTime writing; ///< The log's bytes in blocks.
    BenchTime reading; ///< The database in one piece.
};

void writeInBlocks(std::string const& bytes, std::string const& path)
{
    int const file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    for (std::size_t at = 0; at < bytes.size(); at += blockSize) {
        std::size_t const size = std::min(blockSize, bytes.size() - at);
        if (write(file, bytes.data() + at, size) != static_cast<ssize_t>(size))
            throw std::runtime_error("cannot write " + path);
    }
    close(file);
}

void readInOnePiece(std::string const& path)
{
    std::vector<char> bytes(std::filesystem::file_size(path));
    int const file = open(path.c_str(), O_RDONLY);
    if (read(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("cannot read " + path);
    close(file);
}

Result measure(int vertices, int runs)
{
    ScratchFolder const folder;
    std::string const path = folder / "terrain.flt";
    std::string const copy = folder / "copy";
    Result result{};
    result.vertices = vertices;
    result.fileSize = static_cast<double>(BenchDatabase::write(path, vertices));
    result.conversion = BenchTime::apart(runs, [&path] {
        Silence const silence;
        if (convertFrom(path.c_str()) == nullptr)
            throw std::runtime_error("the conversion failed");
    });
    result.reading = BenchTime::apart(runs, [&path] { readInOnePiece(path); });
    result.copying = BenchTime::ofCommand(runs, "cat '" + path + ".log' > '" + copy + "'");
    std::string const log = contentsOf(path + ".log");
    result.logSize = static_cast<double>(log.size());
    result.writing = BenchTime::apart(runs, [&log, &copy] { writeInBlocks(log, copy); });
    return result;
}

void printTitle()
{
    std::printf("%9s %8s %8s %8s %8s %8s %8s %8s | %8s %8s %8s | %7s %7s %7s\n", "vertices", "file MB",
                "log MB", "seconds", "cpu s", "in MB/s", "log MB/s", "peak MB", "cat s", "write s", "read s",
                "/ cat", "/ write", "/ read");
}

void print(Result const& result)
{
    double const cpu = result.conversion.cpu;
    std::printf("%9d %8.1f %8.1f %8.3f %8.3f %8.1f %8.1f %8.1f | %8.4f %8.4f %8.4f | %7.1f %7.1f %7.1f\n",
                result.vertices, result.fileSize / megabyte, result.logSize / megabyte,
                result.conversion.wall, cpu, result.fileSize / megabyte / cpu,
                result.logSize / megabyte / cpu, result.conversion.peakMemory / megabyte, result.copying.cpu,
                result.writing.cpu, result.reading.cpu, cpu / result.copying.cpu, cpu / result.writing.cpu,
                cpu / result.reading.cpu);
    std::fflush(stdout);
}

void printJson(std::vector<Result> const& results)
{
    char const* separator = "[";
    for (Result const& result : results) {
        std::printf("%s\n  {\"vertices\": %d, \"fileBytes\": %.0f, \"logBytes\": %.0f, \"seconds\": %.6f, "
                    "\"cpuSeconds\": %.6f, \"peakBytes\": %.0f, \"catCpuSeconds\": %.6f, "
                    "\"writeCpuSeconds\": %.6f, \"readCpuSeconds\": %.6f}",
                    separator, result.vertices, result.fileSize, result.logSize, result.conversion.wall,
                    result.conversion.cpu, result.conversion.peakMemory, result.copying.cpu,
                    result.writing.cpu, result.reading.cpu);
        separator = ",";
    }
    std::printf("\n]\n");
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    std::vector<int> sizes = {10'000, 100'000, 1'000'000};
    if (options.large)
        sizes.push_back(10'000'000);
    std::vector<Result> results;
    if (!options.json)
        printTitle();
    try {
        for (int const size : sizes) {
            results.push_back(measure(size, options.runs));
            if (!options.json)
                print(results.back());
        }
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "convert_bench: %s\n", problem.what());
        return 1;
    }
    if (options.json)
        printJson(results);
}

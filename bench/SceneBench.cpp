// Converts databases that have N of something, and 10 N: where the time for each grows, a step of the
// conversion is worse than linear. "./dev bench --check" judges the same by counted instructions.

#include "BenchOptions.h"
#include "BenchTime.h"
#include "SceneCase.h"
#include "plugin/Plugin.h"
#include "support/ScratchFolder.h"

#include <Inventor/SoDB.h>
#include <Inventor/errors/SoDebugError.h>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace
{

/// Processor time of a conversion. Letting its scene go isn't in it: there the toolkit's list of the nodes of
/// one name takes longer with each of them.
double secondsOf(std::string const& path, int runs)
{
    std::filesystem::remove(path + ".log");
    return BenchTime::apart(runs,
                            [&path] {
                                Silence const silence;
                                if (convertFrom(path.c_str()) == nullptr)
                                    throw std::runtime_error("the conversion failed");
                            })
        .cpu;
}

double secondsOf(SceneCase const& item, int count, std::string const& path, int runs)
{
    item.write(path, count);
    return secondsOf(path, runs);
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr); // the textures don't exist
    ScratchFolder const folder;
    std::string const path = folder / "scene.flt";
    SceneCase::writeOther(folder / "other.flt");
    SceneCase::writeEmpty(path);
    double const empty = secondsOf(path, 3 * options.runs);

    if (options.json)
        std::printf("[");
    else
        std::printf("%-36s %9s %12s %12s %7s\n", "", "N", "us each, N", "us, 10 N", "ratio");
    char const* separator = "";
    for (SceneCase const& item : SceneCase::all()) {
        double const few = std::max(secondsOf(item, item.count, path, options.runs) - empty, 1e-6);
        double const many = std::max(secondsOf(item, 10 * item.count, path, options.runs) - empty, 1e-6);
        double const eachOfFew = few / item.count;
        double const eachOfMany = many / (10.0 * item.count);
        double const ratio = eachOfMany / eachOfFew;
        if (options.json)
            std::printf("%s\n  {\"name\": \"%s\", \"count\": %d, \"secondsEach\": %.9f, "
                        "\"secondsEachOfTenfold\": %.9f, \"ratio\": %.3f}",
                        separator, item.name, item.count, eachOfFew, eachOfMany, ratio);
        else
            std::printf("%-36s %9d %12.3f %12.3f %7.2f\n", item.name, item.count, eachOfFew * 1e6,
                        eachOfMany * 1e6, ratio);
        std::fflush(stdout);
        separator = ",";
    }
    if (options.json)
        std::printf("\n]\n");
}

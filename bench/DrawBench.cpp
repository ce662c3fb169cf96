// Draws scenes frame by frame on the off-screen driver, with a camera that moves before each frame, and tells
// the processor time of a frame: with the driver's work, and the toolkit's alone.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "DrawnFrames.h"
#include "JoinedShapes.h"
#include "NodeCount.h"
#include "loader/FltLoader.h"
#include "support/ScratchFolder.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoShape.h>
#include <cstdio>
#include <exception>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace
{

using Way = DrawnFrames::Way;
using Json = nlohmann::ordered_json;

constexpr double milliseconds = 1e3;
constexpr double megabyte = 1e6;
constexpr int buildings = 1000;
constexpr int terrainVertices = 300'000;
constexpr int warmUp = 10;
constexpr int measured = 60;

/// How the shapes of a scene are made.
enum class Shapes { ofObjects, merged, oneOfTexture };

struct Case {
    std::string name;
    std::string path;
    Shapes shapes = Shapes::ofObjects;
};

/// What is drawn.
struct Loaded {
    FltScene scene;
    SoNodeRef<SoNode> root;

    explicit Loaded(Case const& each)
    {
        FltLoader loader;
        loader.merge = each.shapes == Shapes::merged;
        scene = loader.load(each.path);
        root = each.shapes == Shapes::oneOfTexture ? SoNodeRef<SoNode>(JoinedShapes::of(scene.root()).get())
                                                   : SoNodeRef<SoNode>(scene.root());
    }
};

/// The first frame, and one of many from outside and from inside, in milliseconds; then the memory in
/// megabytes.
struct Frames {
    double first = 0;
    double outside = 0;
    double inside = 0;
    double memory = 0;
};

Frames draw(Case const& each, bool isDriverIdle)
{
    std::unique_ptr<Loaded> loaded;
    std::unique_ptr<DrawnFrames> frames;
    std::vector<BenchTime> const times = BenchTime::stepsApart({
        [&] {
            Silence const silence;
            DrawnFrames::open(isDriverIdle);
            loaded = std::make_unique<Loaded>(each);
            frames = std::make_unique<DrawnFrames>(loaded->root.get());
        },
        [&] { frames->draw(1, Way::outside); },
        [&] { frames->draw(warmUp, Way::outside); },
        [&] { frames->draw(measured, Way::outside); },
        [&] { frames->draw(warmUp, Way::inside); },
        [&] { frames->draw(measured, Way::inside); },
    });
    return {times[1].cpu * milliseconds, times[3].cpu * milliseconds / measured,
            times[5].cpu * milliseconds / measured, times[5].peakMemory / megabyte};
}

Frames best(Case const& each, bool isDriverIdle, int runs)
{
    Frames least = draw(each, isDriverIdle);
    for (int run = 1; run < runs; ++run) {
        Frames const next = draw(each, isDriverIdle);
        least = {std::min(least.first, next.first), std::min(least.outside, next.outside),
                 std::min(least.inside, next.inside), std::min(least.memory, next.memory)};
    }
    return least;
}

Json measure(Case const& each, int runs)
{
    Frames const whole = best(each, false, runs);
    Frames const toolkit = best(each, true, runs);
    Json row = {{"name", each.name},
                {"firstFrameCpuMs", whole.first},
                {"frameCpuMs", whole.outside},
                {"frameInsideCpuMs", whole.inside},
                {"toolkitCpuMs", toolkit.outside},
                {"toolkitInsideCpuMs", toolkit.inside},
                {"peakMegabytes", whole.memory}};
    return row;
}

void print(Json const& row)
{
    std::printf("%-44s %7.1f %8.2f %8.2f %8.3f %8.3f %7.0f %8d %7d\n", row["name"].get<std::string>().c_str(),
                row["firstFrameCpuMs"].get<double>(), row["frameCpuMs"].get<double>(),
                row["frameInsideCpuMs"].get<double>(), row["toolkitCpuMs"].get<double>(),
                row["toolkitInsideCpuMs"].get<double>(), row["peakMegabytes"].get<double>(),
                row["nodes"].get<int>(), row["shapes"].get<int>());
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<char*> own = {argv[0]};
    std::vector<Case> cases;
    for (int i = 1; i < argc; ++i)
        if (argv[i][0] == '-')
            own.push_back(argv[i]);
        else
            for (Shapes const shapes : {Shapes::ofObjects, Shapes::merged})
                cases.push_back(
                    {argv[i] + std::string(shapes == Shapes::merged ? ", merged" : ""), argv[i], shapes});
    BenchOptions const options(static_cast<int>(own.size()), own.data(), false);
    try {
        ScratchFolder const folder;
        BenchDatabase::writeTown(folder / "town.flt", buildings, BenchDatabase::Windows::opaque);
        BenchDatabase::writeTown(folder / "clear.flt", buildings, BenchDatabase::Windows::someTranslucent);
        BenchDatabase::writeTerrain(folder / "terrain.flt", terrainVertices, BenchDatabase::Vertices::shared);
        cases.insert(cases.begin(),
                     {{"town", folder / "town.flt"},
                      {"town, merged", folder / "town.flt", Shapes::merged},
                      {"town, one shape a texture", folder / "town.flt", Shapes::oneOfTexture},
                      {"town, translucent windows", folder / "clear.flt"},
                      {"the same, merged", folder / "clear.flt", Shapes::merged},
                      {"the same, one shape a texture", folder / "clear.flt", Shapes::oneOfTexture},
                      {"terrain", folder / "terrain.flt"},
                      {"terrain, merged", folder / "terrain.flt", Shapes::merged}});
        if (!options.json)
            std::printf("%-44s %7s %8s %8s %8s %8s %7s %8s %7s\n", "milliseconds of a frame", "first",
                        "whole", "inside", "toolkit", "inside", "MB", "nodes", "shapes");
        Json rows = Json::array();
        for (Case const& each : cases)
            rows.push_back(measure(each, options.runs));
        SoDB::init();
        for (std::size_t i = 0; i < cases.size(); ++i) {
            Silence const silence;
            Loaded const loaded(cases[i]);
            rows[i]["nodes"] = NodeCount::of(SoNode::getClassTypeId(), loaded.root.get());
            rows[i]["shapes"] = NodeCount::of(SoShape::getClassTypeId(), loaded.root.get());
        }
        if (options.json)
            std::puts(rows.dump(2).c_str());
        else
            for (Json const& row : rows)
                print(row);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "draw_bench: %s\n", problem.what());
        return 1;
    }
    return 0;
}

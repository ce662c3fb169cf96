// Writes terrains of 300,000 vertices as .glb files, and tells the processor time over that of making the
// scene, each with loading, and the largest memory of the process over the size of the database.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "gltf/FltGltf.h"
#include "loader/FltLoader.h"
#include "support/ScratchFolder.h"

#include <Inventor/SoDB.h>
#include <array>
#include <cstdio>
#include <exception>
#include <optional>

namespace
{

constexpr int vertexCount = 300'000;

struct Terrain {
    char const* name;
    BenchDatabase::Vertices vertices;
};
constexpr std::array<Terrain, 2> terrains{
    {{"shared vertices", BenchDatabase::Vertices::shared},
     {"vertices of one face each", BenchDatabase::Vertices::ownOfEachFace}}};

/// What loading takes, and then some use of what was loaded: in a process of its own, the best of some runs.
template <class Use>
std::array<BenchTime, 2> loadAnd(Use const& use, std::string const& path, int runs)
{
    std::optional<FltVisual> visual;
    std::array<BenchTime, 2> best;
    for (int run = 0; run < runs; ++run) {
        auto const times = BenchTime::stepsApart(
            {[&] { visual.emplace(FltLoader().loadVisual(path)); }, [&] { use(*visual); }});
        for (std::size_t step = 0; step < best.size(); ++step)
            best.at(step) = run == 0 ? times[step] : BenchTime::best(best.at(step), times[step]);
    }
    return best;
}

void measure(Terrain const& terrain, BenchOptions const& options)
{
    ScratchFolder const folder;
    std::string const path = folder / "terrain.flt", out = folder / "terrain.glb";
    auto const bytes = static_cast<double>(BenchDatabase::writeTerrain(path, vertexCount, terrain.vertices));
    auto const scene =
        loadAnd([](FltVisual const& visual) { FltLoader::makeScene(visual); }, path, options.runs);
    auto const glb =
        loadAnd([&](FltVisual const& visual) { FltGltf::write(visual, out); }, path, options.runs);
    std::printf(options.json
                    ? "{\"name\": \"%s\", \"vertices\": %d, \"loadSeconds\": %.4f, \"sceneSeconds\": %.4f, "
                      "\"glbSeconds\": %.4f, \"ratio\": %.2f, \"peakOverFile\": %.2f}\n"
                    : "%s, %d: loading %.4f s, then the scene %.4f s, or the .glb %.4f s, ratio with loading "
                      "%.2f; peak "
                      "memory over file %.2f\n",
                terrain.name, vertexCount, glb[0].cpu, scene[1].cpu, glb[1].cpu,
                (glb[0].cpu + glb[1].cpu) / (scene[0].cpu + scene[1].cpu), glb[1].peakMemory / bytes);
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    try {
        for (Terrain const& terrain : terrains)
            measure(terrain, options);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "gltf_bench: %s\n", problem.what());
        return 1;
    }
    return 0;
}

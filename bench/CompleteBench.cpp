// Converts a terrain of 300,000 vertices by both conversions without a log, and tells the ratio of their
// processor times.

#include "BenchDatabase.h"
#include "BenchOptions.h"
#include "BenchTime.h"
#include "convert/FltToInventor.h"
#include "dump/FltDumpOutput.h"
#include "parser/FltFileInput.h"
#include "scene/FltSceneMaker.h"
#include "support/ScratchFolder.h"
#include "visual/FltVisualConversion.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <utility>

namespace
{

constexpr int vertexCount = 300'000;

void convertExactly(std::string const& path)
{
    Silence const silence;
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(path.c_str());
    FltToInventor converter;
    converter.setFltInputToconvert(&input);
    auto* const root = new SoSeparator;
    root->ref();
    converter.setResult(root);
    if (converter.convert() != 0 || root->getNumChildren() == 0)
        throw std::runtime_error("the exact conversion failed");
}

void convertCompletely(std::string const& path)
{
    Silence const silence;
    FltVisualConversion::Result visual = FltVisualConversion::convert(path, {});
    if (visual.root == nullptr)
        throw std::runtime_error("the complete conversion failed");
    FltSceneMaker::make(std::move(visual.root), visual.textures).names.give();
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions const options(argc, argv, false);
    SoDB::init();
    try {
        ScratchFolder const folder;
        std::string const path = folder / "terrain.flt";
        BenchDatabase::writeTerrain(path, vertexCount, BenchDatabase::Vertices::ownOfEachFace);
        BenchTime const exact = BenchTime::apart(options.runs, [&] { convertExactly(path); });
        BenchTime const complete = BenchTime::apart(options.runs, [&] { convertCompletely(path); });
        std::printf(options.json
                        ? "{\"vertices\": %d, \"exactCpuSeconds\": %.6f, \"completeCpuSeconds\": %.6f, "
                          "\"ratio\": %.3f, \"exactPeakBytes\": %.0f, \"completePeakBytes\": %.0f}\n"
                        : "%d vertices without a log: exact %.4f s, complete %.4f s, ratio %.2f; peak "
                          "memory %.0f and %.0f bytes\n",
                    vertexCount, exact.cpu, complete.cpu, complete.cpu / exact.cpu, exact.peakMemory,
                    complete.peakMemory);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "complete_bench: %s\n", problem.what());
        return 1;
    }
    return 0;
}

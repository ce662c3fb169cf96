#include "iv/DatabaseConverter.h"

#include "iv/FileReferences.h"
#include "iv/SceneFile.h"
#include "iv/TextureEmbedding.h"
#include "support/Numbers.h"
#include "support/OutputFile.h"
#include "support/SceneMeasure.h"
#include "support/SceneMessages.h"
#include "support/ToolError.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <chrono>
#include <filesystem>

namespace
{

std::string folderOf(std::string const& file)
{
    return std::filesystem::path(file).parent_path().string();
}

std::uint64_t trianglesIn(SoNode* root)
{
    SoGetPrimitiveCountAction action{SbViewportRegion(100, 100)};
    action.apply(root);
    return static_cast<std::uint64_t>(std::max(action.getTriangleCount(), 0));
}

ConversionStatistics measure(FltScene const& scene)
{
    ConversionStatistics statistics;
    statistics.nodes = SceneMeasure::of(scene.root()).nodes;
    statistics.triangles = trianglesIn(scene.root());
    statistics.textures = static_cast<std::uint64_t>(
        std::count_if(scene.textures().begin(), scene.textures().end(),
                      [](FltTexture const& texture) { return !texture.path.empty(); }));
    return statistics;
}

/// Writes into a file, or a pipe, that is going to be whole or isn't there.
/// @return the bytes that were written
std::uint64_t writeFile(SoNode* root, std::string const& path, SceneForm const& form,
                        std::vector<KeptFile> const& kept)
{
    OutputFile output(path, kept);
    if (!form.isText() && output.isTerminal())
        throw ToolError(
            "binary output would upset the terminal. Add -o FILE.iv, or send it into a file with >.",
            ExitCode::wrongUsage);
    std::uint64_t const bytes = SceneFile::write(root, output.stream(), form);
    output.commit();
    return bytes;
}

} // namespace

DatabaseConverter::DatabaseConverter(Program const& program, LoaderOptions const& loaderOptions,
                                     ConversionOptions const& options)
    : program(program), loaderOptions(loaderOptions), options(options)
{
}

FltLoader DatabaseConverter::makeLoader(Conversion const& conversion,
                                        FltLoader::Progress const& progress) const
{
    FltLoader loader = loaderOptions.makeLoader();
    loader.references = options.references;
    loader.units = options.units;
    loader.progress = progress;
    if (conversion.output != "-")
        loader.textureNamesFrom = folderOf(conversion.output);
    return loader;
}

/// Makes of the scene what is to be written.
void DatabaseConverter::prepare(FltScene const& scene, Conversion const& conversion) const
{
    if (options.embedsTextures)
        TextureEmbedding::embed(scene.root());
    if (options.references != FltLoader::References::asFile)
        return;
    FileReferences const references(conversion.referenceOutputs, folderOf(conversion.output),
                                    options.form.isVrml);
    std::size_t const takenOut = references.rename(scene.root());
    if (takenOut != 0)
        program.warn(conversion.input + ": " + Numbers::counted(takenOut, "reference is", "references are") +
                     " left out: a reader of the converted files would never come to an end, or they aren't "
                     "converted themselves");
}

ConversionStatistics DatabaseConverter::convert(Conversion const& conversion,
                                                FltLoader::Progress const& progress,
                                                std::function<void()> const& loaded) const
{
    auto const begin = std::chrono::steady_clock::now();
    SceneMessages const messages(program);
    program.detail("reading " + conversion.input);
    FltScene const scene = makeLoader(conversion, progress).load(conversion.input);
    loaded();
    messages.show(scene);
    ConversionStatistics statistics;
    if (options.measures)
        statistics = measure(scene);
    prepare(scene, conversion);
    statistics.bytesIn = scene.info().bytes;
    statistics.bytesOut = writeFile(scene.root(), conversion.output, options.form,
                                    loaderOptions.keptFiles(conversion.input, scene));
    statistics.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return statistics;
}

#include "iv/SceneConverter.h"

#include "convert/ConversionWarnings.h"
#include "convert/FactsOfLoad.h"
#include "convert/ReferenceNames.h"
#include "iv/FileReferences.h"
#include "iv/SceneFile.h"
#include "iv/TextureEmbedding.h"
#include "iv/VrmlPictureFiles.h"
#include "support/OutputFile.h"
#include "support/SceneMessages.h"
#include "support/SceneStatistics.h"
#include "support/ToolError.h"

#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>

namespace
{

std::string folderOf(std::string const& file)
{
    return std::filesystem::path(file).parent_path().string();
}

ConversionStatistics measure(FltScene const& scene, std::string const& database)
{
    ConversionStatistics statistics;
    SceneStatistics const counted = SceneStatistics::of(scene, database);
    statistics.nodes = counted.nodes;
    statistics.faces = counted.faces;
    statistics.triangles = counted.triangles;
    statistics.textures = static_cast<std::uint64_t>(
        std::count_if(scene.textures().begin(), scene.textures().end(),
                      [](FltTexture const& texture) { return !texture.path.empty(); }));
    return statistics;
}

/// Writes into a file, or a pipe, that is going to be whole or isn't there.
/// @param write writes into a stream, and returns the bytes that were written
/// @return the same
template <class Write>
std::uint64_t writeFile(std::string const& path, OutputFile::Existing existing, SceneForm const& form,
                        std::vector<KeptFile> const& kept, Write write)
{
    OutputFile output(path, kept, existing);
    if (!form.isText() && output.isTerminal())
        throw ToolError(
            "binary output would upset the terminal. Add -o FILE.iv, or send it into a file with >.",
            ExitCode::wrongUsage);
    std::uint64_t const bytes = write(output.stream());
    output.commit();
    return bytes;
}

} // namespace

SceneConverter::SceneConverter(Program const& program, LoaderOptions const& loaderOptions,
                               ConversionOptions const& options, SceneForm const& form)
    : program(program), loaderOptions(loaderOptions), options(options), form(form)
{
}

FltLoader SceneConverter::makeLoader(Conversion const& conversion, FltLoader::Progress const& progress) const
{
    FltLoader loader = loaderOptions.makeLoader();
    loader.progress = progress;
    if (conversion.output != "-")
        loader.textureNamesFrom = folderOf(conversion.output);
    return loader;
}

/// Makes of the scene what is to be written.
void SceneConverter::prepare(FltScene const& scene, Conversion const& conversion) const
{
    if (form.embedsTextures)
        TextureEmbedding::embed(scene.root());
    if (options.references != FltLoader::References::asFile)
        return;
    ReferenceNames const names(conversion.referenceOutputs, folderOf(conversion.output));
    ConversionWarnings(program, conversion.input)
        .ofReferencesLeftOut(FileReferences::rename(scene.root(), names));
}

/// Has the pictures of a VRML97 file stand beside it, where there is such a place.
/// @return the files that were written
std::vector<std::string> SceneConverter::placePictures(std::vector<FltVrmlPicture>& pictures,
                                                       Conversion const& conversion,
                                                       std::vector<KeptFile> const& kept) const
{
    VrmlPictureFiles files(conversion.output, kept, options.existing);
    bool const isBeside = !OutputFile::isStream(conversion.output);
    for (FltVrmlPicture& picture : pictures)
        if (form.embedsTextures)
            continue;
        else if (isBeside)
            files.place(picture);
        else
            VrmlPictureFiles::name(picture);
    return files.written();
}

/// @param beside becomes the files that were written beside it
std::uint64_t SceneConverter::writeVrml(FltVisual const& visual, Conversion const& conversion,
                                        std::vector<std::string>& beside) const
{
    std::vector<KeptFile> const kept =
        loaderOptions.keptFiles(conversion.input, visual.references, visual.textures);
    FltVrmlWriter vrml(visual.root, visual.textures);
    beside = placePictures(vrml.pictures(), conversion, kept);
    ReferenceNames const names(conversion.referenceOutputs, folderOf(conversion.output));
    std::size_t takenOut = 0;
    auto const addressOf = [&](std::string const& database) {
        std::optional<std::string> const name = names.nameOf(database);
        takenOut += name ? 0 : 1;
        return name ? std::optional(VrmlPictureFiles::addressOf(*name)) : std::nullopt;
    };
    std::uint64_t const bytes = writeFile(conversion.output, options.existing, form, kept, [&](FILE* stream) {
        return SceneFile::write(vrml, addressOf, stream, form);
    });
    ConversionWarnings const warnings(program, conversion.input);
    warnings.ofReferencesLeftOut(takenOut);
    warnings.ofLosses("VRML97", vrml.omissions());
    return bytes;
}

std::uint64_t SceneConverter::writeScene(FltScene const& scene, Conversion const& conversion) const
{
    prepare(scene, conversion);
    return writeFile(conversion.output, options.existing, form,
                     loaderOptions.keptFiles(conversion.input, scene),
                     [&](FILE* stream) { return SceneFile::write(scene.root(), stream, form); });
}

ConversionResult SceneConverter::convert(Conversion const& conversion, FltLoader::Progress const& progress,
                                         std::function<void()> const& loaded) const
{
    auto const begin = std::chrono::steady_clock::now();
    std::optional<FactsOfLoad> facts;
    if (!options.report.empty())
        facts.emplace(conversion.input);
    SceneMessages const messages(program);
    program.detail("reading " + conversion.input);
    FltLoader const loader = makeLoader(conversion, progress);
    ConversionStatistics statistics;
    std::vector<std::string> beside;
    if ((form.isVrml || facts) && !loader.exact) {
        FltVisual const visual = loader.loadVisual(conversion.input);
        loaded();
        messages.show(visual);
        if (facts)
            facts->take(visual);
        if (options.measures)
            statistics = measure(FltLoader::makeScene(visual), conversion.input);
        statistics.bytesIn = visual.info.bytes;
        statistics.bytesOut = form.isVrml ? writeVrml(visual, conversion, beside)
                                          : writeScene(FltLoader::makeScene(visual), conversion);
    } else {
        FltScene const scene = loader.load(conversion.input);
        loaded();
        messages.show(scene);
        if (facts)
            facts->take(scene);
        if (options.measures)
            statistics = measure(scene, conversion.input);
        statistics.bytesIn = scene.info().bytes;
        statistics.bytesOut = writeScene(scene, conversion);
    }
    if (facts)
        facts->takeWritten(beside, conversion.output);
    statistics.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return {statistics, facts ? facts->facts() : ConversionFacts{}};
}

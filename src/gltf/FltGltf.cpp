#include "gltf/FltGltf.h"

#include "gltf/FltGltfFiles.h"
#include "gltf/FltGltfPage.h"
#include "gltf/FltGltfWriter.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace
{

std::string endingOf(std::string const& path)
{
    std::string ending = std::filesystem::path(path).extension().string();
    for (char& character : ending)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return ending;
}

/// Where pictures of a .glb are: in it, unless files share them.
FltGltfTextures::Place placeIn(FltGltfFiles& files, bool isInFile)
{
    if (isInFile)
        return {};
    return [&files](GltfPicture const& picture, std::string const& name) {
        return FltGltfFiles::addressOf(files.add(picture, name));
    };
}

void giveGlb(FltGltfWriter& writer, std::string const& path,
             std::function<void(std::string_view piece)> const& take)
{
    std::string const text = writer.document.text(writer.top);
    auto const count = [&](std::string_view piece) {
        writer.report.bytes += piece.size();
        take(piece);
    };
    if (!writer.document.writeGlb(text, count))
        throw FltGltfError(path,
                           "the file would be longer than the 4 gigabytes that .glb files may have. Write a "
                           ".gltf, or fewer databases at a time.");
}

void addGlb(FltGltfFiles& files, FltGltfWriter& writer, std::string const& path)
{
    files.add(path, [&](auto const& take) { giveGlb(writer, path, take); });
}

void addText(FltGltfFiles& files, FltGltfWriter& writer, std::string const& path)
{
    std::string const binary = files.binaryPath();
    std::string const name = std::filesystem::path(binary).filename().string();
    if (writer.document.binary.size() != 0)
        files.add(binary, [&](auto const& take) { writer.document.binary.forEachPiece(take); });
    std::string const text = writer.document.text(writer.top, FltGltfFiles::addressOf(name));
    writer.report.bytes = text.size();
    files.add(path, [&](auto const& take) { take(text); });
}

} // namespace

FltGltfReport FltGltf::write(FltVisual const& visual, std::string const& path, FltGltfOptions const& options)
{
    std::string const ending = endingOf(path);
    if (ending == ".html")
        return FltGltfPage::write(visual, path, options);
    bool const isGlb = ending == ".glb";
    if (!isGlb && ending != ".gltf")
        throw FltGltfError(path,
                           "this is no name of a glTF file. Choose one that ends in .glb, .gltf or .html.");
    FltGltfFiles files(visual, path, options.textureDirectory.value_or(""));
    FltGltfWriter writer(visual, options, placeIn(files, isGlb && !options.textureDirectory));
    if (isGlb)
        addGlb(files, writer, path);
    else
        addText(files, writer, path);
    writer.report.files = files.commit();
    return writer.report;
}

FltGltfReport FltGltf::writeGlb(FltVisual const& visual, FILE* stream, FltGltfOptions const& options)
{
    FltGltfWriter writer(visual, options);
    giveGlb(writer, "",
            [stream](std::string_view piece) { std::fwrite(piece.data(), 1, piece.size(), stream); });
    return writer.report;
}

std::string FltGltf::glb(FltVisual const& visual, FltGltfOptions const& options, FltGltfReport* report)
{
    FltGltfWriter writer(visual, options);
    std::string bytes;
    giveGlb(writer, "", [&bytes](std::string_view piece) { bytes += piece; });
    if (report != nullptr)
        *report = writer.report;
    return bytes;
}

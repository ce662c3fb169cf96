#include "iv/VrmlPictureFiles.h"

#include "support/FileEnding.h"
#include "support/PngFile.h"
#include "support/ToolError.h"

#include <filesystem>
#include <utility>

namespace
{

namespace fs = std::filesystem;

bool isForBrowsers(std::string const& path)
{
    std::string const ending = FileEnding::of(path);
    return ending == ".png" || ending == ".jpg" || ending == ".jpeg" || ending == ".gif";
}

void makeFolder(std::string const& folder)
{
    std::error_code problem;
    fs::create_directories(folder, problem);
    if (problem)
        throw ToolError(folder + ": cannot make this directory for textures: " + problem.message() +
                        ". Check the permissions and the space on the disk.");
}

void writeFile(PicturePixels const& pixels, std::string const& path, std::vector<KeptFile> const& kept,
               OutputFile::Existing existing)
{
    OutputFile output(path, kept, existing);
    if (std::string const problem = writePng(pixels, output.stream()); !problem.empty())
        throw ToolError(path + ": cannot write this picture: " + problem);
    output.commit();
}

} // namespace

VrmlPictureFiles::VrmlPictureFiles(std::string output, std::vector<KeptFile> kept,
                                   OutputFile::Existing existing)
    : folder(fs::path(std::move(output)).replace_extension().string() + "_textures"), kept(std::move(kept)),
      existing(existing)
{
}

std::string VrmlPictureFiles::addressOf(std::string const& path)
{
    std::string address;
    for (char const character : path)
        address += character == '%'   ? "%25"
                   : character == '#' ? "%23"
                   : character == '?' ? "%3F"
                                      : std::string(1, character);
    return address;
}

void VrmlPictureFiles::name(FltVrmlPicture& picture)
{
    FltTexture const& texture = *picture.texture;
    if (texture.pixels == nullptr || (!picture.isOpaque && isForBrowsers(texture.path)))
        picture.url = addressOf(texture.written);
}

void VrmlPictureFiles::place(FltVrmlPicture& picture)
{
    name(picture);
    if (!picture.url.empty() || picture.texture->pixels == nullptr)
        return;
    std::string const file = freeName(picture);
    makeFolder(folder);
    all.push_back((fs::path(folder) / file).string());
    writeFile(*picture.pixels(), all.back(), kept, existing);
    picture.url = addressOf((fs::path(folder).filename() / file).string());
}

/// A name for the file of a picture that is like its own.
std::string VrmlPictureFiles::freeName(FltVrmlPicture const& picture)
{
    std::string const stem = fs::path(picture.texture->path).stem().string();
    std::string name = stem + ".png";
    for (int& number = numbers.try_emplace(stem, 1).first->second; !names.insert(name).second;)
        name = stem + '-' + std::to_string(++number) + ".png";
    return name;
}

#include "convert/FltTextures.h"

#include "messages/FltWarningMessageConsole.h"
#include "textures/Picture.h"
#include "toolkit/ImageSearch.h"
#include "toolkit/SoSharedTexture.h"

#include <sys/stat.h>

namespace
{

SoNodeRef<SoTexture2> makeByToolkit(std::string const& name)
{
    SoNodeRef<SoTexture2> texture(new SoTexture2);
    texture->filename = name.c_str();
    return texture;
}

SoNodeRef<SoTexture2> makeByName(std::string const& name)
{
    SoNodeRef<SoTexture2> texture(new SoTexture2);
    SoSharedTexture::nameSilently(*texture, name);
    return texture;
}

/// Null if there are no pixels.
std::shared_ptr<PicturePixels const> copyOf(SoSFImage const& image)
{
    SbVec2s size;
    int components = 0;
    unsigned char const* const bytes = image.getValue(size, components);
    if (bytes == nullptr)
        return nullptr;
    std::ptrdiff_t const count = std::ptrdiff_t(size[0]) * size[1] * components;
    return std::make_shared<PicturePixels const>(
        PicturePixels{size[0], size[1], components, {bytes, bytes + count}});
}

/// Why a file isn't given to the toolkit; empty if it is.
std::string problemOf(Picture const& picture)
{
    bool const isForUsAlone = picture.pixels != nullptr && !picture.isSafeForToolkit;
    return isForUsAlone ? "is a picture of a kind that the toolkit doesn't read" : picture.problem;
}

} // namespace

SoNodeRef<SoTexture2> FltTextures::make(std::string const& name)
{
    std::string const path = name.empty() ? "" : ImageSearch::find(name);
    struct stat status = {};
    if (path.empty() || ::stat(path.c_str(), &status) != 0)
        return makeByToolkit(name); // which says that there is no such file
    if (S_ISDIR(status.st_mode))
        return makeByName(name);
    File& file = files[{status.st_dev, status.st_ino}];
    if (!file.isMet) {
        Picture const picture = Picture::read(path);
        file.problem = problemOf(picture);
        if (file.problem.empty() && !picture.damage.empty())
            FltWarningMessageConsole::notifyGuard(
                "A texture is shown in part", ": " + path + " " + picture.damage + ". " + Picture::advice);
    }
    if (!file.problem.empty()) {
        file.isMet = true;
        FltWarningMessageConsole::notifyGuard("A texture isn't read", ": " + path + " " + file.problem);
        return makeByName(name);
    }
    if (file.isMet && file.pixels == nullptr)
        file.pixels = copyOf(makeByToolkit(name)->image);
    if (file.pixels == nullptr) {
        file.isMet = true;
        return makeByToolkit(name);
    }
    auto* const shared = new SoSharedTexture;
    SoNodeRef<SoTexture2> texture(shared);
    shared->setPixels(file.pixels);
    shared->setFileName(name);
    return texture;
}

#include "convert/FltTextures.h"

#include "messages/FltWarningMessageConsole.h"
#include "toolkit/ImageSearch.h"

#include <sys/stat.h>

namespace
{

SoNodeRef<SoTexture2> makeByToolkit(std::string const& name)
{
    SoNodeRef<SoTexture2> texture(new SoTexture2);
    texture->filename = name.c_str();
    return texture;
}

std::shared_ptr<SoSharedPixels const> pixelsOf(SoTexture2 const& texture)
{
    auto pixels = std::make_shared<SoSharedPixels>();
    unsigned char const* const bytes = texture.image.getValue(pixels->size, pixels->components);
    if (bytes == nullptr)
        return nullptr;
    auto const size = static_cast<std::size_t>(pixels->size[0]) * static_cast<std::size_t>(pixels->size[1]) *
                      static_cast<std::size_t>(pixels->components);
    pixels->bytes.assign(bytes, bytes + size);
    return pixels;
}

} // namespace

SoNodeRef<SoTexture2> FltTextures::make(std::string const& name)
{
    std::string const path = name.empty() ? "" : ImageSearch::find(name);
    struct stat status = {};
    if (path.empty() || ::stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode))
        return makeByToolkit(name);
    if (!S_ISREG(status.st_mode)) {
        FltWarningMessageConsole::notifyGuard("A texture isn't read, since its file isn't a plain one",
                                              ": " + path);
        SoNodeRef<SoTexture2> texture(new SoTexture2);
        SoSharedTexture::nameSilently(*texture, name);
        return texture;
    }
    File& file = files[{status.st_dev, status.st_ino}];
    if (file.isMet && file.pixels == nullptr)
        file.pixels = pixelsOf(*makeByToolkit(name));
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

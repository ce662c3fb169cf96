#include "convert/FltTextures.h"

#include "messages/FltWarningMessageConsole.h"
#include "toolkit/ImageSearch.h"

#include <sys/stat.h>

namespace
{

using Pixels = FltTextures::Pixels;

/// Keeps the pixels of a node for as long as the toolkit's part of the node lives.
struct PixelsKeeper {
    std::shared_ptr<Pixels const> kept;
};

/// A texture whose pixels belong to several nodes. It is written, and copied, as any other.
class SharedTexture final : private PixelsKeeper, public SoTexture2
{
public:
    explicit SharedTexture(std::shared_ptr<Pixels const> pixels) : PixelsKeeper{std::move(pixels)}
    {
        image.enableNotify(FALSE);
        image.setValue(kept->size, kept->components, kept->bytes.data(), SoSFImage::NO_COPY);
        image.enableNotify(TRUE);
        image.setDefault(TRUE); // the name is written, not the pixels
        setReadStatus(1);
    }
};

SoNodeRef<SoTexture2> makeByToolkit(std::string const& name)
{
    SoNodeRef<SoTexture2> texture(new SoTexture2);
    texture->filename = name.c_str();
    return texture;
}

/// Sets the name without having the toolkit open the file.
void nameSilently(SoTexture2& texture, std::string const& name)
{
    texture.filename.enableNotify(FALSE);
    texture.filename = name.c_str();
    texture.filename.enableNotify(TRUE);
}

std::shared_ptr<Pixels const> pixelsOf(SoTexture2 const& texture)
{
    auto pixels = std::make_shared<Pixels>();
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
        nameSilently(*texture, name);
        return texture;
    }
    File& file = files[{status.st_dev, status.st_ino}];
    if (file.isMet && file.pixels == nullptr)
        file.pixels = pixelsOf(*makeByToolkit(name));
    if (file.pixels == nullptr) {
        file.isMet = true;
        return makeByToolkit(name);
    }
    SoNodeRef<SoTexture2> texture(new SharedTexture(file.pixels));
    nameSilently(*texture, name);
    return texture;
}

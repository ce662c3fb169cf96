#include "convert/FltTextures.h"

#include "messages/FltWarningMessageConsole.h"
#include "toolkit/ImageSafety.h"
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

SoNodeRef<SoTexture2> makeWithoutPicture(std::string const& name, std::string const& reason,
                                         std::string const& path)
{
    FltWarningMessageConsole::notifyGuard(reason, ": " + path);
    SoNodeRef<SoTexture2> texture(new SoTexture2);
    SoSharedTexture::nameSilently(*texture, name);
    return texture;
}

} // namespace

SoNodeRef<SoTexture2> FltTextures::make(std::string const& name)
{
    std::string const path = name.empty() ? "" : ImageSearch::find(name);
    struct stat status = {};
    if (path.empty() || ::stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode))
        return makeByToolkit(name);
    if (!S_ISREG(status.st_mode))
        return makeWithoutPicture(name, "A texture isn't read, since its file isn't a plain one", path);
    File& file = files[{status.st_dev, status.st_ino}];
    if (!file.isMet)
        file.problem = ImageSafety::problemOf(path);
    if (file.problem != nullptr) {
        file.isMet = true;
        return makeWithoutPicture(name, std::string("A texture isn't read, since its file ") + file.problem,
                                  path);
    }
    if (file.isMet && file.pixels == nullptr)
        file.pixels = SoSharedPixels::copyOf(makeByToolkit(name)->image);
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

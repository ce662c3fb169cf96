#include "support/TextureFinder.h"

#include <Inventor/SoDB.h>
#include <utility>

namespace
{

std::string directoryOf(std::string const& file)
{
    std::size_t const slash = file.rfind('/');
    return slash != std::string::npos ? file.substr(0, slash + 1) : "./";
}

/// The search looks in the toolkit's directories too, and there are none before the toolkit has begun.
std::shared_ptr<FltTextureSearch> startSearch(std::vector<std::string> directories)
{
    if (!SoDB::isInitialized())
        SoDB::init();
    return std::make_shared<FltTextureSearch>(std::move(directories));
}

bool takeAny(std::string const& /*path*/, OpenFile const& /*file*/)
{
    return true;
}

} // namespace

TextureFinder::TextureFinder(std::string const& database, std::vector<std::string> directories)
    : databaseDirectory(directoryOf(database)), search(startSearch(std::move(directories)))
{
}

std::string TextureFinder::operator()(std::string const& name, std::string const& referring) const
{
    return search->find(name, {databaseDirectory, directoryOf(referring)}, takeAny).path;
}

std::vector<std::string> TextureFinder::candidates(std::string const& name,
                                                   std::string const& referring) const
{
    std::vector<std::string> found;
    search->find(name, {databaseDirectory, directoryOf(referring)},
                 [&found](std::string const& path, OpenFile const& /*file*/) {
                     found.push_back(path);
                     return false;
                 });
    return found;
}

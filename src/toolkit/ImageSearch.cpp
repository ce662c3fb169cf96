#include "toolkit/ImageSearch.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/lists/SbStringList.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr char const* foldersOfImages[] = {"texture/", "textures/", "images/", "pics/", "pictures/"};

std::string withSlash(std::string directory)
{
    bool const isOpen = !directory.empty() && std::string("/\\:").find(directory.back()) == std::string::npos;
    return isOpen ? directory + "/" : directory;
}

bool isReadable(std::string const& path)
{
    return ::access(path.c_str(), R_OK) == 0;
}

} // namespace

std::string ImageSearch::find(std::string const& name)
{
    return findIf(name, isReadable);
}

std::vector<std::string> ImageSearch::directories()
{
    std::vector<std::string> names;
    if (!SoDB::isInitialized())
        return names; // the list itself isn't there
    SbStringList const& toolkits = SoInput::getDirectories();
    for (int i = 0; i < toolkits.getLength(); ++i)
        names.emplace_back(toolkits[i]->getString());
    return names;
}

std::string ImageSearch::findIf(std::string const& name, std::function<bool(std::string const&)> const& take)
{
    if (take(name))
        return name;
    std::vector<std::string> folders;
    for (std::string& directory : directories())
        folders.push_back(withSlash(std::move(directory)));

    // A colon counts as a separator where there is no backslash, and a name with one isn't looked for whole.
    bool const hasBackslash = name.find('\\') != std::string::npos;
    std::size_t const separator = name.find_last_of(hasBackslash ? "/\\" : "/:");
    bool const hasColon = !hasBackslash && name.find(':') != std::string::npos;
    if (separator != std::string::npos && !hasColon)
        for (std::string const& folder : folders)
            if (take(folder + name))
                return folder + name;

    std::string const last = separator != std::string::npos ? name.substr(separator + 1) : name;
    for (std::string const& folder : folders) {
        if (take(folder + last))
            return folder + last;
        for (char const* const images : foldersOfImages) {
            std::string path = folder;
            path.append(images).append(last);
            if (take(path))
                return path;
        }
    }
    return {};
}

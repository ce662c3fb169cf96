#include "convert/FltExternalFiles.h"

#include <algorithm>

std::string FltExternalFiles::pathOf(std::string const& directory, std::string const& reference)
{
    bool const isFromHere =
        reference.size() > 1 && reference[0] == '.' && (reference[1] == '\\' || reference[1] == '/');
    return directory + reference.substr(isFromHere ? 2 : 0);
}

std::string FltExternalFiles::relativePathOf(std::string const& relativePath, std::string const& reference)
{
    std::size_t const separator = reference.find_last_of("/\\");
    return separator != std::string::npos ? relativePath + reference.substr(0, separator) + "/"
                                          : relativePath;
}

std::string FltExternalFiles::nameOf(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

FltExternalFiles::File const* FltExternalFiles::find(std::string const& name) const
{
    auto const found = externalReferences.find(name);
    return found != externalReferences.end() ? &found->second : nullptr;
}

FltExternalFiles::File& FltExternalFiles::add(std::string const& name, SoSeparator* root)
{
    File& file = externalReferences[name];
    file = {};
    file.root = root;
    return file;
}

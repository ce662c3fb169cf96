#include "convert/FltExternalFiles.h"

#include <algorithm>

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

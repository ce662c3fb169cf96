#include "filekit/FltSceneLoader.h"

#include "complete/FltCompleteConversion.h"

#include <Inventor/SbString.h>
#include <Inventor/SoInput.h>
#include <Inventor/lists/SbStringList.h>
#include <Inventor/nodes/SoSeparator.h>
#include <string>

namespace
{

/// Adds a directory to those in which the toolkit looks for files, while this object lives.
class SearchedDirectory
{
public:
    explicit SearchedDirectory(std::string directory) : directory(std::move(directory)), added(!isSearched())
    {
        if (added)
            SoInput::addDirectoryFirst(this->directory.c_str());
    }
    ~SearchedDirectory()
    {
        if (added)
            SoInput::removeDirectory(directory.c_str());
    }

    SearchedDirectory(SearchedDirectory const&) = delete;
    SearchedDirectory& operator=(SearchedDirectory const&) = delete;

private:
    bool isSearched() const
    {
        SbStringList const& directories = SoInput::getDirectories();
        for (int i = 0; i < directories.getLength(); ++i)
            if (*directories[i] == directory.c_str())
                return true;
        return false;
    }

    std::string directory;
    bool added;
};

} // namespace

SoSeparator* FltSceneLoader::load(char const* fileName)
{
    // External references are only found if the name has a directory.
    std::string name = fileName;
    if (name.find('/') == std::string::npos)
        name.insert(0, "./");

    SearchedDirectory const textures(name.substr(0, name.rfind('/') + 1));
    FltCompleteConversion::Result const result = FltCompleteConversion::convert(name, {});
    SoSeparator* const root = result.root.get();
    if (root != nullptr)
        root->ref();
    return root;
}

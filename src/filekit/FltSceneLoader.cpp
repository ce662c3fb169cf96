#include "filekit/FltSceneLoader.h"

#include "plugin/Plugin.h"

#include <Inventor/SbString.h>
#include <Inventor/SoInput.h>
#include <Inventor/lists/SbStringList.h>
#include <Inventor/nodes/SoSeparator.h>
#include <iostream>
#include <streambuf>
#include <string>

namespace
{

/// A buffer that drops all output.
class SilentBuffer : public std::streambuf
{
protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(char const*, std::streamsize count) override { return count; }
};

/// Silences std::cout while this object lives, and restores it as it was, whatever buffer it got meanwhile.
class OutputGuard
{
public:
    OutputGuard() : state(std::cout.rdstate()), before(std::cout.rdbuf(&silence)) {}
    ~OutputGuard()
    {
        std::cout.rdbuf(before);
        if (before != nullptr)
            std::cout.clear(state);
    }

    OutputGuard(OutputGuard const&) = delete;
    OutputGuard& operator=(OutputGuard const&) = delete;

private:
    SilentBuffer silence;
    std::ios_base::iostate state;
    std::streambuf* before;
};

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

    SoSeparator* root;
    {
        OutputGuard const output;
        SearchedDirectory const textures(name.substr(0, name.rfind('/') + 1));
        root = convertFrom(name.c_str());
    }
    // The separator of a file that wasn't converted has no reference.
    if (root != nullptr && root->getRefCount() == 0) {
        root->ref();
        root->unref();
        root = nullptr;
    }
    return root;
}

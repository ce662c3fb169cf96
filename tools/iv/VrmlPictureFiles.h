#pragma once

#include "support/OutputFile.h"

#include "vrml/FltVrmlPictures.h"

#include <map>
#include <set>
#include <string>
#include <vector>

/// The pictures of a VRML97 file, as files that browsers read: PNG, JPEG and GIF pictures stay where they
/// are, and the others are written as PNG into a folder beside the file.
class VrmlPictureFiles
{
public:
    /// @param output the VRML97 file, which is going to be written
    /// @param kept   files that must not be replaced
    /// @param existing what becomes of others that are there already
    VrmlPictureFiles(std::string output, std::vector<KeptFile> kept, OutputFile::Existing existing);

    /// Gives a picture its address, and writes its file if it needs one.
    /// @throw ToolError if that can't be written
    void place(FltVrmlPicture& picture);

    /// The files that were written.
    std::vector<std::string> const& written() const { return all; }

    /// Gives a picture the address of the file that the database names, if browsers read it; none otherwise.
    static void name(FltVrmlPicture& picture);

    /// A path as an address: characters that would mean something else are written by their numbers.
    static std::string addressOf(std::string const& path);

private:
    std::string freeName(FltVrmlPicture const& picture);

    std::string folder;
    std::vector<KeptFile> kept;
    OutputFile::Existing existing;
    std::vector<std::string> all;
    std::set<std::string> names;        ///< In the folder.
    std::map<std::string, int> numbers; ///< The last one that each name got.
};

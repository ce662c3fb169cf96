#pragma once

#include "convert/FltReferenceChain.h"

#include <map>
#include <string>

class SoSeparator;

/// The external files that one file refers to. Each is converted once, and its scene is shared by all
/// references to it.
class FltExternalFiles
{
public:
    struct File {
        SoSeparator* root = nullptr; ///< Not owned: the scene holds it.
        bool isOpen = false;         ///< Whether there was anything to read.
        int scope = 0;               ///< Its scene in the account of instances.
    };

    /// The path of a file that stands beside the one which refers to it: a "./" or ".\\" at its start is left
    /// out.
    /// @param directory of the referring file, with a slash at its end
    static std::string pathOf(std::string const& directory, std::string const& reference);

    /// What the names in a file have to begin with to be found from the top-level file.
    /// @param relativePath the same for the referring file
    static std::string relativePathOf(std::string const& relativePath, std::string const& reference);

    /// The name by which a file is known here: its path, with slashes for backslashes.
    static std::string nameOf(std::string path);

    /// The file of a name, or null. It stays where it is while others are added.
    File const* find(std::string const& name) const;

    /// Enters a file. It stays where it is while others are added.
    File& add(std::string const& name, SoSeparator* root);

    /// How many names were counted for a file so far; this one counts from now on.
    int countName(FltReferenceChain::Identity const& file) { return names[file]++; }

private:
    std::map<std::string, File> externalReferences;
    std::map<FltReferenceChain::Identity, int> names;
};

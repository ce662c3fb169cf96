#pragma once

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

    /// A path as files are known by it: with slashes for backslashes.
    static std::string nameOf(std::string path);

    /// The file of a name, or null. It stays where it is while others are added.
    File const* find(std::string const& name) const;

    /// Enters a file. It stays where it is while others are added.
    File& add(std::string const& name, SoSeparator* root);

private:
    std::map<std::string, File> externalReferences;
};

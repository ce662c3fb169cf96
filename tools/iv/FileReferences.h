#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

class SoNode;

/// Has a scene whose references are SoFile nodes name the converted files.
class FileReferences
{
public:
    /// @param targets   the converted file of each database that may be named, by the canonical path of the
    ///                  database
    /// @param directory of the file that the scene is written into: names count from it
    /// @param isVrml    whether the scene is written as VRML, which has a node of its own for that
    FileReferences(std::unordered_map<std::string, std::string> targets, std::string directory, bool isVrml);

    /// Names the converted files in a scene. A reference to a database that isn't among the targets is taken
    /// out; an empty group keeps its place.
    /// @return how many were taken out
    std::size_t rename(SoNode* root) const;

private:
    SoNode* replacement(std::string const& database) const;

    std::unordered_map<std::string, std::string> targets;
    std::string directory;
    bool isVrml;
};

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>

class SoNode;

/// What converted files are called in the one that names them.
class FileReferences
{
public:
    /// @param targets   the converted file of each database that may be named, by the canonical path of the
    ///                  database
    /// @param directory of the file that the scene is written into: names count from it
    FileReferences(std::unordered_map<std::string, std::string> targets, std::string directory);

    /// The name of the converted file of a database; none if it isn't among the targets.
    std::optional<std::string> nameOf(std::string const& database) const;

    /// Names the converted files in a scene whose references are SoFile nodes. A reference to a database that
    /// isn't among the targets is taken out; an empty group keeps its place.
    /// @return how many were taken out
    std::size_t rename(SoNode* root) const;

private:
    std::unordered_map<std::string, std::string> targets;
    std::string directory;
};

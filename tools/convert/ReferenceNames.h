#pragma once

#include <optional>
#include <string>
#include <unordered_map>

/// What converted files are called in the one that names them.
class ReferenceNames
{
public:
    /// @param targets   the converted file of each database that may be named, by the canonical path of the
    ///                  database
    /// @param directory of the file that names them: names count from it
    ReferenceNames(std::unordered_map<std::string, std::string> targets, std::string directory);

    /// The name of the converted file of a database; none if it isn't among the targets.
    std::optional<std::string> nameOf(std::string const& database) const;

private:
    std::unordered_map<std::string, std::string> targets;
    std::string directory;
};

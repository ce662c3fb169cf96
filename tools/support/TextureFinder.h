#pragma once

#include <string>
#include <vector>

/// Finds the images that databases name.
class TextureFinder
{
public:
    /// @param directories where to look besides the directory of the database
    explicit TextureFinder(std::vector<std::string> directories) : directories(std::move(directories)) {}

    /// @return the path of the image; empty if there is none
    std::string operator()(std::string const& name, std::string const& database) const;

private:
    std::vector<std::string> directories;
};

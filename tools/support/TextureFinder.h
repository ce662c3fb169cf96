#pragma once

#include "textures/FltTextureSearch.h"

#include <memory>
#include <string>
#include <vector>

/// Finds the images that databases name, where a load finds them.
class TextureFinder
{
public:
    /// @param database    the top-level file
    /// @param directories where to look besides the directories of databases
    TextureFinder(std::string const& database, std::vector<std::string> directories);

    /// @param referring the file that names the image
    /// @return the path of the image; empty if there is none
    std::string operator()(std::string const& name, std::string const& referring) const;

    /// @return all files that a load would try as that image, the likeliest first: it takes the first one
    ///         that it can read
    std::vector<std::string> candidates(std::string const& name, std::string const& referring) const;

private:
    std::string databaseDirectory;
    std::shared_ptr<FltTextureSearch> search; ///< Of all copies: it remembers directories.
};

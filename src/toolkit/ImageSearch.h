#pragma once

#include <functional>
#include <string>
#include <vector>

/// Looks for the file of an image where the toolkit looks for it when a texture gets its name: as the name
/// says, then below each of the toolkit's directories with the whole name, with its last part, and with its
/// last part in a folder such as "textures".
class ImageSearch
{
public:
    /// The file that the toolkit would open, found without opening any: that may wait for ever, as with a
    /// pipe.
    /// @return its path; empty if there is none
    static std::string find(std::string const& name);

    /// The toolkit's directories, as they were given to it. There are none before it is started.
    static std::vector<std::string> directories();

    /// Offers the paths in the toolkit's order until one is taken. @return it, or an empty text
    static std::string findIf(std::string const& name, std::function<bool(std::string const&)> const& take);
};

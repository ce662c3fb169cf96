#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

/// Names for the nodes of a VRML97 file: each once, of letters, digits and `_`, and none that a reader could
/// take for a word of the language.
class VrmlNames
{
public:
    /// A new name, as like the wanted one as can be. One that is taken gets a number after it.
    /// @return empty if nothing is wanted
    std::string take(std::string_view wanted);

private:
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::size_t> numbers; ///< The last one that a name got.
};

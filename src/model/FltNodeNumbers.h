#pragma once

#include "model/FltModelTree.h"

#include <string>
#include <unordered_map>

/// Finds the nodes of a hierarchy by their names.
class FltNodeNumbers
{
public:
    explicit FltNodeNumbers(FltModelTree const& tree);

    /// The first node of a name in the order of the file; FltModelTree::none if there is none.
    FltModelTree::Number find(std::string const& name) const;

private:
    std::unordered_map<std::string, FltModelTree::Number> numbers; ///< By name.
};

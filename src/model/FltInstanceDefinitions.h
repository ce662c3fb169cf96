#pragma once

#include "model/FltModelTree.h"

#include <map>
#include <vector>

/// The instance definitions of a file. Several may have the same number.
class FltInstanceDefinitions
{
public:
    explicit FltInstanceDefinitions(FltModelTree const& tree);

    bool isEmpty() const { return definitions.empty(); }

    /// The definition that a reference means: the last one of its number before it, or else the first one
    /// after it; FltModelTree::none if there is none.
    FltModelTree::Number find(FltModelTree::Number reference) const;

    /// The number that a definition has, or that a reference names.
    static int numberIn(FltRecordView const& record);

private:
    FltModelTree const& tree;
    std::map<int, std::vector<FltModelTree::Number>> definitions; ///< By the number, in the file's order.
};

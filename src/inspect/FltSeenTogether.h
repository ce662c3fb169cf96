#pragma once

#include "inspect/FltCheckedModel.h"

#include <cstdint>
#include <vector>

/// Which nodes are seen together in one place, whatever switches, distances, times and joints show: groups
/// and objects stay together with what is above them as long as nothing comes between.
class FltSeenTogether
{
public:
    explicit FltSeenTogether(FltCheckedModel const& checked);

    /// Equal for nodes that are seen together.
    std::uint32_t scopeOf(std::uint32_t node) const { return scopes[node]; }

private:
    enum class Part {
        joined, ///< Seen with what is above it.
        alone,
        aloneWithChildren, ///< And each of those below it is alone too.
    };

    Part partOf(std::uint32_t node) const;

    FltCheckedModel const& checked;
    std::vector<std::uint32_t> scopes; ///< By node.
};

#pragma once

#include "visual/FltOmission.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// What a visual loses on its way into glTF, by kind.
class FltGltfLosses
{
public:
    void add(std::string_view kind, std::uint64_t count = 1)
    {
        if (count == 0)
            return;
        auto const known = counts.find(kind);
        (known != counts.end() ? known->second : counts[std::string(kind)]) += count;
    }

    /// In alphabetical order.
    std::vector<FltOmission> list() const
    {
        std::vector<FltOmission> omissions;
        omissions.reserve(counts.size());
        for (auto const& [kind, count] : counts)
            omissions.push_back({kind, count});
        return omissions;
    }

private:
    std::map<std::string, std::uint64_t, std::less<>> counts;
};

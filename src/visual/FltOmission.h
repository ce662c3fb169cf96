#pragma once

#include <cstdint>
#include <string>

/// What a database holds and the scene doesn't show.
struct FltOmission {
    std::string kind;        ///< What it is, such as "sound".
    std::uint64_t count = 0; ///< How many of them there are.
};

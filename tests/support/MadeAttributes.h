#pragma once

#include "writer/FltWriter.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// The bytes of a file of texture attributes: zeros, but for these numbers at their places. Both directions
/// repeat in the way that is said of them together.
inline std::string madeAttributes(std::vector<std::pair<std::size_t, long>> const& numbers)
{
    constexpr std::size_t size = 1600; // as modelling tools write it
    constexpr long asBoth = 3;
    std::string bytes(size, '\0');
    auto const put = [&bytes](std::size_t at, long number) {
        bytes.replace(at, 4, FltWriter::big32(number));
    };
    for (std::size_t const direction : {40, 44})
        put(direction, asBoth);
    for (auto const& [at, number] : numbers)
        put(at, number);
    return bytes;
}

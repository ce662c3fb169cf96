#pragma once

#include <cstddef>
#include <iterator>

/// Units of length, by the number that the header has for each.
namespace FltUnits
{

/// @return 1 for metres, and for a number that stands for no unit
constexpr double metresIn(std::size_t unit)
{
    constexpr double scales[] = {1, 1000, 1, 1, 0.3048, 0.0254, 1, 1, 1852};
    return unit < std::size(scales) ? scales[unit] : 1;
}

} // namespace FltUnits

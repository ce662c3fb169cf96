#pragma once

#include <cstddef>
#include <iterator>

/// Units of length, by the number that the header has for each.
namespace FltUnits
{

/// Whether a number stands for a unit: metres, kilometres, feet, inches, nautical miles.
constexpr bool isKnown(std::size_t unit)
{
    return unit == 0 || unit == 1 || unit == 4 || unit == 5 || unit == 8;
}

/// @return 1 for metres, and for a number that stands for no unit
constexpr double metresIn(std::size_t unit)
{
    constexpr double scales[] = {1, 1000, 1, 1, 0.3048, 0.0254, 1, 1, 1852};
    return unit < std::size(scales) ? scales[unit] : 1;
}

} // namespace FltUnits

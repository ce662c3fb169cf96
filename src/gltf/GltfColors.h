#pragma once

#include <array>
#include <cstdint>

/// Colours as glTF has them: in equal steps of light. Databases and pictures have them in equal steps of what
/// people see (sRGB).
namespace GltfColors
{

/// A part from 0 to 1. Anything else becomes one.
double linear(double part);

/// Red, green, blue and alpha of a packed colour, red highest, in parts of 65535.
std::array<std::uint16_t, 4> linear(std::uint32_t packed);

} // namespace GltfColors

#pragma once

#include <cstddef>

class SoNode;

/// Shapes of which nothing is to be seen but their outline: white, not lit, and without the texture that they
/// name.
namespace BlankShapes
{

/// How many there are in a scene of the complete conversion.
std::size_t countIn(SoNode* scene);

} // namespace BlankShapes

#pragma once

/// What of a face is drawn as an area.
namespace FltFaceArea
{

/// A face whose area is a smaller part of its size squared isn't drawn.
constexpr double leastPart = 1e-12;

/// Whether corners span an area that is drawn. False for what isn't a number.
/// @param doubleArea      the length of the sum of the triangles' normals
/// @param farthestSquared the square of the distance of the corner that is farthest from the first one
constexpr bool isDrawn(double doubleArea, double farthestSquared)
{
    return doubleArea > leastPart * farthestSquared;
}

} // namespace FltFaceArea

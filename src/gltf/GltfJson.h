#pragma once

#include <Inventor/SbVec3d.h>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

/// JSON whose members stand in the order in which they were added.
using GltfJson = nlohmann::ordered_json;

/// Values for JSON that any reader takes: finite numbers, and text in UTF-8.
namespace GltfValues
{

/// What is no number becomes 0, and infinities the largest numbers.
double readable(double number);

/// Three such numbers.
GltfJson list(SbVec3d const& vector);

/// A part from 0 to 1, to six digits.
double part(double value);

/// Text without what controls a terminal; such characters become blanks.
std::string text(std::string_view words);

/// The last part of a path of either kind.
std::string lastPart(std::string_view path);

} // namespace GltfValues

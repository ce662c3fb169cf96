#pragma once

#include "support/Picture.h"

#include <string>
#include <vector>

/// Small text in pictures, by the toolkit's own font.
namespace TextLines
{

constexpr int height = 16; ///< Of a line, in pixels.

/// How wide a line is, in pixels.
int widthOf(std::string const& line);

/// Leaves out the middle of a line that is too wide.
std::string shortened(std::string const& line, int width);

/// Breaks a text between words, so that no line is too wide; a longer word is shortened.
/// @param most how many lines there may be; the rest is left out
std::vector<std::string> wrapped(std::string const& text, int width, std::size_t most);

/// Draws lines below each other into a picture that is just high enough, black on white.
/// @param isCentred whether each stands in the middle, rather than on the left
Picture draw(std::vector<std::string> const& lines, int width, bool isCentred);

} // namespace TextLines

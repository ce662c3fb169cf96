#pragma once

#include <string>
#include <string_view>

/// Text within HTML and SVG.
namespace SvgText
{

/// Any bytes as a text that is nothing else, in elements as well as in attributes.
std::string escaped(std::string_view text);

/// A length or place, with as many digits as can be seen.
std::string number(double value);

} // namespace SvgText

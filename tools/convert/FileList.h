#pragma once

#include <string>
#include <vector>

/// Lists of files that other programs make, such as "find".
namespace FileList
{

/// The names in a list: a line each, or each with a zero byte behind it, as "find -print0" does. Empty ones
/// don't count.
std::vector<std::string> namesIn(std::string const& text);

/// Reads a list. @param file its name; "-" is standard input
/// @throw ToolError if it can't be read
std::vector<std::string> read(std::string const& file);

} // namespace FileList

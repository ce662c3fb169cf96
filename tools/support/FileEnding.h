#pragma once

#include <string>

/// What the ending of a file's name says of its kind.
namespace FileEnding
{

/// The ending with its full stop, in small letters: ".flt". Empty if there is none.
std::string of(std::string const& path);

} // namespace FileEnding

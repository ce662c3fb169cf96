#pragma once

#include <string>

/// Tells whether two names mean the same file.
namespace FileIdentity
{

/// The canonical path of a file, or the path as it is if there is no such file.
std::string of(std::string const& path);

} // namespace FileIdentity

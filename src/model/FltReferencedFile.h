#pragma once

#include <string>

/// Where the file lies that an external reference names: from the directory of the file that refers to it,
/// unless its path begins at the root. Backslashes count as slashes, and the name of a node in angle brackets
/// at the end doesn't matter: the whole file is meant.
///
/// All ask it but the exact conversion, whose rule is its own: see FltExternalFiles.
namespace FltReferencedFile
{

/// @param database the file that refers to it
std::string pathOf(std::string const& database, std::string const& reference);

} // namespace FltReferencedFile

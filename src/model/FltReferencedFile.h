#pragma once

#include <string>

/// What an external reference names: a file, seen from the directory of the one that refers to it unless its
/// path begins at the root, and perhaps a node in it, in angle brackets at the end: "town.flt<gate>".
/// Backslashes count as slashes.
///
/// All ask it but the exact conversion, whose rule is its own: see FltExternalFiles.
namespace FltReferencedFile
{

/// The path as it is stored: FltReferenceSearch tells whether a file lies there.
/// @param database the file that refers to it
std::string pathOf(std::string const& database, std::string const& reference);

/// The name of the node that is meant; empty for the whole file.
std::string nodeOf(std::string const& reference);

/// The reference without the node, otherwise as stored.
std::string fileOf(std::string const& reference);

} // namespace FltReferencedFile

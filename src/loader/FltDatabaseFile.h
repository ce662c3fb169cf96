#pragma once

#include "loader/FltLoadError.h"

#include <cstdint>
#include <string>

/// What can be said of a database file before, or without, its conversion.
namespace FltDatabaseFile
{

/// The name as conversions need it: with a directory, so that external references are found.
std::string withDirectory(std::string const& path);

/// Makes sure that a file can be read: that it is there, regular, permitted, and not too large.
/// @throw FltLoadError that says what is wrong
void checkReadable(std::string const& path, std::uint64_t largestFile);

/// Why a file that can be read isn't converted.
FltLoadError whyNotConverted(std::string const& path);

/// The error for a file that there isn't enough memory for.
FltLoadError outOfMemory(std::string const& path);

/// Whether a file begins like a database of a revision that is converted.
bool canConvert(std::string const& path);

} // namespace FltDatabaseFile

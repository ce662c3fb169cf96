#pragma once

#include "toolkit/VelloReaderExport.h"

#include <string>

/// Looks at a picture's file before the toolkit's image library takes its word for anything: the library asks
/// for the memory of any size, follows run lengths beyond its buffers, and some damage makes it end the
/// process.
namespace ImageSafety
{

/// What keeps a picture from being read. Kinds of files that the library doesn't know are none of its
/// business, and files that can't be opened aren't either: it says so itself.
/// @return the end of a sentence that begins with "its file", or null if the picture may be read
VELLOREADER_API char const* problemOf(std::string const& path);

} // namespace ImageSafety

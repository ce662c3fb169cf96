#pragma once

/// Opens files whose names come from strangers. Only to open a pipe or a device can have effects, so nothing
/// but regular files is touched.
namespace RegularFile
{

/// Opens a regular file for reading.
/// @return a descriptor that the caller closes; or -1, with errno set, EINVAL if it is no regular file
int open(char const* path);

/// Whether something stands there that may be opened for reading, a directory, pipe or device included. It
/// isn't opened.
bool isReadable(char const* path);

} // namespace RegularFile

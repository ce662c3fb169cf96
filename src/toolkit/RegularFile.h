#pragma once

#include "toolkit/OpenFile.h"

#include <functional>

/// Opens files whose names come from strangers. Only to open a pipe or a device can have effects, so nothing
/// but regular files is touched.
namespace RegularFile
{

/// Opens a regular file for reading.
/// @return none if that fails, with errno set, EINVAL if it is no regular file
OpenFile open(char const* path);

/// The same for a file that is reached in another way than by its name.
/// @param descriptorFor opens it with the flags of open(2), first without effects, then for reading
OpenFile open(std::function<int(int flags)> const& descriptorFor);

/// Whether something stands there that may be opened for reading, a directory, pipe or device included. It
/// isn't opened.
bool isReadable(char const* path);

} // namespace RegularFile

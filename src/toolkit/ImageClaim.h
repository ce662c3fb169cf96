#pragma once

#include <string>

/// Looks at how large a picture says it is, before an image library takes its word for it: such libraries ask
/// for the memory first, and not all of them survive when they don't get it.
namespace ImageClaim
{

/// Whether a file could hold the picture that its head promises: formats that compress don't get a pixel into
/// less than a thousandth of a byte. A format that isn't known here is believed.
/// @return false if the promise is out of proportion to the file
bool isCredible(std::string const& path);

} // namespace ImageClaim

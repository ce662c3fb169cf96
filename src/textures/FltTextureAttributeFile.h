#pragma once

#include "textures/FltTextureAttributes.h"
#include "textures/FltTextureSearch.h"

#include <string>
#include <vector>

class PictureBytes;
struct PicturePixels;

/// Reads the attributes of textures, which stand beside pictures in files of their own.
namespace FltTextureAttributeFile
{

/// Looks for the attributes of a texture as for its picture, beside the picture first. A file that can't be
/// read, or is broken, says nothing: the rest of the attributes are the usual ones.
/// @param name           of the texture, as stored
/// @param picture        where its picture was found; empty if it wasn't
/// @param ownDirectories of the top-level database and of the file that names the texture
FltTextureAttributes find(FltTextureSearch& search, std::string const& name, std::string const& picture,
                          std::vector<std::string> const& ownDirectories);

/// What the bytes of such a file say.
FltTextureAttributes decode(PictureBytes const& bytes);

/// What a picture is other than its attributes say; empty if they agree.
std::string contradiction(FltTextureAttributes const& attributes, PicturePixels const& picture);

} // namespace FltTextureAttributeFile

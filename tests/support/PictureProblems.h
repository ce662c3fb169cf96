#pragma once

#include "textures/Picture.h"
#include "textures/PictureBytes.h"

#include <string>

/// Decodes a picture's file.
inline Picture decodePicture(std::string const& bytes, std::string const& name = "picture")
{
    PictureBytes const file(reinterpret_cast<unsigned char const*>(bytes.data()), bytes.size());
    return Picture::decode(file, name);
}

/// Why a file isn't read; empty if it is.
inline std::string pictureProblem(std::string const& bytes, std::string const& name = "picture")
{
    return decodePicture(bytes, name).problem;
}

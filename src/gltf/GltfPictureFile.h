#pragma once

#include "textures/PictureBytes.h"
#include "textures/PicturePixels.h"

/// What the bytes of a picture's file are to readers of glTF.
namespace GltfPictureFile
{

/// Whether they are a JPEG picture that every reader shows as its pixels are: of eight bits, grey or YCbCr,
/// and not turned by what cameras write beside it.
bool isPlainJpeg(PictureBytes const& file, PicturePixels const& pixels);

/// Whether they are a PNG picture that every reader shows as its pixels are: in the usual colours, its pixels
/// square, and not moving.
bool isPlainPng(PictureBytes const& file, PicturePixels const& pixels);

} // namespace GltfPictureFile

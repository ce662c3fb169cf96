#pragma once

#include "support/Picture.h"

#include <cstdio>
#include <string>

/// Writes a picture as JPEG, without its alpha channel. A stream that takes no more is the caller's to
/// report.
/// @return an empty text, or why the picture can't be written
std::string writeJpeg(Picture const& picture, FILE* file);

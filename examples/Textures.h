#pragma once

#include <string>

/// @name Textures, each made of a few lines of arithmetic
/// Each function writes a file, and throws ToolError if it can't.
/// @{
void writeAsphalt(std::string const& path);     ///< Grey with grains and seams, PNG.
void writeCorrugation(std::string const& path); ///< Ribs of sheet metal, SGI image.
void writeGround(std::string const& path);      ///< Light grains and patches, to be coloured, PNG.
void writeWindows(std::string const& path);     ///< Storeys of windows, PNG.
/// @}

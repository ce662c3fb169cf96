#pragma once

#include "textures/FltTextureAttributes.h"
#include "textures/PicturePixels.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// A texture that a database names, and the picture that was found for it.
struct FltTexture {
    std::string name;                 ///< As stored.
    std::string database;             ///< The file that names it.
    std::string path;                 ///< Where the picture was found; empty if it wasn't.
    std::vector<std::string> tried;   ///< Otherwise: where it was looked for, first where it should stand.
    std::size_t otherDirectories = 0; ///< Otherwise: directories that were looked into besides that one.
    std::string unreadable; ///< Otherwise: a file that is there, but is no picture that can be read.
    std::string problem;    ///< Then: the end of a sentence about it.
    std::string damage;     ///< Why a part of the picture is lost, in such an end; empty if nothing is.
    std::string advice;     ///< What to do about a problem or damage; a sentence.
    std::string written;    ///< The name for files that are written: the stored one if nothing was found.

    FltTextureAttributes attributes; ///< Of the file beside the picture, or the usual ones.

    /// Null if nothing was found. Textures of one file share them.
    std::shared_ptr<PicturePixels const> pixels;
};

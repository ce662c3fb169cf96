#pragma once

#include "textures/PicturePixels.h"
#include "toolkit/VelloReaderExport.h"

#include <memory>
#include <string>

class PictureBytes;

/// What a picture's file holds: the pixels, or why there are none.
///
/// PNG, JPEG, TIFF, GIF, SGI and TGA files are decoded, whoever wrote them: no bytes make it crash, hang, or
/// take memory that their number doesn't explain. A format is known by the first bytes of a file; TGA, which
/// has none of its own, by its head and the ending of the name.
class VELLOREADER_API Picture
{
public:
    /// What to do about a file that isn't read; a sentence.
    static constexpr char const* advice = "Save it anew as a PNG, JPEG, TIFF, GIF, SGI or TGA picture.";

    /// Reads a picture from an open file, from its beginning on.
    /// @param descriptor of a regular file. It stays open, and its position as it is.
    /// @param name of which the ending counts for TGA
    static Picture read(int descriptor, std::string const& name);

    /// Opens a regular file and reads the picture in it. Nothing else is opened.
    static Picture read(std::string const& path);

    /// Decodes a picture in memory.
    static Picture decode(PictureBytes const& bytes, std::string const& name);

    /// Null if there is a problem.
    std::shared_ptr<PicturePixels const> pixels;

    /// The end of a sentence that begins with the file, as "is a DDS picture, which isn't read"; or empty.
    std::string problem;

    /// The same where there are pixels, and a part of them is lost.
    std::string damage;

    /// Whether the toolkit's image library can be given the same file without harm.
    bool isSafeForToolkit = false;
};

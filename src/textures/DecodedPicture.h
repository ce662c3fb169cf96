#pragma once

#include "textures/PicturePixels.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

class PictureBytes;

/// Why a file isn't read as a picture: the end of a sentence that begins with the file.
class PictureProblem : public std::runtime_error
{
public:
    using runtime_error::runtime_error;
};

/// The pixels of a picture while they are decoded.
struct DecodedPicture {
    PicturePixels pixels;

    /// Whether the toolkit's image library can be given the file without harm.
    bool isSafeForToolkit = true;

    /// Why a part of the picture is lost: the end of a sentence that begins with the file; or empty.
    std::string damage;

    DecodedPicture() = default;

    /// Pixels of 0.
    /// @throw PictureProblem where the file can't hold a picture of this size
    DecodedPicture(std::uint64_t width, std::uint64_t height, std::uint64_t components,
                   PictureBytes const& file);

    std::size_t width() const { return static_cast<std::size_t>(pixels.width); }
    std::size_t height() const { return static_cast<std::size_t>(pixels.height); }
    std::size_t rowSize() const { return width() * static_cast<std::size_t>(pixels.components); }

    /// Where a row begins, counted from the bottom.
    unsigned char* row(std::size_t index) { return pixels.bytes.data() + index * rowSize(); }
    unsigned char* rowFromTop(std::size_t index) { return row(height() - 1 - index); }

    /// What a picture may take once decoded, in bytes: a floor that needs no explanation, and the best
    /// compression that there is, of one colour all over.
    static std::uint64_t mostBytes(PictureBytes const& file);

    /// @throw PictureProblem where the file can't hold a picture, or a part of one, of this size
    static void checkSize(std::uint64_t width, std::uint64_t height, std::uint64_t bytesOfPixel,
                          PictureBytes const& file);
};

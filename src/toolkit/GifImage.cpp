#include "toolkit/GifImage.h"

#include "toolkit/ImageFile.h"

namespace
{

constexpr std::uint64_t sizeOfHead = 13;
constexpr unsigned extension = 0x21;
constexpr unsigned part = 0x2c;
constexpr unsigned trailer = 0x3b;

/// How many bytes of colours follow, from the byte that says so.
std::uint64_t sizeOfColors(unsigned flags)
{
    bool const hasColors = (flags & 0x80U) != 0;
    return hasColors ? 3U * (2U << (flags & 7U)) : 0;
}

/// Passes over blocks of data, each with its size in front, up to an empty one.
/// @return where they end; beyond the file if they don't
std::uint64_t endOfBlocks(ImageFile& file, std::uint64_t at)
{
    for (;;) {
        ImageFile::Bytes const size = file.read(at, 1);
        if (size.size() == 0)
            return file.size() + 1;
        at += 1 + size.byte(0);
        if (size.byte(0) == 0)
            return at;
    }
}

} // namespace

ImageClaim GifImage::claimOf(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, sizeOfHead);
    if (head.size() < sizeOfHead)
        return {};
    return {head.little16(6), head.little16(8), 4};
}

bool GifImage::isSound(ImageFile& file)
{
    constexpr std::uint64_t sizeOfPart = 10;
    ImageFile::Bytes const head = file.read(0, sizeOfHead);
    if (head.size() < sizeOfHead)
        return false;
    for (std::uint64_t at = sizeOfHead + sizeOfColors(head.byte(10));;) {
        ImageFile::Bytes const block = file.read(at, sizeOfPart);
        unsigned const kind = block.size() > 0 ? block.byte(0) : 0;
        if (kind == trailer)
            return true;
        if (kind == extension) {
            at = endOfBlocks(file, at + 2);
        } else if (kind == part && block.size() == sizeOfPart) {
            bool const liesInside = block.little16(1) + block.little16(5) <= head.little16(6) &&
                                    block.little16(3) + block.little16(7) <= head.little16(8);
            if (!liesInside)
                return false;
            constexpr std::uint64_t sizeOfCodes = 1;
            at = endOfBlocks(file, at + sizeOfPart + sizeOfColors(block.byte(9)) + sizeOfCodes);
        } else {
            return false;
        }
    }
}

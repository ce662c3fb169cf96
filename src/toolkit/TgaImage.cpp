#include "toolkit/TgaImage.h"

#include "toolkit/ImageFile.h"

#include <algorithm>

namespace
{

constexpr std::uint64_t sizeOfHead = 18;

/// In pixels. The library reads no larger pictures.
constexpr std::uint32_t longestSide = 4096;

} // namespace

ImageClaim TgaImage::claimOf(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, sizeOfHead);
    if (head.size() < sizeOfHead || head.little16(12) > longestSide || head.little16(14) > longestSide)
        return {};
    return {head.little16(12), head.little16(14), 4};
}

bool TgaImage::isSound(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, sizeOfHead);
    if (head.size() < sizeOfHead)
        return true;
    bool const isCompressed = head.byte(2) == 10;
    if (!isCompressed)
        return true;
    std::uint64_t const colorMap = head.byte(1) == 1 ? head.little16(5) * (head.byte(7) >> 3) : 0;
    ImageClaim const claim = claimOf(file);
    std::uint64_t const pixels = claim.width * claim.height;
    std::uint64_t const pixelSize = head.byte(16) >> 3;
    ImageFile::Bytes const packets =
        file.read(sizeOfHead + head.byte(0) + colorMap, pixels * (pixelSize + 1));
    std::uint64_t at = 0;
    for (std::uint64_t made = 0; made < pixels;) {
        if (at >= packets.size())
            return false;
        std::uint64_t const count = (packets.byte(at) & 0x7fU) + 1;
        bool const isRun = (packets.byte(at) & 0x80U) != 0;
        std::uint64_t const used = std::min(count, pixels - made);
        at += 1 + (isRun ? 1 : used) * pixelSize;
        made += used;
    }
    return at <= packets.size();
}

#include "toolkit/PngImage.h"

#include "toolkit/ImageFile.h"

#include <algorithm>
#include <array>

ImageClaim PngImage::claimOf(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, 26);
    if (head.size() < 26)
        return {};
    constexpr std::array<unsigned, 7> channels = {1, 4, 3, 4, 2, 4, 4}; // by the type of colours
    return {head.big32(16), head.big32(20), channels[std::min(head.byte(25), 6U)]};
}

bool PngImage::isSound(ImageFile& file)
{
    constexpr std::uint64_t signature = 8;
    constexpr std::uint64_t lengthAndType = 8;
    constexpr std::uint64_t checksum = 4;
    constexpr std::uint32_t end = 0x49454e44; // "IEND"
    for (std::uint64_t at = signature;;) {
        ImageFile::Bytes const chunk = file.read(at, lengthAndType);
        if (chunk.size() < lengthAndType)
            return false;
        at += lengthAndType + chunk.big32(0) + checksum;
        if (at > file.size())
            return false;
        if (chunk.big32(4) == end)
            return true;
    }
}

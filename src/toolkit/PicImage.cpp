#include "toolkit/PicImage.h"

#include "toolkit/ImageFile.h"

ImageClaim PicImage::claimOf(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, 6);
    if (head.size() < 6)
        return {};
    return {head.little16(2), head.little16(4), 3};
}

bool PicImage::isSound(ImageFile& file)
{
    constexpr std::uint64_t headAndPalette = 32 + 768;
    ImageClaim const claim = claimOf(file);
    return file.size() >= headAndPalette + claim.width * claim.height;
}

#include "toolkit/SgiImage.h"

#include "toolkit/ImageFile.h"

namespace
{

/// Behind it stand the tables of the rows.
constexpr std::uint64_t sizeOfHead = 512;

/// Whether the runs in a row end, and make no more pixels than a row has.
bool isSoundRow(ImageFile::Bytes const& row, std::uint32_t width)
{
    std::uint32_t pixels = 0;
    for (std::size_t at = 0; at < row.size();) {
        std::uint32_t const count = row.byte(at) & 0x7fU;
        if (count == 0)
            return true;
        bool const isCopied = (row.byte(at) & 0x80U) != 0;
        at += 1 + (isCopied ? count : 1);
        pixels += count;
        if (pixels > width || at > row.size())
            return false;
    }
    // The library looks for the end behind the row then, where its buffer has room for twice the width.
    return row.size() < std::size_t(2) * width;
}

} // namespace

ImageClaim SgiImage::claimOf(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, 12);
    if (head.size() < 12)
        return {};
    return {head.big16(6), head.big16(8), head.big16(10)};
}

bool SgiImage::isSound(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, sizeOfHead);
    if (head.size() < 12)
        return true; // the library finds no more either
    std::uint32_t const width = head.big16(6);
    std::uint32_t const height = head.big16(8);
    std::uint32_t const channels = head.big16(10);
    if (width == 0 || height == 0 || channels == 0 || channels > 4)
        return false;
    bool const isCompressed = head.byte(2) == 1;
    if (!isCompressed)
        return true;
    std::uint64_t const rows = std::uint64_t(height) * channels;
    ImageFile::Bytes const tables = file.read(sizeOfHead, rows * 8);
    if (tables.size() < rows * 8)
        return false;
    for (std::size_t row = 0; row < rows; ++row) {
        std::uint32_t const start = tables.big32(row * 4);
        std::uint32_t const size = tables.big32((rows + row) * 4);
        if (size == 0 || size > 2 * width)
            return false;
        ImageFile::Bytes const runs = file.read(start, size);
        if (runs.size() < size || !isSoundRow(runs, width))
            return false;
    }
    return true;
}

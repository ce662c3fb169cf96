#include "toolkit/RunLengthImage.h"

#include "toolkit/ImageFile.h"

#include <algorithm>

namespace
{

constexpr std::uint64_t sgiTables = 512;
constexpr std::uint64_t tgaHead = 18;

/// In pixels each way. The library reads no larger ones.
constexpr std::uint32_t largestTga = 4096;

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

bool RunLengthImage::isSoundSgi(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, sgiTables);
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
    ImageFile::Bytes const tables = file.read(sgiTables, rows * 8);
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

bool RunLengthImage::isSoundTga(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, tgaHead);
    if (head.size() < tgaHead)
        return true;
    bool const isCompressed = head.byte(2) == 10;
    if (!isCompressed)
        return true;
    std::uint64_t const colorMap = head.byte(1) == 1 ? head.little16(5) * (head.byte(7) >> 3) : 0;
    std::uint32_t const width = head.little16(12);
    std::uint32_t const height = head.little16(14);
    if (width > largestTga || height > largestTga)
        return true;
    std::uint64_t const pixels = std::uint64_t(width) * height;
    std::uint64_t const pixelSize = head.byte(16) >> 3;
    ImageFile::Bytes const packets = file.read(tgaHead + head.byte(0) + colorMap, pixels * (pixelSize + 1));
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

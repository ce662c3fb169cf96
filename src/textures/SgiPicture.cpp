#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"

#include <string>

namespace
{

/// Behind it stand the tables of the rows, or the rows.
constexpr std::size_t sizeOfHead = 512;

PictureProblem damaged(char const* words)
{
    return PictureProblem(std::string("is a damaged SGI picture (") + words + ")");
}

/// Where the values of a row go: every so many bytes.
struct Row {
    unsigned char* to;
    std::size_t step;
    std::size_t width;
};

/// Copies a row that isn't compressed.
void copyRow(PictureBytes const& file, std::size_t at, std::size_t bytesOfValue, Row row)
{
    if (!file.holds(at, row.width * bytesOfValue))
        throw damaged("it ends before its last row");
    for (std::size_t x = 0; x < row.width; ++x)
        row.to[x * row.step] = static_cast<unsigned char>(file.byte(at + x * bytesOfValue));
}

/// Reads a row in runs, each of which begins with a value that holds how many follow, and whether they
/// differ. A run of none ends the row, as does the end of its bytes.
/// @return whether it is a run of none
bool unpackRow(PictureBytes const& runs, std::size_t bytesOfValue, Row row)
{
    std::size_t x = 0;
    for (std::size_t at = 0; at < runs.size();) {
        unsigned const head = runs.byte(at + bytesOfValue - 1);
        std::size_t const count = head & 0x7fU;
        if (count == 0)
            return true;
        bool const isCopied = (head & 0x80U) != 0;
        at += bytesOfValue;
        if (x + count > row.width || !runs.holds(at, (isCopied ? count : 1) * bytesOfValue))
            throw damaged("the runs of a row don't make the row");
        for (std::size_t i = 0; i < count; ++i)
            row.to[(x + i) * row.step] =
                static_cast<unsigned char>(runs.byte(at + (isCopied ? i : 0) * bytesOfValue));
        x += count;
        at += (isCopied ? count : 1) * bytesOfValue;
    }
    return false;
}

} // namespace

DecodedPicture PictureFormats::decodeSgi(PictureBytes const& file)
{
    bool const isPacked = file.byte(2) == 1;
    std::size_t const bytesOfValue = file.byte(3);
    std::size_t const channels = file.big16(10);
    if (file.size() < sizeOfHead)
        throw damaged("it ends in its head");
    if (file.byte(2) > 1 || bytesOfValue < 1 || bytesOfValue > 2 || channels < 1 || channels > 4)
        throw damaged("its head says what can't be");
    DecodedPicture picture(file.big16(6), file.big16(8), channels, file);
    picture.isSafeForToolkit = bytesOfValue == 1;
    std::size_t const rows = picture.height() * channels;
    if (isPacked && !file.holds(sizeOfHead, rows * 8))
        throw damaged("it ends in the tables of its rows");
    for (std::size_t i = 0; i < rows; ++i) {
        Row const row{picture.row(i % picture.height()) + i / picture.height(), channels, picture.width()};
        if (!isPacked) {
            copyRow(file, sizeOfHead + i * row.width * bytesOfValue, bytesOfValue, row);
            continue;
        }
        std::size_t const start = file.big32(sizeOfHead + i * 4);
        std::size_t const size = file.big32(sizeOfHead + (rows + i) * 4);
        if (size == 0 || !file.holds(start, size))
            throw damaged("a row lies outside of the file");
        bool const hasEnd = unpackRow(PictureBytes(file.data() + start, size), bytesOfValue, row);
        // The toolkit's library has room for twice the width, and goes on to the end of the runs.
        picture.isSafeForToolkit &= size + (hasEnd ? 0 : 1) <= 2 * row.width;
    }
    return picture;
}

#include "support/MadePictures.h"
#include "support/PictureProblems.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"

#include <functional>
#include <gtest/gtest.h>
#include <tiffio.h>

namespace
{

/// The file of a picture of 9 by 6 pixels, after a change of its fields.
std::string changed(std::function<void(TIFF*)> const& change)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.tif";
    SmallPictures::writeTiff(path, 9, 6, 3);
    TIFF* const file = ::TIFFOpen(path.c_str(), "r+");
    change(file);
    ::TIFFRewriteDirectory(file);
    ::TIFFClose(file);
    return contentsOf(path);
}

} // namespace

TEST(TiffPicture, IsNoLargerThanItsFileExplains)
{
    std::string const large = changed([](TIFF* file) {
        ::TIFFSetField(file, TIFFTAG_IMAGEWIDTH, 30'000);
        ::TIFFSetField(file, TIFFTAG_IMAGELENGTH, 30'000);
    });
    EXPECT_EQ(pictureProblem(large), "can't hold a picture of its size");
}

TEST(TiffPicture, HasNoTilesLargerThanItsFileExplains)
{
    std::string const tiled = changed([](TIFF* file) {
        ::TIFFSetField(file, TIFFTAG_TILEWIDTH, 30'000);
        ::TIFFSetField(file, TIFFTAG_TILELENGTH, 30'000);
    });
    EXPECT_EQ(pictureProblem(tiled), "can't hold a picture of its size");
}

TEST(TiffPicture, InACompressionOfFewIsntRead)
{
    for (int const compression :
         {COMPRESSION_CCITTFAX4, COMPRESSION_OJPEG, COMPRESSION_THUNDERSCAN, COMPRESSION_NEXT,
          COMPRESSION_PIXARLOG, COMPRESSION_SGILOG, COMPRESSION_LZMA, COMPRESSION_WEBP}) {
        std::string const bytes =
            changed([&](TIFF* file) { ::TIFFSetField(file, TIFFTAG_COMPRESSION, compression); });
        EXPECT_EQ(pictureProblem(bytes),
                  "is a TIFF picture in compression " + std::to_string(compression) + ", which isn't read");
    }
}

TEST(TiffPicture, WithDamagedPixelsIsntTaken)
{
    std::string bytes = changed([](TIFF*) {});
    bytes.replace(8, 56, std::string(56, '\x80')); // the packets of the first rows, by some of nothing
    EXPECT_EQ(pictureProblem(bytes).find("is a damaged TIFF picture ("), 0U);
    EXPECT_EQ(pictureProblem(std::string("II*\0", 4)).find("is a damaged TIFF picture ("), 0U);
}

TEST(TiffPicture, IsGivenToTheToolkitOnlyAsItIsUsedToThem)
{
    for (MadePicture const& made : MadePictures::tiff()) {
        bool const isOther = made.toolkit == MadePicture::Toolkit::refuses || made.name == "grey_alpha.tif";
        EXPECT_EQ(decodePicture(made.bytes).isSafeForToolkit, !isOther) << made.name;
    }
}

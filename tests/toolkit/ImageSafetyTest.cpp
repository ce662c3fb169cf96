#include "toolkit/ImageSafety.h"

#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <tiffio.h>

namespace
{

constexpr char const* tooLarge = "can't hold a picture of its size";
constexpr char const* damaged = "is damaged";

/// What is said of a file of these bytes; empty if nothing.
std::string problemOf(std::string const& bytes, std::string const& name = "image")
{
    ScratchFolder const folder;
    char const* const problem = ImageSafety::problemOf(folder.write(name, bytes));
    return problem != nullptr ? problem : "";
}

std::string chunk(std::string const& type, std::string const& data)
{
    std::string const length = {'\0', '\0', '\0', static_cast<char>(data.size())};
    return length + type + data + "sum.";
}

/// A picture in the PNG format, without its pixels.
std::string png(std::string const& width, std::string const& height, char colors = 6)
{
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", width + height + '\x8' + colors + std::string(3, '\0')) +
           chunk("IEND", "");
}

std::string bytesOf(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A picture in the JPEG format.
std::string jpeg(bool isProgressive = false)
{
    ScratchFolder const folder;
    SmallPictures::writeJpeg(folder / "a.jpg", 9, 6, isProgressive);
    return bytesOf(folder / "a.jpg");
}

/// The same with another size, two bytes each.
std::string jpeg(std::string const& height, std::string const& width)
{
    std::string bytes = jpeg();
    return bytes.replace(bytes.find("\xff\xc0") + 5, 4, height + width);
}

/// A picture in the GIF format of one part, two bytes for each measure.
std::string gif(std::string const& width, std::string const& height,
                std::string const& left = std::string(2, '\0'))
{
    std::string const comment = "!\xfe\3abc" + std::string(1, '\0');
    std::string const pixels = "\2\1x" + std::string(1, '\0');
    return "GIF89a" + width + height + '\x80' + std::string(2, '\0') + "rgbRGB" + comment + ',' + left +
           std::string(2, '\0') + width + height + '\0' + pixels + ';';
}

/// A picture in the PIC format.
std::string pic(unsigned char side)
{
    std::string const length = {static_cast<char>(side), '\0'};
    return "\x19\x91" + length + length + std::string(794U + side * side, '\0');
}

std::string const large("\0\0\x75\x30", 4); // 30,000
std::string const usual("\0\0\4\0", 4);

/// A TIFF file in memory.
std::string tiffOf(int channels)
{
    ScratchFolder const folder;
    SmallPictures::writeTiff(folder / "a.tif", 9, 6, channels);
    return bytesOf(folder / "a.tif");
}

/// A picture in the SGI format of three rows of ten pixels, whose first row is made of these packets.
std::string sgiWithRow(std::string const& packets, std::size_t claimedSize)
{
    std::string bytes = SmallPictures::compressedSgi(10, 3, 1);
    std::size_t const start = bytes.size();
    constexpr std::size_t starts = 512;
    constexpr std::size_t sizes = starts + 3 * 4;
    bytes[starts + 2] = static_cast<char>(start >> 8);
    bytes[starts + 3] = static_cast<char>(start);
    for (int byte = 0; byte < 4; ++byte)
        bytes[sizes + 3 - byte] = static_cast<char>(claimedSize >> (8 * byte));
    return bytes + packets;
}

} // namespace

TEST(ImageSafety, PicturesThatTheirFileCanHoldAreRead)
{
    EXPECT_EQ(problemOf(SmallPictures::plainSgi(200)), "");
    EXPECT_EQ(problemOf(SmallPictures::compressedSgi(20, 5, 4)), "");
    EXPECT_EQ(problemOf(SmallPictures::compressedTga(20, 5), "a.tga"), "");
    for (int channels = 1; channels <= 4; ++channels)
        EXPECT_EQ(problemOf(tiffOf(channels)), "") << channels;
    EXPECT_EQ(problemOf(png(usual, usual)), "");
    EXPECT_EQ(problemOf(jpeg("\4\4", "\4\4")), "");
    EXPECT_EQ(problemOf(jpeg(true)), "");
    EXPECT_EQ(problemOf(gif("\4\4", "\4\4")), "");
    EXPECT_EQ(problemOf(pic(20)), "");
    EXPECT_EQ(problemOf(png(std::string("\0\0\x40\0", 4), large) + std::string(2'000'000, 'x')), "")
        << "of one colour";
    EXPECT_EQ(problemOf(png(large, large, 0) + std::string(800'000, 'x')), "") << "grey";
}

TEST(ImageSafety, SmallFilesOfLargePicturesArent)
{
    EXPECT_EQ(problemOf(png(large, large)), tooLarge);
    std::string const wide = jpeg("\x75\x30", "\x75\x30");
    EXPECT_EQ(problemOf(wide), tooLarge);
    std::string const comment("\xff\xff\xff\xfe\0\4ab", 8);
    EXPECT_EQ(problemOf(wide.substr(0, 2) + comment + "lost" + wide.substr(2)), tooLarge)
        << "behind another segment and bytes that are passed over";
    EXPECT_EQ(problemOf(gif("\xff\x7f", "\xff\x7f")), tooLarge);
    EXPECT_EQ(problemOf("\x19\x91\xff\x7f\xff\x7f"), tooLarge);
    std::string sgi = SmallPictures::plainSgi(2);
    sgi.replace(6, 4, "\xff\xff\xff\xff");
    EXPECT_EQ(problemOf(sgi), tooLarge);
}

TEST(ImageSafety, SizesOfTiffPicturesArentTakenOnTheirWord)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.tif";
    SmallPictures::writeTiff(path, 9, 6, 3);
    TIFF* const file = ::TIFFOpen(path.c_str(), "r+");
    ::TIFFSetField(file, TIFFTAG_IMAGEWIDTH, 60'000);
    ::TIFFSetField(file, TIFFTAG_IMAGELENGTH, 60'000);
    ::TIFFRewriteDirectory(file);
    ::TIFFClose(file);
    EXPECT_STREQ(ImageSafety::problemOf(path), tooLarge);
}

TEST(ImageSafety, WhatTheToolkitCantCountIsTooLargeForAnyFile)
{
    std::string const longest("\0\0\x7f\xff", 4);
    std::string const low("\0\0\1\0", 4);
    std::string const tooLong("\0\0\x80\0", 4);
    EXPECT_EQ(problemOf(png(longest, low)), "");
    EXPECT_EQ(problemOf(png(tooLong, low)), tooLarge) << "in a short";
    EXPECT_EQ(problemOf(png(low, tooLong)), tooLarge) << "in a short";
    ScratchFolder const folder;
    std::string const path = folder.write("a.png", png(large, large));
    std::filesystem::resize_file(path, 2'000'000'000U); // sparse
    EXPECT_STREQ(ImageSafety::problemOf(path), tooLarge) << "in an int";
}

TEST(ImageSafety, OtherAndBrokenFilesAreLeftToTheLibrary)
{
    for (std::string const& bytes :
         {std::string(), std::string("no image"), std::string("\x01\xda"), std::string("\xff\xd8"),
          std::string("\xff\xd8\xff\xe0\0\0", 6), std::string("\xff\xd8\xff\xc0"), std::string(100, '\xff'),
          std::string("II*\0", 4), std::string("MM\0*nothing", 11)})
        EXPECT_EQ(problemOf(bytes), "");
    EXPECT_EQ(problemOf("short", "a.tga"), "");
    EXPECT_EQ(ImageSafety::problemOf("none/such"), nullptr);
}

TEST(ImageSafety, ChunksOfPngPicturesLeadToTheEnd)
{
    std::string const whole = png(usual, usual);
    for (std::size_t const lost : {1, 4, 8, 11, 12, 13, 20})
        EXPECT_EQ(problemOf(whole.substr(0, whole.size() - lost)), damaged) << lost;
    std::string longer = whole;
    longer[8] = '\x7f'; // the length of the first chunk
    EXPECT_EQ(problemOf(longer), damaged);
    EXPECT_EQ(problemOf(whole + "more"), "");
}

TEST(ImageSafety, BlocksOfGifPicturesLeadToTheEnd)
{
    std::string const whole = gif("\4\4", "\4\4");
    for (std::size_t size = 4; size < whole.size(); ++size)
        EXPECT_EQ(problemOf(whole.substr(0, size)), damaged) << size;
    EXPECT_EQ(problemOf(whole + "more"), "");
}

TEST(ImageSafety, PartsOfGifPicturesLieInThem)
{
    EXPECT_EQ(problemOf(gif("\4\4", "\4\4", std::string("\1\0", 2))), damaged);
}

TEST(ImageSafety, PicPicturesAreAsLongAsTheirPixels)
{
    std::string const whole = pic(20);
    EXPECT_EQ(problemOf(whole.substr(0, whole.size() - 1)), damaged);
    EXPECT_EQ(problemOf("\x19\x91"), damaged);
}

TEST(ImageSafety, JpegPicturesComeInNoMoreScansThanNeeded)
{
    std::string const whole = jpeg(true);
    std::size_t const scan = whole.rfind("\xff\xda");
    std::string const last = whole.substr(scan, whole.size() - 2 - scan);
    std::string many = whole.substr(0, whole.size() - 2);
    for (int i = 0; i < 80; ++i)
        many += last;
    EXPECT_EQ(problemOf(many + "\xff\xd9"), "");
    for (int i = 0; i < 20; ++i)
        many += last;
    EXPECT_EQ(problemOf(many + "\xff\xd9"), damaged);
}

TEST(ImageSafety, SgiPicturesHaveOneToFourChannels)
{
    std::string sgi = SmallPictures::plainSgi(2);
    for (char const channels : {'\0', '\5', '\x7f'}) {
        sgi[11] = channels;
        EXPECT_EQ(problemOf(sgi), damaged) << int(channels);
    }
    EXPECT_EQ(problemOf(SmallPictures::compressedSgi(10, 3, 5)), damaged);
}

TEST(ImageSafety, SgiPicturesHavePixels)
{
    for (std::size_t const size : {6, 8}) {
        std::string sgi = SmallPictures::plainSgi(2);
        sgi[size + 1] = 0;
        EXPECT_EQ(problemOf(sgi), damaged);
    }
}

TEST(ImageSafety, RowsOfSgiPicturesStayInTheirBuffer)
{
    std::string const whole = "\x0a\x7f" + std::string(1, '\0');
    EXPECT_EQ(problemOf(sgiWithRow(whole, whole.size())), "");
    EXPECT_EQ(problemOf(sgiWithRow("\x0a\x7f", 2)), "") << "without an end";
    EXPECT_EQ(problemOf(sgiWithRow(whole, 0x80000003)), damaged) << "less than nothing, to the library";
    EXPECT_EQ(problemOf(sgiWithRow(std::string(30, '\0'), 21)), damaged) << "longer than twice the width";
    EXPECT_EQ(problemOf(sgiWithRow(whole, 0)), damaged);
    EXPECT_EQ(problemOf(sgiWithRow(whole, whole.size() + 1)), damaged) << "beyond the file";
    EXPECT_EQ(problemOf(sgiWithRow(std::string("\x0b\x7f\0", 3), 3)), damaged) << "a run of eleven";
    EXPECT_EQ(problemOf(sgiWithRow("\x84\1\2", 3)), damaged) << "four pixels of two bytes";
    std::string const full =
        "\x82\1\2" + std::string("\1\x7f\1\x7f\1\x7f\1\x7f\1\x7f\1\x7f\1\x7f\1\x7f") + '\x80';
    EXPECT_EQ(problemOf(sgiWithRow(full, full.size())), "") << "twice the width, with an end";
    std::string endless = full;
    endless.replace(0, 3, "\x81\1");
    endless.replace(endless.size() - 1, 1, "\1\x7f");
    EXPECT_EQ(problemOf(sgiWithRow(endless, endless.size())), damaged) << "twice the width, without an end";
}

TEST(ImageSafety, TablesOfSgiPicturesAreWhole)
{
    EXPECT_EQ(problemOf(SmallPictures::compressedSgi(10, 3, 1).substr(0, 520)), damaged);
}

TEST(ImageSafety, PacketsOfTgaPicturesDontEndBeforeThePicture)
{
    std::string const tga = SmallPictures::compressedTga(20, 5);
    for (std::size_t const lost : {1, 2, 3, 40})
        EXPECT_EQ(problemOf(tga.substr(0, tga.size() - lost), "a.tga"), damaged) << lost;
    EXPECT_EQ(problemOf(tga.substr(0, tga.size() - 1), "a.TGA"), damaged);
    EXPECT_EQ(problemOf(tga.substr(0, tga.size() - 1), "a.rgb"), "")
        << "which the library doesn't take for one";
    EXPECT_EQ(problemOf(tga + "more", "a.tga"), "");
}

TEST(ImageSafety, TgaPicturesTooLargeForTheLibraryArentLookedAt)
{
    std::string tga = SmallPictures::compressedTga(20, 5);
    tga[13] = 0x11;
    EXPECT_EQ(problemOf(tga, "a.tga"), "");
}

TEST(ImageSafety, TiffPicturesWithTransparencyAreWhole)
{
    for (int channels = 1; channels <= 4; ++channels) {
        std::string bytes = tiffOf(channels);
        bytes.replace(8, 40, std::string(40, '\x80')); // the packets of the first rows
        EXPECT_EQ(problemOf(bytes), channels == 4 ? damaged : "") << channels;
    }
}

TEST(ImageSafety, TiffPicturesInPlanesHaveThreeOfThem)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.tif";
    SmallPictures::writeTiff(path, 9, 6, 2);
    TIFF* const file = ::TIFFOpen(path.c_str(), "r+");
    ::TIFFSetField(file, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    ::TIFFSetField(file, TIFFTAG_PLANARCONFIG, PLANARCONFIG_SEPARATE);
    ::TIFFRewriteDirectory(file);
    ::TIFFClose(file);
    EXPECT_STREQ(ImageSafety::problemOf(path), damaged);
}

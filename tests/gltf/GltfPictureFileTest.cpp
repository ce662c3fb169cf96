#include "gltf/GltfPictureFile.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace
{

std::string big16(unsigned number)
{
    return {static_cast<char>(number >> 8 & 0xff), static_cast<char>(number & 0xff)};
}

std::string big32(std::uint32_t number)
{
    return big16(number >> 16) + big16(number & 0xffff);
}

std::string little16(unsigned number)
{
    std::string const text = big16(number);
    return {text[1], text[0]};
}

/// A picture of 40 by 30 pixels.
PicturePixels const& pixels()
{
    static PicturePixels const made = [] {
        PicturePixels picture;
        picture.width = 40;
        picture.height = 30;
        return picture;
    }();
    return made;
}

bool isPlainJpeg(std::string const& text)
{
    return GltfPictureFile::isPlainJpeg({reinterpret_cast<unsigned char const*>(text.data()), text.size()},
                                        pixels());
}

bool isPlainPng(std::string const& text)
{
    return GltfPictureFile::isPlainPng({reinterpret_cast<unsigned char const*>(text.data()), text.size()},
                                       pixels());
}

std::string segment(int marker, std::string const& content)
{
    return std::string("\xff") + static_cast<char>(marker) +
           big16(static_cast<unsigned>(content.size()) + 2) + content;
}

std::string frame(int marker = 0xc0, int bits = 8, unsigned width = 40, unsigned height = 30,
                  std::string const& components = std::string("\1\2\3", 3))
{
    std::string content = std::string(1, static_cast<char>(bits)) + big16(height) + big16(width) +
                          static_cast<char>(components.size());
    for (char const component : components)
        content += std::string{component, '\x11', '\0'};
    return segment(marker, content);
}

std::string const start = "\xff\xd8", scan = segment(0xda, std::string(10, '\0'));

/// A JPEG file with some segments before its frame.
std::string jpeg(std::string const& segments)
{
    return start + segments + frame() + scan;
}

/// What a camera says of how it was held, after another entry.
std::string exif(bool isBig, unsigned orientation, unsigned entries = 2)
{
    auto const word = [&](unsigned number) { return isBig ? big16(number) : little16(number); };
    auto const longWord = [&](unsigned number) {
        return isBig ? word(0) + word(number) : word(number) + word(0);
    };
    return segment(0xe1, std::string("Exif\0\0", 6) + (isBig ? "MM" : "II") + word(42) + longWord(8) +
                             word(entries) + word(0x100) + word(3) + longWord(1) + word(6) + word(0) +
                             word(0x112) + word(3) + longWord(1) + word(orientation) + word(0) + longWord(0));
}

std::string chunk(std::string const& kind, std::string const& content)
{
    return big32(static_cast<std::uint32_t>(content.size())) + kind + content + "sums";
}

std::string const pngBegin = "\x89PNG\r\n\x1a\n", pixelData = chunk("IDAT", "0123456789");

/// A PNG file with some chunks before its pixels.
std::string png(std::string const& chunks, unsigned width = 40, unsigned height = 30)
{
    return pngBegin + chunk("IHDR", big32(width) + big32(height) + std::string("\10\2\0\0\0", 5)) + chunks +
           pixelData;
}

std::string usualColors()
{
    std::string text;
    for (std::uint32_t const number : {31270, 32900, 64000, 33000, 30000, 60000, 15000, 6000})
        text += big32(number);
    return text;
}

} // namespace

TEST(GltfPictureFile, takesJpegInGreyOrYCbCrOfEightBits)
{
    EXPECT_TRUE(isPlainJpeg(jpeg("")));
    for (int const marker : {0xc0, 0xc1, 0xc2})
        EXPECT_TRUE(isPlainJpeg(start + frame(marker) + scan)) << marker;
    for (int const marker : {0xc3, 0xc5, 0xc6, 0xc7, 0xc9, 0xca, 0xcb, 0xcd, 0xce, 0xcf})
        EXPECT_FALSE(isPlainJpeg(start + frame(marker) + frame() + scan)) << marker;
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xc4, "tables") + segment(0xcc, "codes") + segment(0xdb, "steps"))));
    EXPECT_TRUE(isPlainJpeg(start + frame(0xc0, 8, 40, 30, "\1") + scan)) << "grey";
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 8, 40, 30, "\1\2") + scan));
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 8, 40, 30, "\1\2\3\4") + scan));
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 8, 40, 30, "RGB") + scan));
    EXPECT_TRUE(isPlainJpeg(start + frame(0xc0, 8, 40, 30, "R") + scan)) << "one component is grey";
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 12) + scan));
}

TEST(GltfPictureFile, takesJpegOfTheSizeOfThePixels)
{
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 8, 41, 30) + scan));
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 8, 40, 31) + scan));
    EXPECT_FALSE(isPlainJpeg(start + frame(0xc0, 8, 30, 40) + scan));
}

TEST(GltfPictureFile, takesJpegWithOneFrameBeforeItsScan)
{
    EXPECT_FALSE(isPlainJpeg(start + scan)) << "no frame";
    EXPECT_FALSE(isPlainJpeg(start + scan + frame() + scan)) << "it comes too late";
    EXPECT_FALSE(isPlainJpeg(start + frame())) << "no scan";
    EXPECT_FALSE(isPlainJpeg(start + frame() + frame() + scan));
    EXPECT_FALSE(isPlainJpeg(frame() + scan)) << "no beginning";
    EXPECT_FALSE(isPlainJpeg(start + frame() + "rubbish" + scan));
    EXPECT_FALSE(isPlainJpeg(""));
}

TEST(GltfPictureFile, passesOverMarksThatFillAndMarkersWithoutLength)
{
    EXPECT_TRUE(isPlainJpeg(jpeg("\xff\xff\xff")));
    for (char const* const lone : {"\xff\x01", "\xff\xd0", "\xff\xd7", "\xff\xd8"})
        EXPECT_TRUE(isPlainJpeg(jpeg(lone)));
    EXPECT_FALSE(isPlainJpeg(jpeg("\xff\xcf"))) << "the next marker is its length";
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xe0, "JFIF")))) << "other segments have a length";
    EXPECT_TRUE(isPlainJpeg(jpeg(std::string("\xff\xfe\0\0", 4)))) << "at least that of itself";
}

TEST(GltfPictureFile, takesNoJpegThatIsTurned)
{
    for (bool const isBig : {true, false}) {
        EXPECT_TRUE(isPlainJpeg(jpeg(exif(isBig, 1)))) << isBig;
        for (unsigned const turned : {0U, 2U, 3U, 6U, 8U})
            EXPECT_FALSE(isPlainJpeg(jpeg(exif(isBig, turned)))) << isBig << turned;
        EXPECT_TRUE(isPlainJpeg(jpeg(exif(isBig, 6, 1)))) << "the directory ends before it";
        EXPECT_FALSE(isPlainJpeg(jpeg(exif(isBig, 6, 9999)))) << "it stands before the end that is missing";
        EXPECT_TRUE(isPlainJpeg(jpeg(exif(isBig, 1, 9999))));
    }
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xe1, "http://of another kind"))));
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xe3, exif(true, 6).substr(4))))) << "a segment of another kind";
    std::string cut = exif(true, 6).substr(4);
    cut.resize(cut.size() - 5);
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xe1, cut)))) << "the entry reaches beyond the segment";
}

TEST(GltfPictureFile, takesNoJpegWithColoursOfItsOwn)
{
    EXPECT_FALSE(isPlainJpeg(jpeg(segment(0xe2, std::string("ICC_PROFILE\0", 12)))));
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xe2, "MPF"))));
    auto const adobe = [](char transform) {
        return segment(0xee, "Adobe" + std::string("\0d\0\0\0\0", 6) + transform);
    };
    EXPECT_FALSE(isPlainJpeg(jpeg(adobe('\0')))) << "its components are red, green and blue";
    EXPECT_TRUE(isPlainJpeg(jpeg(adobe('\1'))));
    EXPECT_TRUE(isPlainJpeg(jpeg(segment(0xee, std::string(12, '\0')))));
}

TEST(GltfPictureFile, takesPngOfTheSizeOfThePixels)
{
    EXPECT_TRUE(isPlainPng(png("")));
    EXPECT_FALSE(isPlainPng(png("", 41)));
    EXPECT_FALSE(isPlainPng(png("", 40, 31)));
    EXPECT_FALSE(isPlainPng(png("").substr(1)));
    EXPECT_FALSE(isPlainPng(pngBegin + pixelData));
    std::string const whole = png("");
    EXPECT_FALSE(isPlainPng(whole.substr(0, whole.size() - pixelData.size()))) << "there are no pixels";
}

TEST(GltfPictureFile, takesPngInTheUsualColours)
{
    std::string const usualGamma = chunk("gAMA", big32(45455)), otherGamma = chunk("gAMA", big32(100000));
    std::string const same = chunk("sRGB", std::string(1, '\0'));
    EXPECT_TRUE(isPlainPng(png(usualGamma)));
    EXPECT_FALSE(isPlainPng(png(otherGamma)));
    EXPECT_TRUE(isPlainPng(png(same + otherGamma))) << "what says that counts";
    EXPECT_TRUE(isPlainPng(png(otherGamma + same)));
    EXPECT_TRUE(isPlainPng(png(chunk("cHRM", usualColors()))));
    for (std::size_t i = 0; i < 8; ++i) {
        std::string colors = usualColors();
        colors[4 * i + 3] ^= 1;
        EXPECT_FALSE(isPlainPng(png(chunk("cHRM", colors)))) << i;
        EXPECT_FALSE(isPlainPng(png(chunk("cHRM", colors) + usualGamma))) << i;
    }
    EXPECT_FALSE(isPlainPng(png(otherGamma + chunk("cHRM", usualColors()))));
    EXPECT_FALSE(isPlainPng(png(chunk("iCCP", "profile"))));
}

TEST(GltfPictureFile, takesNoPngThatMovesIsTurnedOrHasLongPixels)
{
    EXPECT_FALSE(isPlainPng(png(chunk("acTL", big32(2) + big32(0)))));
    EXPECT_FALSE(isPlainPng(png(chunk("eXIf", "MM"))));
    EXPECT_FALSE(isPlainPng(png(chunk("pHYs", big32(100) + big32(200) + "1"))));
    EXPECT_TRUE(isPlainPng(png(chunk("pHYs", big32(100) + big32(100) + "1"))));
    EXPECT_TRUE(isPlainPng(png(chunk("tEXt", "eXIf and acTL stand in a text alone"))));
    EXPECT_TRUE(isPlainPng(png("") + chunk("acTL", big32(2) + big32(0)))) << "behind the pixels";
}

#include "toolkit/ImageClaim.h"

#include "support/ScratchFolder.h"
#include "support/SgiImage.h"

#include <gtest/gtest.h>

namespace
{

bool isCredible(std::string const& bytes)
{
    ScratchFolder const folder;
    return ImageClaim::isCredible(folder.write("image", bytes));
}

/// The head of a picture in the PNG format, without its pixels.
std::string png(std::string const& width, std::string const& height)
{
    return "\x89PNG\r\n\x1a\n" + std::string("\0\0\0\x0dIHDR", 8) + width + height + std::string(9, '\0');
}

/// A JPEG file of some segments, without the picture.
std::string jpeg(std::string const& segments)
{
    return "\xff\xd8" + segments;
}

/// The segment that holds the size, two bytes each.
std::string frame(std::string const& height, std::string const& width)
{
    return std::string("\xff\xc0\0\x11\x08", 5) + height + width + std::string(10, '\0');
}

std::string const large("\0\0\x75\x30", 4); // 30,000
std::string const usual("\0\0\4\0", 4);

} // namespace

TEST(ImageClaim, BelievesPicturesThatTheirFileCanHold)
{
    EXPECT_TRUE(isCredible(sgiImage(200)));
    EXPECT_TRUE(isCredible(png(usual, usual)));
    EXPECT_TRUE(isCredible(jpeg(frame("\4\4", "\4\4"))));
    EXPECT_TRUE(isCredible(png(large, large) + std::string(4'000'000, 'x'))) << "of one colour";
}

TEST(ImageClaim, DoesntBelieveSmallFilesOfLargePictures)
{
    EXPECT_FALSE(isCredible(png(large, large)));
    EXPECT_FALSE(isCredible(jpeg(frame("\x75\x30", "\x75\x30"))));
    EXPECT_FALSE(isCredible(jpeg(std::string("\xff\xe0\0\4ab", 6) + frame("\x75\x30", "\x75\x30"))))
        << "behind another segment";
    std::string sgi = sgiImage(2);
    sgi.replace(6, 4, "\xff\xff\xff\xff");
    EXPECT_FALSE(isCredible(sgi));
}

TEST(ImageClaim, LeavesOtherAndBrokenFilesToTheLibrary)
{
    for (std::string const& bytes :
         {std::string(), std::string("no image"), std::string("\x89PNG"), std::string("\x01\xda"), jpeg(""),
          jpeg(std::string("\xff\xe0\0\0", 4)), jpeg("\xff\xc0"), std::string(100, '\xff')})
        EXPECT_TRUE(isCredible(bytes));
    EXPECT_TRUE(ImageClaim::isCredible("none/such"));
}

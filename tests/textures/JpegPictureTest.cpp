#include "support/MadePictures.h"
#include "support/PictureProblems.h"

#include <gtest/gtest.h>

namespace
{

/// One of those that the encoder makes.
std::string made(std::string const& name)
{
    for (MadePicture const& picture : MadePictures::jpeg())
        if (picture.name == name)
            return picture.bytes;
    return {};
}

std::string withSize(std::string bytes, std::string const& frame, std::string const& heightAndWidth)
{
    return bytes.replace(bytes.find(frame) + 5, 4, heightAndWidth);
}

} // namespace

TEST(JpegPicture, ComesInNoMoreScansThanAnybodyMakes)
{
    std::string const whole = made("progressive.jpg");
    std::size_t const scan = whole.rfind("\xff\xda");
    std::string const last = whole.substr(scan, whole.size() - 2 - scan);
    std::string many = whole.substr(0, whole.size() - 2);
    for (int i = 0; i < 80; ++i)
        many += last;
    EXPECT_EQ(pictureProblem(many + "\xff\xd9"), "");
    for (int i = 0; i < 20; ++i)
        many += last;
    EXPECT_EQ(pictureProblem(many + "\xff\xd9"),
              "is a damaged JPEG picture (it comes in more parts than anybody makes)");
}

TEST(JpegPicture, IsNoLargerThanItsFileExplains)
{
    constexpr char const* tooLarge = "can't hold a picture of its size";
    std::string const plain = made("color.jpg");
    std::string const progressive = made("progressive.jpg");
    EXPECT_EQ(pictureProblem(withSize(plain, "\xff\xc0", "\x75\x30\x75\x30")), tooLarge);
    EXPECT_EQ(pictureProblem(withSize(progressive, "\xff\xc2", "\x75\x30\x75\x30")), tooLarge);
    std::string const middling("\x10\x00\x10\x00", 4); // 48 MB of pixels, and twice as much for all scans
    EXPECT_EQ(pictureProblem(withSize(progressive, "\xff\xc2", middling)), tooLarge);
}

TEST(JpegPicture, IsTakenAsFarAsItGoes)
{
    std::string const whole = made("restarts.jpg");
    EXPECT_EQ(pictureProblem(whole.substr(0, whole.size() - 2)), "") << "without its end";
    std::size_t const scan = whole.find("\xff\xda");
    EXPECT_EQ(pictureProblem(whole.substr(0, scan + 20)), "");
    EXPECT_EQ(pictureProblem(whole.substr(0, scan)).find("is a damaged JPEG picture ("), 0U)
        << "nothing of it";
    EXPECT_EQ(pictureProblem("\xff\xd8\xff"),
              "is a damaged JPEG picture (JPEG datastream contains no image)");
}

TEST(JpegPicture, WithDamageEverywhereIsntTaken)
{
    std::string bytes = made("restarts.jpg");
    bytes = withSize(bytes, "\xff\xc0", std::string("\x04\x00\x04\x00", 4));
    bytes.resize(bytes.find("\xff\xda") + 14);
    for (int i = 0; i < 30'000; ++i)
        bytes += {'\xff', static_cast<char>(0xd0 + (i * 3 & 7))}; // restarts out of their order
    EXPECT_EQ(pictureProblem(bytes), "is a damaged JPEG picture (it is damaged in too many places)");
}

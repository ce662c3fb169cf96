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
    int scans = 0;
    for (std::size_t at = whole.find("\xff\xda"); at != std::string::npos;
         at = whole.find("\xff\xda", at + 2))
        ++scans;
    for (; scans < 100; ++scans)
        many += last;
    EXPECT_EQ(pictureProblem(many + "\xff\xd9"), "");
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

/// The lower half of such a picture is grey, and nobody knew why.
TEST(JpegPicture, SaysWhatIsWrongWithWhatIsTakenInPart)
{
    std::string const whole = made("restarts.jpg");
    EXPECT_EQ(decodePicture(whole).damage, "");
    Picture const cut = decodePicture(whole.substr(0, whole.find("\xff\xda") + 20));
    EXPECT_NE(cut.pixels, nullptr);
    EXPECT_EQ(cut.damage, "is a damaged JPEG picture (Premature end of JPEG file)");
    EXPECT_EQ(decodePicture(whole.substr(0, whole.size() - 2)).damage, cut.damage) << "without its end";
}

TEST(JpegPicture, SaysNothingOfBytesThatStandBetweenItsParts)
{
    std::string bytes = made("restarts.jpg");
    bytes.insert(bytes.find("\xff\xda"), "some more");
    Picture const picture = decodePicture(bytes);
    EXPECT_NE(picture.pixels, nullptr) << picture.problem;
    EXPECT_EQ(picture.damage, "");
}

TEST(JpegPicture, SaysTheFirstThingThatIsWrong)
{
    std::string bytes = made("restarts.jpg");
    bytes[bytes.find("\xff\xd1") + 1] = '\xd5'; // a restart out of their order
    bytes.resize(bytes.size() - 2);
    std::string const damage = decodePicture(bytes).damage;
    EXPECT_NE(damage.find("found marker 0xd5 instead of RST1"), std::string::npos) << damage;
}

TEST(JpegPicture, IsTakenWithTenThousandFaultsAndNoMore)
{
    std::string const whole = made("restarts.jpg");
    std::size_t const scan = whole.find("\xff\xda");
    std::string faults; // a byte that belongs to nothing, and an empty comment
    for (int i = 0; i < 10'000; ++i)
        faults += std::string("x\xff\xfe\0\2", 5);
    EXPECT_EQ(pictureProblem(whole.substr(0, scan) + faults + whole.substr(scan)), "");
    EXPECT_EQ(pictureProblem(whole.substr(0, scan) + faults + 'x' + whole.substr(scan)),
              "is a damaged JPEG picture (it is damaged in too many places)");
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

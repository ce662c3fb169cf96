#include "textures/DecodedPicture.h"

#include "textures/PictureBytes.h"

#include <gtest/gtest.h>

namespace
{

PictureBytes const file(nullptr, 0);

} // namespace

TEST(DecodedPicture, takesAsMuchAsItsFileExplainsAndNoByteMore)
{
    std::uint64_t const most = DecodedPicture::mostBytes(file);
    std::uint64_t const side = 1024;
    ASSERT_EQ(most % side, 0U);
    EXPECT_NO_THROW(DecodedPicture::checkSize(side, 1, most / side, file));
    EXPECT_THROW(DecodedPicture::checkSize(side, 1, most / side + 1, file), PictureProblem);
}

TEST(DecodedPicture, hasPixels)
{
    EXPECT_THROW(DecodedPicture::checkSize(0, 1, 1, file), PictureProblem);
    EXPECT_THROW(DecodedPicture::checkSize(1, 0, 1, file), PictureProblem);
    EXPECT_THROW(DecodedPicture::checkSize(1, 1, 0, file), PictureProblem);
    EXPECT_NO_THROW(DecodedPicture::checkSize(1, 1, 1, file));
}

TEST(DecodedPicture, hasItsRowsFromBelow)
{
    DecodedPicture picture(2, 3, 4, file);
    EXPECT_EQ(picture.width(), 2U);
    EXPECT_EQ(picture.height(), 3U);
    EXPECT_EQ(picture.rowSize(), 8U);
    EXPECT_EQ(picture.pixels.bytes, std::vector<unsigned char>(24));
    EXPECT_EQ(picture.row(0), picture.pixels.bytes.data());
    EXPECT_EQ(picture.row(2), picture.pixels.bytes.data() + 16);
    EXPECT_EQ(picture.rowFromTop(0), picture.row(2));
    EXPECT_EQ(picture.rowFromTop(2), picture.row(0));
    EXPECT_TRUE(picture.isSafeForToolkit);
}

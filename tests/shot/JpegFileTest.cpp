#include "support/JpegFile.h"

#include "support/ScratchFolder.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <jpeglib.h>
#include <memory>

namespace
{

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

/// What is in a JPEG file, in three channels.
Picture read(std::string const& path)
{
    File const file(std::fopen(path.c_str(), "rb"), std::fclose);
    jpeg_error_mgr errors{};
    jpeg_decompress_struct state{};
    state.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&state);
    jpeg_stdio_src(&state, file.get());
    jpeg_read_header(&state, TRUE);
    state.out_color_space = JCS_RGB;
    jpeg_start_decompress(&state);
    Picture picture(static_cast<int>(state.output_width), static_cast<int>(state.output_height));
    while (state.output_scanline < state.output_height) {
        JSAMPROW rows[] = {picture.at(0, static_cast<int>(state.output_scanline))};
        jpeg_read_scanlines(&state, rows, 1);
    }
    jpeg_finish_decompress(&state);
    jpeg_destroy_decompress(&state);
    return picture;
}

/// Red on the left, blue on the right.
Picture halves(int channels)
{
    Picture picture(64, 32, channels);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            picture.at(x, y)[x < 32 ? 0 : 2] = 200;
    return picture;
}

} // namespace

TEST(JpegFile, holdsThePicture)
{
    ScratchFolder const folder;
    for (int const channels : {3, 4}) {
        {
            File const file(std::fopen((folder / "a.jpg").c_str(), "wb"), std::fclose);
            EXPECT_EQ(writeJpeg(halves(channels), file.get()), "");
        }
        Picture const picture = read(folder / "a.jpg");
        ASSERT_EQ(picture.width, 64);
        ASSERT_EQ(picture.height, 32);
        EXPECT_NEAR(picture.at(8, 8)[0], 200, 6);
        EXPECT_NEAR(picture.at(8, 8)[2], 0, 6);
        EXPECT_NEAR(picture.at(56, 24)[2], 200, 6);
        EXPECT_NEAR(picture.at(56, 24)[0], 0, 6);
    }
}

TEST(JpegFile, saysWhyAPictureCanNotBeWritten)
{
    ScratchFolder const folder;
    File const file(std::fopen((folder / "a.jpg").c_str(), "wb"), std::fclose);
    EXPECT_NE(writeJpeg(Picture(70000, 1), file.get()), "");
}

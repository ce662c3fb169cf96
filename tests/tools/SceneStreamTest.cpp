#include "iv/SceneStream.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

namespace
{

std::string unpacked(std::string const& file)
{
    gzFile const input = ::gzopen(file.c_str(), "rb");
    std::string text(1'000'000, '\0');
    int const count = ::gzread(input, text.data(), static_cast<unsigned>(text.size()));
    ::gzclose(input);
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

/// Numbers that compress, but not to nothing.
std::string numbers()
{
    std::string text;
    for (int i = 0; i < 50'000; ++i)
        text += std::to_string(i * 7919) + " ";
    return text;
}

} // namespace

TEST(SceneStream, writesWhatGzipUnpacks)
{
    ScratchFolder const folder;
    FILE* const target = std::fopen((folder / "packed").c_str(), "wb");
    SceneStream stream(target, true);
    std::fputs(numbers().c_str(), stream.stream());
    stream.finish();
    EXPECT_EQ(std::fclose(target), 0);
    EXPECT_EQ(unpacked(folder / "packed"), numbers());
    EXPECT_LT(contentsOf(folder / "packed").size(), numbers().size() / 2);
}

TEST(SceneStream, knowsItsPositionInFrontOfAPipe)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    FILE* const target = ::fdopen(ends[1], "wb");
    {
        SceneStream stream(target, false);
        std::fputs("abc", stream.stream());
        EXPECT_EQ(std::ftell(stream.stream()), 3);
        std::fflush(stream.stream());
        EXPECT_EQ(std::ftell(stream.stream()), 3);
        stream.finish();
    }
    std::fclose(target);
    char text[4] = {};
    EXPECT_EQ(::read(ends[0], text, 3), 3);
    EXPECT_STREQ(text, "abc");
    ::close(ends[0]);
}

TEST(SceneStream, leavesTheErrorWithItsTarget)
{
    for (bool const compresses : {false, true}) {
        FILE* const full = std::fopen("/dev/full", "wb");
        {
            SceneStream stream(full, compresses);
            std::string const text = numbers();
            EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), stream.stream()), text.size());
            stream.finish();
        }
        EXPECT_TRUE(std::ferror(full) != 0 || std::fflush(full) != 0);
        std::fclose(full);
    }
}

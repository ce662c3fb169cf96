#include "support/MadePictures.h"
#include "support/PictureProblems.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace
{

std::string const signature = "\x89PNG\r\n\x1a\n";

/// A chunk with its sum.
std::string chunk(std::string const& type, std::string const& data)
{
    std::string const summed = type + data;
    auto const sum = ::crc32(0, reinterpret_cast<unsigned char const*>(summed.data()), uInt(summed.size()));
    return MadePictures::big32(data.size()) + summed + MadePictures::big32(sum);
}

std::string head(std::size_t width, std::size_t height, char depth, char type)
{
    return chunk("IHDR", MadePictures::big32(width) + MadePictures::big32(height) + depth + type +
                             std::string(3, '\0'));
}

bool isDamaged(std::string const& bytes)
{
    return pictureProblem(bytes).find("is a damaged PNG picture (") == 0;
}

std::string const made = MadePictures::png()[3].bytes; // plain grey

} // namespace

TEST(PngPicture, WithAChunkBeforeItsHeadIsDamaged)
{
    std::string const rest = made.substr(signature.size());
    for (char const* const type : {"tEXt", "gAMA", "PLTE", "tRNS", "IDAT", "prVt"})
        EXPECT_TRUE(isDamaged(signature + chunk(type, std::string(1200, 'x')) + rest)) << type;
}

TEST(PngPicture, WithoutItsEndIsDamaged)
{
    for (std::size_t size = signature.size(); size < made.size(); ++size)
        EXPECT_TRUE(isDamaged(made.substr(0, size))) << size;
    EXPECT_EQ(pictureProblem(made + "more"), "");
}

TEST(PngPicture, SaysWhatIsWrongInTheWordsOfTheLibrary)
{
    std::string changed = made;
    ++changed[16 + 3]; // the width
    EXPECT_EQ(pictureProblem(changed), "is a damaged PNG picture (IHDR: CRC error)");
    EXPECT_EQ(pictureProblem(made.substr(0, 40)), "is a damaged PNG picture (it ends before its end)");
}

TEST(PngPicture, IsNoLargerThanItsFileExplains)
{
    std::string const end = chunk("IDAT", "x") + chunk("IEND", "");
    EXPECT_EQ(pictureProblem(signature + head(30'000, 30'000, 8, 6) + end),
              "can't hold a picture of its size");
    EXPECT_TRUE(isDamaged(signature + head(32'768, 1, 8, 6) + end)) << "beyond what the toolkit can count";
    EXPECT_TRUE(isDamaged(signature + head(1000, 1000, 8, 6) + end));
}

TEST(PngPicture, IsReadPastTextAndProfilesOfAnySize)
{
    std::string const head = made.substr(0, signature.size() + 25);
    std::string const rest = made.substr(head.size());
    for (char const* const type :
         {"iCCP", "tEXt", "zTXt", "iTXt", "sPLT", "eXIf", "hIST", "pCAL", "sCAL", "tIME", "oFFs", "prVt"})
        EXPECT_EQ(pictureProblem(head + chunk(type, std::string(3'000'000, 'x')) + rest), "") << type;
}

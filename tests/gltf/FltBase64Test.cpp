#include "gltf/FltBase64.h"

#include <gtest/gtest.h>

namespace
{

std::string lettersOf(std::string_view bytes)
{
    std::string text = "before:";
    FltBase64::append(text, bytes);
    return text.substr(7);
}

} // namespace

TEST(FltBase64, fillsTheLastGroup)
{
    EXPECT_EQ(lettersOf(""), "");
    EXPECT_EQ(lettersOf("f"), "Zg==");
    EXPECT_EQ(lettersOf("fo"), "Zm8=");
    EXPECT_EQ(lettersOf("foo"), "Zm9v");
    EXPECT_EQ(lettersOf("foobar"), "Zm9vYmFy");
}

TEST(FltBase64, takesAnyBytes)
{
    EXPECT_EQ(lettersOf(std::string_view("\xff\xff\xff\xfb\xf0\x00", 6)), "////+/AA");
}

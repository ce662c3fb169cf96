#include "shot/Backdrop.h"

#include <gtest/gtest.h>

TEST(Backdrop, takesColoursByNumber)
{
    Backdrop const backdrop = Backdrop::fromText("#ff8000").value();
    EXPECT_EQ(backdrop.top, SbColor(1, 128 / 255.0f, 0));
    EXPECT_EQ(backdrop.bottom, backdrop.top);
    EXPECT_EQ(Backdrop::fromText("#FF8000")->top, backdrop.top);
}

TEST(Backdrop, takesColoursByName)
{
    EXPECT_EQ(Backdrop::fromText("white")->top, SbColor(1, 1, 1));
    EXPECT_EQ(Backdrop::fromText("gray")->top, Backdrop::fromText("grey")->top);
    EXPECT_EQ(Backdrop::fromText("sky")->top, Backdrop::sky().top);
}

TEST(Backdrop, takesTwoColoursFromTheTop)
{
    Backdrop const backdrop = Backdrop::fromText("black,#ffffff").value();
    EXPECT_EQ(backdrop.top, SbColor(0, 0, 0));
    EXPECT_EQ(backdrop.bottom, SbColor(1, 1, 1));
}

TEST(Backdrop, takesNothingElse)
{
    for (char const* const text : {"", ",", "sand", "#12345", "#1234567", "#12345g", "red,", ",red",
                                   "red,red,red", "sky,red", "White", " white"})
        EXPECT_FALSE(Backdrop::fromText(text)) << text;
}

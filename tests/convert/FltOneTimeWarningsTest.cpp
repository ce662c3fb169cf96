#include "convert/FltOneTimeWarnings.h"

#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <iostream>

namespace
{

TEST(FltOneTimeWarningsTest, GivesEachTextOnceAtLevel2)
{
    StreamCapture const err(std::cerr);
    FltOneTimeWarnings warnings;
    for (int i = 0; i < 3; ++i) {
        warnings.notify("one");
        warnings.notify("another");
    }
    EXPECT_EQ(err.str(), "one\n(Warning Level: 2)\n\nanother\n(Warning Level: 2)\n\n");
}

TEST(FltOneTimeWarningsTest, EachConversionWarnsForItself)
{
    StreamCapture const err(std::cerr);
    FltOneTimeWarnings().notify("one");
    FltOneTimeWarnings().notify("one");
    EXPECT_EQ(err.str(), "one\n(Warning Level: 2)\n\none\n(Warning Level: 2)\n\n");
}

} // namespace

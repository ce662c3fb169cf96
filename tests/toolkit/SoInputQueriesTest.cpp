#include "toolkit/SoInputQueries.h"

#include "support/NamedInput.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

TEST(SoInputQueries, takeAnInputForOneThatHasAFileByNameOrOpen)
{
    NamedInput const named("a.flt"), empty(""), unnamed(nullptr);
    EXPECT_TRUE(SoInputQueries::isValid(&named));
    EXPECT_FALSE(SoInputQueries::isValid(&empty));
    EXPECT_FALSE(SoInputQueries::isValid(&unnamed));
    ScratchFolder const folder;
    SoInput open;
    ASSERT_TRUE(open.openFile(folder.write("a", "text").c_str()));
    EXPECT_TRUE(SoInputQueries::isValid(&open));
    EXPECT_NE(SoInputQueries::getCurFile(&open), nullptr);
}

TEST(SoInputQueries, tellTheNameOfAnInput)
{
    NamedInput const named("a.flt"), unnamed(nullptr);
    EXPECT_STREQ(SoInputQueries::getCurFileNameAsText(&named), "a.flt");
    EXPECT_STREQ(SoInputQueries::getCurFileNameAsText(&unnamed), "");
    EXPECT_STREQ(SoInputQueries::getCurFileName(&named).getString(), "a.flt");
}

TEST(SoInputQueries, knowWhetherAnythingWasRead)
{
    std::string const bytes = "#Inventor V2.1 ascii\n\nSeparator {}";
    SoInput input;
    input.setBuffer(bytes.data(), bytes.size());
    EXPECT_TRUE(SoInputQueries::isReadingHeader(&input));
    char read;
    input.get(read);
    EXPECT_FALSE(SoInputQueries::isReadingHeader(&input));
}

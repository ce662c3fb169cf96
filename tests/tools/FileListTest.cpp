#include "convert/FileList.h"

#include "support/ScratchFolder.h"
#include "support/ToolError.h"

#include <gtest/gtest.h>

using Names = std::vector<std::string>;

TEST(FileList, hasANameInEachLine)
{
    EXPECT_EQ(FileList::namesIn("a.flt\nsub/b c.flt\n"), (Names{"a.flt", "sub/b c.flt"}));
    EXPECT_EQ(FileList::namesIn("a.flt\r\n\n  b.flt"), (Names{"a.flt", "  b.flt"}))
        << "blanks are part of names";
    EXPECT_EQ(FileList::namesIn(""), Names{});
}

TEST(FileList, hasNamesWithEndsOfLinesBetweenZeroBytes)
{
    std::string const text = std::string("a\n.flt") + '\0' + "b.flt" + '\0';
    EXPECT_EQ(FileList::namesIn(text), (Names{"a\n.flt", "b.flt"}));
}

TEST(FileList, isReadFromAFile)
{
    ScratchFolder const folder;
    EXPECT_EQ(FileList::read(folder.write("list", "a.flt\nb.flt\n")), (Names{"a.flt", "b.flt"}));
    EXPECT_THROW(FileList::read(folder / "nowhere"), ToolError);
    EXPECT_THROW(FileList::read(folder / "."), ToolError) << "a directory";
}

#include "model/FltReferencedFile.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltReferencedFile, liesWhereTheFileLiesThatRefersToIt)
{
    EXPECT_EQ(FltReferencedFile::pathOf("models/town.flt", "tower.flt"), "models/tower.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("town.flt", "sub/tower.flt"), "sub/tower.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("/models/town.flt", "../tower.flt"), "/models/../tower.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("/models/town.flt", "./tower.flt"), "/models/tower.flt");
}

TEST(FltReferencedFile, liesAtItsOwnPathIfThatBeginsAtTheRoot)
{
    EXPECT_EQ(FltReferencedFile::pathOf("models/town.flt", "/other/tower.flt"), "/other/tower.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("models/town.flt", "\\other\\tower.flt"), "/other/tower.flt");
}

TEST(FltReferencedFile, hasSlashesForBackslashes)
{
    EXPECT_EQ(FltReferencedFile::pathOf("models\\town.flt", "sub\\tower.flt"), "models/sub/tower.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("models/town.flt", ".\\tower.flt"), "models/tower.flt");
}

TEST(FltReferencedFile, isTheWholeFileWhateverNodeOfItIsNamed)
{
    EXPECT_EQ(FltReferencedFile::pathOf("town.flt", "tower.flt<top>"), "tower.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("town.flt", "a<b>.flt<top>"), "a<b>.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("town.flt", "a<b>.flt"), "a<b>.flt");
    EXPECT_EQ(FltReferencedFile::pathOf("town.flt", "top>"), "top>");
    EXPECT_EQ(FltReferencedFile::pathOf("models/town.flt", ""), "models/");
}

TEST(FltReferencedFile, namesANodeInBracketsAtTheEnd)
{
    EXPECT_EQ(FltReferencedFile::nodeOf("town.flt<gate 7>"), "gate 7");
    EXPECT_EQ(FltReferencedFile::nodeOf("a<b>.flt<top>"), "top");
    for (char const* const reference : {"town.flt", "a<b>.flt", "top>", "town.flt<>", "", ">"})
        EXPECT_EQ(FltReferencedFile::nodeOf(reference), "") << reference;
    EXPECT_EQ(FltReferencedFile::fileOf("sub\\town.flt<a.b/c>"), "sub\\town.flt");
    EXPECT_EQ(FltReferencedFile::fileOf("<top>"), "");
}

} // namespace

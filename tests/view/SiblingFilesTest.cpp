#include "view/SiblingFiles.h"

#include "support/ScratchFolder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace
{

TEST(SiblingFilesTest, GoesThroughTheDatabasesOfAFolderByTheirNumbers)
{
    ScratchFolder const folder;
    auto const path = [&](char const* name) { return QString::fromStdString(folder.path(name)); };
    for (char const* const name : {"tile10.flt", "tile9.flt", "Tile11.FLT", "notes.txt"}) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_EQ(path("tile10.flt"), SiblingFiles::beside(path("tile9.flt"), 1));
    EXPECT_EQ(path("Tile11.FLT"), SiblingFiles::beside(path("tile10.flt"), 1));
    EXPECT_EQ(path("tile9.flt"), SiblingFiles::beside(path("tile10.flt"), -1));
    EXPECT_EQ("", SiblingFiles::beside(path("Tile11.FLT"), 1));
    EXPECT_EQ("", SiblingFiles::beside(path("tile9.flt"), -1));
    EXPECT_EQ(path("tile9.flt"), SiblingFiles::beside(path("notes.txt"), 1));
}

} // namespace

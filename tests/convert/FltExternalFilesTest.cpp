#include "convert/FltExternalFiles.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

TEST(FltExternalFilesTest, AReferenceLeadsOnFromTheDirectoryOfItsFile)
{
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", "a/b.flt"), "/data/a/b.flt");
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", "./b.flt"), "/data/b.flt");
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", ".\\b.flt"), "/data/b.flt");
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", "../b.flt"), "/data/../b.flt");
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", "/b.flt"), "/data//b.flt");
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", "."), "/data/.");
    EXPECT_EQ(FltExternalFiles::pathOf("/data/", ""), "/data/");
}

TEST(FltExternalFilesTest, NamesInAFileAreFoundByTheDirectoriesOfAllReferencesToIt)
{
    EXPECT_EQ(FltExternalFiles::relativePathOf("", "b.flt"), "");
    EXPECT_EQ(FltExternalFiles::relativePathOf("", "a/b.flt"), "a/");
    EXPECT_EQ(FltExternalFiles::relativePathOf("a/", "c.flt"), "a/");
    EXPECT_EQ(FltExternalFiles::relativePathOf("a/", "d\\e/f.flt"), "a/d\\e/");
    EXPECT_EQ(FltExternalFiles::relativePathOf("", "./b.flt"), "./");
}

TEST(FltExternalFilesTest, AFileIsKnownByItsPathWithSlashes)
{
    EXPECT_EQ(FltExternalFiles::nameOf("a\\b/c\\d.flt"), "a/b/c/d.flt");
    EXPECT_EQ(FltExternalFiles::nameOf("./a.flt"), "./a.flt");
}

TEST(FltExternalFilesTest, AFileIsFoundOnceItIsEntered)
{
    FltExternalFiles files;
    EXPECT_EQ(files.find("a.flt"), nullptr);
    SoNodeRef<SoSeparator> const root(new SoSeparator);
    FltExternalFiles::File& file = files.add("a.flt", root.get());
    EXPECT_FALSE(file.isOpen);
    file.isOpen = true;
    file.scope = 7;
    files.add("b.flt", nullptr);
    ASSERT_EQ(files.find("a.flt"), &file);
    EXPECT_EQ(files.find("a.flt")->root, root.get());
    EXPECT_TRUE(files.find("a.flt")->isOpen);
    EXPECT_EQ(files.find("a.flt")->scope, 7);
    EXPECT_EQ(root->getRefCount(), 1); // the scene holds it
}

} // namespace

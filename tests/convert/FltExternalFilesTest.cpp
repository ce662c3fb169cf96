#include "convert/FltExternalFiles.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

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

#include "vrml/VrmlText.h"

#include "support/MemoryStream.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

/// What is written below the head of the file.
template <class Write>
std::string written(Write write)
{
    MemoryStream const stream;
    {
        VrmlText text(stream);
        write(text);
    }
    std::string const head = "#VRML V2.0 utf8\n";
    EXPECT_EQ(stream.text().substr(0, head.size()), head);
    return stream.text().substr(head.size());
}

} // namespace

TEST(VrmlText, writesNodesWithTheirNamesAndFields)
{
    EXPECT_EQ(written([](VrmlText& text) {
                  text.begin("Transform", "house");
                  text.field("translation", SbVec3d(4500000.125, -0.1, 0));
                  text.flag("solid", false);
                  text.beginList("children");
                  text.begin("geometry IndexedFaceSet", "walls");
                  text.end();
                  text.endList();
                  text.end();
              }),
              "DEF house Transform {\n translation 4500000.125 -0.1 0\n solid FALSE\n children [\n"
              "  geometry DEF walls IndexedFaceSet {\n  }\n ]\n}\n");
}

TEST(VrmlText, writesTextsInOneLineEach)
{
    EXPECT_EQ(written([](VrmlText& text) {
                  text.texts("info", {"a \"b\" \\c\nd\t\x7f", "\xe9"});
              }),
              "info [\n \"a \\\"b\\\" \\\\c d  \"\n \"\xc3\xa9\"\n]\n");
}

TEST(VrmlText, writesNumbersThatReadersKnow)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(written([](VrmlText& text) {
                  text.field("size", {infinity, -infinity, 0.1F});
                  text.field("size", {none, 1e300});
              }),
              "size 3.4028235e+38 -3.4028235e+38 0.1\nsize 0 1e+300\n");
}

TEST(VrmlText, writesListsInLinesOfEight)
{
    EXPECT_EQ(written([](VrmlText& text) {
                  text.beginList("coordIndex");
                  for (std::int32_t i = 0; i < 9; ++i)
                      text.item(i);
                  text.endList();
                  text.beginList("point");
                  text.endList();
              }),
              "coordIndex [\n 0, 1, 2, 3, 4, 5, 6, 7,\n 8\n]\npoint [\n]\n");
}

TEST(VrmlText, writesPixelsOfEachDepth)
{
    EXPECT_EQ(written([](VrmlText& text) {
                  text.image("image", {2, 1, 1, {0x0a, 0xff}});
                  text.image("image", {1, 1, 4, {1, 2, 3, 254}});
                  text.image("image", {3, 3, 1, std::vector<unsigned char>(9, 7)});
              }),
              "image 2 1 1\n0x0A, 0xFF\nimage 1 1 4\n0x010203FE\n"
              "image 3 3 1\n0x07, 0x07, 0x07, 0x07, 0x07, 0x07, 0x07, 0x07,\n0x07\n");
}

TEST(VrmlText, indentsDeepNodesNoFurther)
{
    std::string const all = written([](VrmlText& text) {
        for (int i = 0; i < 1000; ++i)
            text.begin("Group");
    });
    EXPECT_LT(all.size(), 1000U * 30);
}

#include "vrml/VrmlNames.h"

#include <gtest/gtest.h>

TEST(VrmlNames, holdLettersDigitsAndUnderscoresOnly)
{
    VrmlNames names;
    EXPECT_EQ(names.take("door+1.a b-c"), "door_1_a_b_c");
    EXPECT_EQ(names.take("T\xc3\xbcr"), "T__r");
    EXPECT_EQ(names.take("AZ_az_09"), "AZ_az_09");
    EXPECT_EQ(names.take("a@[`{/:"), "a______");
    EXPECT_EQ(names.take("4x4"), "_4x4");
    EXPECT_EQ(names.take("0"), "_0");
    EXPECT_EQ(names.take("9"), "_9");
    EXPECT_EQ(names.take(""), "");
}

TEST(VrmlNames, standOnceEach)
{
    VrmlNames names;
    EXPECT_EQ(names.take("tree"), "tree");
    EXPECT_EQ(names.take("tree_2"), "tree_2");
    EXPECT_EQ(names.take("tree"), "tree_3") << "the second is taken";
    EXPECT_EQ(names.take("tree"), "tree_4");
    EXPECT_EQ(names.take("tree_2"), "tree_2_2");
}

TEST(VrmlNames, areNoWordsOfTheLanguage)
{
    VrmlNames names;
    for (std::string const word : {"Group", "DEF", "NULL", "Text", "TRUE_north"})
        EXPECT_EQ(names.take(word), '_' + word);
    EXPECT_EQ(names.take("Group1"), "Group1");
    EXPECT_EQ(names.take("Textile"), "Textile");
}

TEST(VrmlNames, areCutLikeThoseOfAScene)
{
    VrmlNames names;
    EXPECT_EQ(names.take(std::string(70'000, 'n')).size(), 255U);
}

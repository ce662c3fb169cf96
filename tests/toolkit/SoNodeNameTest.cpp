#include "toolkit/SoNodeName.h"

#include "support/NameTable.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

/// The name of a node that is given one.
std::string borne(std::string const& name)
{
    SoNodeRef<SoInfo> const node(new SoInfo);
    SoNodeName::give(*node, name);
    return node->getName().getString();
}

/// A node with a name as a scene for people has it.
SoNodeRef<SoSeparator> bearerOf(std::string const& name)
{
    SoNodeRef<SoSeparator> node(new SoSeparator);
    node->setName(SoNodeName::of(name).c_str());
    if (SoInfo* const info = SoNodeName::infoOf(name))
        node->addChild(info);
    return node;
}

std::string const beginning(300, 'b');

} // namespace

TEST(SoNodeNameTest, ReplacesTheCharactersThatTheToolkitReplaces)
{
    for (int character = 1; character < 256; ++character)
        for (char const* const before : {"", "a"}) {
            std::string const name = std::string(before) + static_cast<char>(character) + "z";
            EXPECT_EQ(SoNodeName::of(name), borne(name)) << character;
        }
    EXPECT_EQ(SoNodeName::of(""), "");
}

TEST(SoNodeNameTest, CutsANameOfMoreThan255BytesAndKeepsItWhole)
{
    for (std::size_t const size : {1, 254, 255}) {
        std::string const name(size, 'n');
        EXPECT_EQ(SoNodeName::of(name), name);
        EXPECT_EQ(SoNodeName::infoOf(name), nullptr);
    }
    for (std::size_t const size : {256, 60'000, 200'000}) {
        std::string const name(size, 'n');
        EXPECT_EQ(SoNodeName::of(name), std::string(255, 'n'));
        EXPECT_EQ(SoNodeName::wholeOf(*bearerOf(name)), name);
    }
}

TEST(SoNodeNameTest, CountsTheCharacterThatTheToolkitPutsBeforeADigit)
{
    std::string const name(255, '7');
    EXPECT_EQ(SoNodeName::of(name), "_" + name.substr(1));
    EXPECT_EQ(SoNodeName::wholeOf(*bearerOf(name)), name);
    EXPECT_EQ(SoNodeName::infoOf(name.substr(1)), nullptr);
}

TEST(SoNodeNameTest, TellsTwoLongNamesWithOneBeginningApart)
{
    SoNodeRef<SoSeparator> const one = bearerOf(beginning + "1");
    SoNodeRef<SoSeparator> const two = bearerOf(beginning + "2");
    EXPECT_EQ(one->getName(), two->getName());
    EXPECT_EQ(SoNodeName::wholeOf(*one), beginning + "1");
    EXPECT_EQ(SoNodeName::wholeOf(*two), beginning + "2");
}

TEST(SoNodeNameTest, TakesNoCommentForAWholeName)
{
    SoNodeRef<SoSeparator> const node(new SoSeparator);
    node->setName(std::string(255, 'n').c_str());
    auto* const comment = new SoInfo;
    comment->string = ("name " + std::string(300, 'o')).c_str();
    node->addChild(comment);
    EXPECT_EQ(SoNodeName::wholeOf(*node), std::string(255, 'n'));
}

TEST(SoNodeNameTest, AsksTheToolkitForNoName)
{
    EXPECT_GT(NameTable::growth([] { borne("a name that is new"); }), 0U);
    EXPECT_EQ(NameTable::growth([] {
                  SoNodeName::of("another name that is new");
                  SoNodeName::uncut("a third name that is new");
              }),
              0U);
}

TEST(SoNodeNameTest, CutsNamesThatTheTableOfTheToolkitHasNoRoomFor)
{
    for (std::size_t const size : {65'502, 65'503, 65'531, 200'000}) {
        std::string const name(size, '0' + static_cast<char>(size % 10));
        EXPECT_EQ(borne(name).size(), 65'503U) << size; // with the character before the digit
    }
}

TEST(SoNodeNameTest, KnowsTheNameThatANodeBearsAfterItWasGivenOne)
{
    for (std::string const& name : {std::string("a flt.switch"), std::string("5"), std::string(),
                                    std::string("gr\xfc\xdf"), std::string(65'600, 'a')})
        EXPECT_EQ(SoNodeName::given(name), borne(name));
}

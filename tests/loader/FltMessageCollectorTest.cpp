#include "loader/FltMessageCollector.h"

#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace
{

using Console = FltWarningMessageConsole;

} // namespace

TEST(FltMessageCollector, TakesMessagesOfTheLibraryAndOfTheToolkit)
{
    StreamCapture const err(std::cerr);
    FltMessageCollector collector;
    collector.setFile("a.flt");
    Console::notifyMessage("ERROR ! Something is wrong", 3, true);
    SoDebugError::postWarning("there", "something else");
    ASSERT_EQ(collector.messages().size(), 2U);
    EXPECT_EQ(collector.messages()[0].text, "Something is wrong");
    EXPECT_EQ(collector.messages()[0].level, FltMessage::Level::error);
    EXPECT_EQ(collector.messages()[0].file, "a.flt");
    EXPECT_EQ(collector.messages()[0].offset, -1);
    EXPECT_NE(collector.messages()[1].text.find("something else"), std::string::npos);
    EXPECT_EQ(err.str(), "");
}

TEST(FltMessageCollector, PlacesDamage)
{
    FltMessageCollector collector;
    Console::beginFile("b.flt");
    Console::setPosition(1234, 5);
    Console::notifyDamage("A face is bent", ", badly");
    ASSERT_EQ(collector.messages().size(), 1U);
    EXPECT_EQ(collector.messages()[0].text, "A face is bent, badly");
    EXPECT_EQ(collector.messages()[0].level, FltMessage::Level::warning);
    EXPECT_EQ(collector.messages()[0].file, "b.flt");
    EXPECT_EQ(collector.messages()[0].offset, 1234);
    EXPECT_EQ(collector.messages()[0].opcode, 5);
}

TEST(FltMessageCollector, CountsEqualOnesAndThoseThatWereNotReportedOneByOne)
{
    FltMessageCollector collector;
    {
        Console::Count count;
        for (int i = 0; i < 150; ++i)
            Console::notifyGuard("Too much", ": of it");
        count.finish();
    }
    ASSERT_EQ(collector.messages().size(), 2U);
    EXPECT_EQ(collector.messages()[0].count, 100);
    EXPECT_EQ(collector.messages()[1].count, 50);
    EXPECT_EQ(collector.messages()[1].text, "further ones of this kind: Too much");
}

TEST(FltMessageCollector, JoinsTheLinesOfAMessageAndLeavesTheConsolesWordsOut)
{
    FltMessageCollector collector;
    for (char const* const text :
         {"WARNING ! One line\nand another\n\n", "ERROR ! One", "ERROR! Two", "An ERROR ! in it", "\n"})
        Console::notifyMessage(text, 1, false);
    std::vector<std::string> texts;
    for (FltMessage const& message : collector.messages())
        texts.push_back(message.text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{"One line and another", "One", "Two", "An ERROR ! in it", ""}));
}

TEST(FltMessageCollector, JoinsMessagesThatAreTheSameInEverything)
{
    FltMessageCollector collector;
    FltMessage const first{FltMessage::Level::warning, "Text", "a.flt", 10, 5, 2};
    FltMessage otherLevel = first, otherText = first, otherFile = first, otherPlace = first;
    otherLevel.level = FltMessage::Level::error;
    otherText.text = "Texts";
    otherFile.file = "b.flt";
    otherPlace.offset = 11;
    for (FltMessage const& message : {first, otherLevel, otherText, otherFile, otherPlace, first, otherPlace})
        collector.add(message);
    std::vector<int> counts;
    for (FltMessage const& message : collector.messages())
        counts.push_back(message.count);
    EXPECT_EQ(counts, (std::vector<int>{4, 2, 2, 2, 4}));
}

TEST(FltMessageCollector, KnowsThreeLevels)
{
    FltMessageCollector collector;
    for (int const level : {-1, 0, 1, 2, 3, 4})
        Console::notifyMessage(Console::keepText("Level " + std::to_string(level)), level, false);
    std::vector<int> levels;
    for (FltMessage const& message : collector.messages())
        levels.push_back(static_cast<int>(message.level));
    EXPECT_EQ(levels, (std::vector<int>{1, 1, 1, 2, 3, 3}));
}

TEST(FltMessageCollector, KeepsToItselfWhatComesWhileItStandsInAnother)
{
    FltMessageCollector outer;
    Console::beginFile("outer.flt");
    Console::setPosition(10, 1);
    {
        FltMessageCollector inner;
        Console::beginFile("inner.flt");
        Console::setPosition(20, 2);
        Console::notifyDamage("Damage");
        EXPECT_EQ(inner.messages().size(), 1U);
    }
    Console::notifyDamage("Damage");
    ASSERT_EQ(outer.messages().size(), 1U);
    EXPECT_EQ(outer.messages()[0].file, "outer.flt");
    EXPECT_EQ(outer.messages()[0].offset, 10);
}

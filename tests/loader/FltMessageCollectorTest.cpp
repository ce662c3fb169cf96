#include "loader/FltMessageCollector.h"

#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <iostream>

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

#include "messages/FltWarningMessageConsole.h"

#include "messages/FltLimits.h"
#include "support/StreamCapture.h"
#include "support/Text.h"

#include <gtest/gtest.h>

namespace
{

using Console = FltWarningMessageConsole;

/// Gives every test an empty list and puts the process's own back.
class FltWarningMessageConsoleTest : public testing::Test
{
protected:
    FltWarningMessageConsoleTest() { kept.swap(Console::setOfMessages); }
    ~FltWarningMessageConsoleTest() override
    {
        kept.swap(Console::setOfMessages);
        Console::beginFile("");
        std::cerr.clear();
    }

private:
    std::vector<FltWarningMessage> kept;
};

template <class Action>
std::string printedBy(Action action)
{
    StreamCapture const printed(std::cerr);
    action();
    return printed.str();
}

TEST_F(FltWarningMessageConsoleTest, PrintedMessageHasItsLevelAndABlankLine)
{
    EXPECT_EQ(printedBy([] { Console::notifyMessage("ERROR ! something", 3, true); }),
              "ERROR ! something\n(Warning Level: 3)\n\n");
    ASSERT_EQ(Console::setOfMessages.size(), 1U);
    EXPECT_STREQ(Console::setOfMessages[0].message, "ERROR ! something");
    EXPECT_EQ(Console::setOfMessages[0].level, 3);
}

TEST_F(FltWarningMessageConsoleTest, MessageWithThePrintFlagOffIsKeptAndPrintsOnlyThroughShowMessagesConsole)
{
    EXPECT_EQ(printedBy([] { Console::notifyMessage("a remark", 1, false); }), "");
    EXPECT_EQ(printedBy([] { Console::showMessagesConsole(1); }), "a remark\n(Warning Level: 1)\n");
}

TEST_F(FltWarningMessageConsoleTest, ShowMessagesConsoleOf2OmitsLevel1AndOf0ShowsAll)
{
    Console::notifyMessage("one", 1, false);
    Console::notifyMessage("three", 3, false);
    Console::notifyMessage("two", 2, false);
    EXPECT_EQ(printedBy([] { Console::showMessagesConsole(2); }),
              "three\n(Warning Level: 3)\ntwo\n(Warning Level: 2)\n");
    EXPECT_EQ(printedBy([] { Console::showMessagesConsole(0); }),
              "one\n(Warning Level: 1)\nthree\n(Warning Level: 3)\ntwo\n(Warning Level: 2)\n");
    EXPECT_EQ(printedBy([] { Console::showMessagesConsole(4); }), "");
}

TEST_F(FltWarningMessageConsoleTest, TextIsKeptAsThePointerThatItIs)
{
    char text[] = "before";
    Console::notifyMessage(text, 1, false);
    text[0] = 'B';
    EXPECT_EQ(printedBy([] { Console::showMessagesConsole(0); }), "Before\n(Warning Level: 1)\n");
}

TEST_F(FltWarningMessageConsoleTest, NullTextSetsTheBadBitOfCerrAndLosesTheRest)
{
    ASSERT_TRUE(std::cerr.good());
    EXPECT_EQ(printedBy([] {
                  Console::notifyMessage(nullptr, 3, true);
                  EXPECT_TRUE(std::cerr.bad());
                  Console::notifyMessage("lost", 3, true);
                  std::cerr.clear();
                  Console::notifyMessage("seen again", 3, true);
              }),
              "seen again\n(Warning Level: 3)\n\n");
    EXPECT_EQ(Console::setOfMessages.size(), 3U);
}

TEST_F(FltWarningMessageConsoleTest, NullTextInTheListSetsTheBadBitWhenItIsShown)
{
    Console::notifyMessage("first", 2, false);
    Console::notifyMessage(nullptr, 2, false);
    Console::notifyMessage("last", 2, false);
    EXPECT_TRUE(std::cerr.good());
    EXPECT_EQ(printedBy([] {
                  Console::showMessagesConsole(0);
                  EXPECT_TRUE(std::cerr.bad());
              }),
              "first\n(Warning Level: 2)\n");
}

TEST_F(FltWarningMessageConsoleTest, LevelsForHostsAreKeptAndChangeNothing)
{
    int const before = Console::currentWarningLevel;
    Console::setWarningLevel(3);
    EXPECT_EQ(Console::currentWarningLevel, 3);
    EXPECT_EQ(printedBy([] { Console::notifyMessage("still printed", 1, true); }),
              "still printed\n(Warning Level: 1)\n\n");
    Console::setDefaultWarningLevel();
    EXPECT_EQ(Console::currentWarningLevel, 2);
    Console::setWarningLevel(before);
}

TEST_F(FltWarningMessageConsoleTest, InstanceIsMadeOnceAndAgainAfterItIsDeleted)
{
    Console* const first = Console::getInstance();
    EXPECT_EQ(Console::getInstance(), first);
    delete first;
    EXPECT_NE(Console::getInstance(), nullptr);
    {
        Console const other;
    }
    EXPECT_NE(Console::getInstance(), nullptr) << "a console that goes takes the instance with it";
    delete Console::getInstance();
}

TEST_F(FltWarningMessageConsoleTest, KeptTextsLiveOnAndEqualOnesShareACopy)
{
    char const* kept = nullptr;
    {
        std::string const text = "CAN'T RESOLVE: a.flt";
        kept = Console::keepText(text);
        EXPECT_NE(kept, text.c_str());
    }
    EXPECT_STREQ(kept, "CAN'T RESOLVE: a.flt");
    EXPECT_EQ(Console::keepText("CAN'T RESOLVE: a.flt"), kept);
    EXPECT_NE(Console::keepText("another"), kept);
}

TEST_F(FltWarningMessageConsoleTest, DamageIsToldWithFileOpcodeAndByteOffset)
{
    Console::beginFile("dir/a.flt");
    Console::setPosition(324, 72);
    EXPECT_EQ(printedBy([] { Console::notifyDamage("A list is cut"); }),
              "WARNING ! A list is cut (dir/a.flt, record with opcode 72 at byte offset 324)\n"
              "(Warning Level: 2)\n\n");
    ASSERT_EQ(Console::setOfMessages.size(), 1U);
    EXPECT_EQ(Console::setOfMessages[0].level, 2);
    EXPECT_EQ(printedBy([] { Console::showMessagesConsole(2); }),
              "WARNING ! A list is cut (dir/a.flt, record with opcode 72 at byte offset 324)\n"
              "(Warning Level: 2)\n");
}

TEST_F(FltWarningMessageConsoleTest, FileWithoutANameIsToldWithAnEmptyOne)
{
    Console::beginFile(nullptr);
    EXPECT_EQ(printedBy([] { Console::notifyDamage("A list is cut"); }),
              "WARNING ! A list is cut (, record with opcode 0 at byte offset 0)\n(Warning Level: 2)\n\n");
}

TEST_F(FltWarningMessageConsoleTest, ReportsOfDamageStopAtTheirLimitAndTheLastSaysSo)
{
    Console::beginFile("a.flt");
    std::string const printed = printedBy([] {
        for (int i = 0; i < FltLimits::damageReports + 50; ++i) {
            Console::setPosition(static_cast<std::size_t>(i), 5);
            Console::notifyDamage("A list is cut");
        }
    });
    EXPECT_EQ(countOf(printed, "WARNING !"), FltLimits::damageReports);
    EXPECT_EQ(Console::setOfMessages.size(), static_cast<std::size_t>(FltLimits::damageReports));
    std::string const last = "WARNING ! A list is cut (a.flt, record with opcode 5 at byte offset " +
                             std::to_string(FltLimits::damageReports - 1) +
                             "); further damage in this file is not told\n(Warning Level: 2)\n\n";
    ASSERT_GT(printed.size(), last.size());
    EXPECT_EQ(printed.substr(printed.size() - last.size()), last);
    EXPECT_EQ(countOf(printed, "further damage"), 1);
}

TEST_F(FltWarningMessageConsoleTest, TheNextFileIsReportedAnew)
{
    Console::beginFile("a.flt");
    printedBy([] {
        for (int i = 0; i < FltLimits::damageReports + 1; ++i)
            Console::notifyDamage("A list is cut");
    });
    EXPECT_EQ(printedBy([] { Console::notifyDamage("A list is cut"); }), "");
    Console::beginFile("b.flt");
    EXPECT_EQ(printedBy([] { Console::notifyDamage("A list is cut"); }),
              "WARNING ! A list is cut (b.flt, record with opcode 0 at byte offset 0)\n"
              "(Warning Level: 2)\n\n");
}

} // namespace

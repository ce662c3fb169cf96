#include "messages/FltWarningMessageConsole.h"

#include "messages/FltLimits.h"
#include "support/StreamCapture.h"
#include "support/Text.h"

#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <string_view>
#include <termios.h>
#include <unistd.h>
#include <utility>

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

/// A terminal in the place of the standard error stream.
class ErrorTerminal
{
public:
    ErrorTerminal() : screen(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        char const* const name =
            screen >= 0 && ::grantpt(screen) == 0 && ::unlockpt(screen) == 0 ? ::ptsname(screen) : nullptr;
        int const device = name != nullptr ? ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC) : -1;
        if (device < 0)
            return;
        termios mode = {};
        ::tcgetattr(device, &mode);
        ::cfmakeraw(&mode);
        ::tcsetattr(device, TCSANOW, &mode);
        kept = ::dup(STDERR_FILENO);
        ::dup2(device, STDERR_FILENO);
        ::close(device);
    }
    ~ErrorTerminal()
    {
        putBack();
        if (screen >= 0)
            ::close(screen);
    }
    ErrorTerminal(ErrorTerminal const&) = delete;
    ErrorTerminal& operator=(ErrorTerminal const&) = delete;

    bool isThere() const { return kept >= 0; }

    /// What was printed to it since the last call. A terminal hands things on when it likes, but in order.
    std::string shown()
    {
        static constexpr std::string_view end = "<end>";
        std::string text;
        bool isOpen = ::write(STDERR_FILENO, end.data(), end.size()) == static_cast<ssize_t>(end.size());
        while (isOpen && text.find(end) == std::string::npos) {
            char bytes[256];
            ssize_t const count = ::read(screen, bytes, sizeof bytes);
            isOpen = count > 0;
            text.append(bytes, isOpen ? static_cast<std::size_t>(count) : 0);
        }
        return text.substr(0, text.find(end));
    }

    void putBack()
    {
        if (kept < 0)
            return;
        ::dup2(kept, STDERR_FILENO);
        ::close(std::exchange(kept, -1));
    }

private:
    int screen;
    int kept = -1;
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

TEST_F(FltWarningMessageConsoleTest, ATerminalGetsTextWithoutItsControlsAndNothingOfANullText)
{
    ErrorTerminal terminal;
    if (!terminal.isThere())
        GTEST_SKIP() << "the system gives no terminals";
    Console::notifyMessage("name \x1b[2J", 3, true);
    std::string const printed = terminal.shown();
    Console::notifyMessage(nullptr, 3, true);
    bool const isBad = std::cerr.bad();
    std::cerr.clear();
    std::string const afterwards = terminal.shown();
    terminal.putBack();
    EXPECT_EQ(printed, "name \\x1b[2J\n(Warning Level: 3)\n\n");
    EXPECT_TRUE(isBad);
    EXPECT_EQ(afterwards, "");
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

TEST_F(FltWarningMessageConsoleTest, DamageIsReportedWithFileOpcodeAndByteOffset)
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

TEST_F(FltWarningMessageConsoleTest, FileWithoutANameIsReportedWithAnEmptyOne)
{
    Console::beginFile(nullptr);
    EXPECT_EQ(printedBy([] { Console::notifyDamage("A list is cut"); }),
              "WARNING ! A list is cut (, record with opcode 0 at byte offset 0)\n(Warning Level: 2)\n\n");
}

/// Reports so many messages of one kind, and one of another.
void reportMany(int count)
{
    for (int i = 0; i < count; ++i) {
        Console::setPosition(static_cast<std::size_t>(i), 5);
        Console::notifyDamage("A list is cut", " at " + std::to_string(i));
    }
    Console::notifyGuard("Another kind");
}

TEST_F(FltWarningMessageConsoleTest, OfEachKindTheFirstAreReportedAndTheNumberOfTheOthersAtTheEnd)
{
    int const most = FltLimits::messagesOfAKind;
    std::string const printed = printedBy([] {
        Console::Count count;
        Console::beginFile("a.flt");
        reportMany(FltLimits::messagesOfAKind + 50);
        count.finish();
    });
    EXPECT_EQ(countOf(printed, "WARNING ! A list is cut at "), most);
    EXPECT_EQ(countOf(printed, "WARNING ! Another kind\n"), 1);
    EXPECT_EQ(countOf(printed, "WARNING ! 50 more of this kind: A list is cut\n"), 1);
    EXPECT_EQ(countOf(printed, "WARNING !"), most + 2);
    EXPECT_EQ(Console::setOfMessages.size(), static_cast<std::size_t>(most) + 2);
}

TEST_F(FltWarningMessageConsoleTest, TheFilesOfAConversionAreCountedTogetherAndTheNextOneAnew)
{
    std::string const printed = printedBy([] {
        Console::Count count;
        Console::beginFile("a.flt");
        reportMany(FltLimits::messagesOfAKind);
        {
            Console::Count nested;
            Console::beginFile("b.flt");
            reportMany(10);
            nested.finish();
        }
        count.finish();
    });
    EXPECT_EQ(countOf(printed, "WARNING ! A list is cut at "), FltLimits::messagesOfAKind);
    EXPECT_EQ(countOf(printed, "WARNING ! 10 more of this kind: A list is cut\n"), 1);
    Console::Count const next;
    EXPECT_EQ(countOf(printedBy([] { reportMany(3); }), "A list is cut"), 3);
}

TEST_F(FltWarningMessageConsoleTest, WithNobodyWhoCountsAllAreReported)
{
    int const many = FltLimits::messagesOfAKind + 50;
    EXPECT_EQ(countOf(printedBy([] { reportMany(FltLimits::messagesOfAKind + 50); }), "A list is cut"), many);
}

TEST_F(FltWarningMessageConsoleTest, ASessionCountsOnItsOwnAndLeavesNothingForTheNextOne)
{
    std::string const printed = printedBy([] {
        Console::Count count;
        Console::beginFile("a.flt");
        reportMany(FltLimits::messagesOfAKind);
        for (int i = 0; i < 2; ++i) {
            Console::Session const session;
            Console::notifyDamage("No place");
            Console::Count inner;
            Console::beginFile("b.flt");
            Console::setPosition(12, 5);
            reportMany(FltLimits::messagesOfAKind);
            Console::Session const nested;
            reportMany(1);
        }
        Console::notifyDamage("A list is cut", " at the end");
        Console::notifyDamage("Of the first file");
        count.finish();
    });
    EXPECT_EQ(countOf(printed, "WARNING ! A list is cut at "), 3 * FltLimits::messagesOfAKind + 2);
    EXPECT_EQ(countOf(printed, "No place (, record with opcode 0 at byte offset 0)"), 2);
    EXPECT_EQ(countOf(printed, "Of the first file (a.flt, "), 1);
    EXPECT_EQ(countOf(printed, "WARNING ! 1 more of this kind: A list is cut\n"), 1);
}

TEST_F(FltWarningMessageConsoleTest, AConversionThatBreaksOffReportsNoNumbers)
{
    std::string const printed = printedBy([] {
        Console::Count const count;
        reportMany(FltLimits::messagesOfAKind + 50);
    });
    EXPECT_EQ(countOf(printed, "more of this kind"), 0);
}

/// In a process of its own, since it uses up what is kept in one.
TEST_F(FltWarningMessageConsoleTest, WhatIsKeptOfGuardsIsBoundedWhileTheyAreStillPrinted)
{
    EXPECT_EXIT(
        {
            std::string const printed = printedBy([] {
                for (int i = 0; i <= FltLimits::keptMessages; ++i)
                    Console::notifyGuard("kind " + std::to_string(i));
            });
            bool const allPrinted = countOf(printed, "WARNING ! kind ") == FltLimits::keptMessages + 1;
            bool const allKept = Console::setOfMessages.size() > std::size_t(FltLimits::keptMessages);
            std::_Exit(allPrinted && !allKept ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

/// Writes down what it hears.
class NotingListener : public Console::Listener
{
public:
    void take(char const* text, int level, Console::Place const* place) override
    {
        notes += std::to_string(level) + " " + (text != nullptr ? text : "null");
        if (place != nullptr)
            notes += " [" + place->fileName + " " + std::to_string(place->byteOffset) + " " +
                     std::to_string(place->opcode) + "]";
        notes += "\n";
    }
    void takeCount(std::string const& kind, int more) override
    {
        notes += std::to_string(more) + " more: " + kind + "\n";
    }

    std::string notes;
};

TEST_F(FltWarningMessageConsoleTest, AListenerTakesAllMessagesOverWithTheirPlaces)
{
    NotingListener listener;
    EXPECT_EQ(Console::setListener(&listener), nullptr);
    EXPECT_EQ(printedBy([] {
                  Console::Count count;
                  Console::beginFile("a.flt");
                  Console::setPosition(8, 72);
                  Console::notifyMessage("ERROR ! one", 3, true);
                  Console::notifyMessage("two", 1, false);
                  Console::notifyDamage("A list is cut", " here");
                  for (int i = 0; i < FltLimits::messagesOfAKind + 5; ++i)
                      Console::notifyGuard("g");
                  count.finish();
              }),
              "");
    EXPECT_EQ(Console::setListener(nullptr), &listener);
    EXPECT_TRUE(Console::setOfMessages.empty());
    std::string const begin =
        "3 ERROR ! one\n1 two\n2 WARNING ! A list is cut here [a.flt 8 72]\n2 WARNING ! g\n";
    EXPECT_EQ(listener.notes.substr(0, begin.size()), begin);
    std::string const end = "5 more: g\n";
    EXPECT_EQ(listener.notes.substr(listener.notes.size() - end.size()), end);
    EXPECT_EQ(printedBy([] { Console::notifyMessage("printed again", 1, true); }),
              "printed again\n(Warning Level: 1)\n\n");
}

TEST_F(FltWarningMessageConsoleTest, AHostsOwnBufferGetsTextsAsTheyAre)
{
    EXPECT_EQ(printedBy([] { Console::notifyMessage("\x1b[31m", 1, true); }),
              "\x1b[31m\n(Warning Level: 1)\n\n");
}

} // namespace

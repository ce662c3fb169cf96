#include "messages/FltMessageSilence.h"

#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <iostream>

TEST(FltMessageSilence, KeepsMessagesFromEverybodyWhileItLives)
{
    StreamCapture const errors(std::cerr);
    std::size_t const kept = FltWarningMessageConsole::setOfMessages.size();
    {
        FltMessageSilence const outer;
        {
            FltMessageSilence const inner;
        }
        FltWarningMessageConsole::notifyGuard("unheard");
    }
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(FltWarningMessageConsole::setOfMessages.size(), kept);
    FltWarningMessageConsole::notifyGuard("heard");
    EXPECT_NE(errors.str().find("heard"), std::string::npos);
}

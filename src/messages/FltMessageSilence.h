#pragma once

#include "messages/FltWarningMessageConsole.h"

/// Keeps the library's messages from everybody while it lives, for those who read a file and have words of
/// their own for what is wrong with it.
class FltMessageSilence : private FltWarningMessageConsole::Listener
{
public:
    FltMessageSilence() : before(FltWarningMessageConsole::setListener(this)) {}
    ~FltMessageSilence() override { FltWarningMessageConsole::setListener(before); }

    FltMessageSilence(FltMessageSilence const&) = delete;
    FltMessageSilence& operator=(FltMessageSilence const&) = delete;

private:
    void take(char const* /*text*/, int /*level*/, FltWarningMessageConsole::Place const* /*place*/) override
    {
    }
    void takeCount(std::string const& /*kind*/, int /*more*/) override {}

    FltWarningMessageConsole::Session session;
    Listener* before;
};

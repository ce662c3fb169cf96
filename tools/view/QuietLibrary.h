#pragma once

#include "dump/FltDumpOutput.h"
#include "messages/FltWarningMessageConsole.h"

/// While it lives, records are read without a listing and without messages: the loader has given them
/// already.
class QuietLibrary : private FltWarningMessageConsole::Listener
{
public:
    QuietLibrary() : before(FltWarningMessageConsole::setListener(this)) {}
    ~QuietLibrary() override { FltWarningMessageConsole::setListener(before); }
    QuietLibrary(QuietLibrary const&) = delete;
    QuietLibrary& operator=(QuietLibrary const&) = delete;

private:
    void take(char const*, int, FltWarningMessageConsole::Place const*) override {}
    void takeCount(std::string const&, int) override {}

    FltDumpOutput::Redirect noDump{nullptr};
    FltWarningMessageConsole::Session session;
    Listener* before;
};

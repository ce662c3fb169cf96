#include "convert/FltOneTimeWarnings.h"

#include "messages/FltWarningMessageConsole.h"

void FltOneTimeWarnings::notify(std::string const& text)
{
    if (given.insert(text).second)
        FltWarningMessageConsole::notifyMessage(FltWarningMessageConsole::keepText(text), 2, true);
}

#include "messages/FltWarningMessageConsole.h"

#include "dump/FltLogBuffer.h"
#include "messages/FltLimits.h"
#include "messages/FltText.h"

#include <ext/stdio_sync_filebuf.h>
#include <iostream>
#include <map>
#include <set>
#include <unistd.h>
#include <utility>

namespace
{

using Console = FltWarningMessageConsole;

/// What messages are counted and placed by.
struct Account {
    Console::Place place;             ///< Where the parser is in the file.
    std::map<std::string, int> kinds; ///< How many messages of each kind there were, while a Count lives.
    bool isCounting = false;

    void clear()
    {
        place.fileName.clear();
        place.byteOffset = 0;
        place.opcode = 0;
        kinds.clear();
        isCounting = false;
    }
};

Account ofTheProcess;
Account* account = &ofTheProcess; ///< That of the innermost session.

int keptGuardMessages = 0;
Console::Listener* listener = nullptr;

/// Whether std::cerr still has its own buffer, and that writes to a terminal. A host that sets a buffer of
/// its own cleans the texts itself.
bool goesToTerminal()
{
    auto const* const own = dynamic_cast<__gnu_cxx::stdio_sync_filebuf<char>*>(std::cerr.rdbuf());
    return own != nullptr && ::isatty(STDERR_FILENO) != 0;
}

void printText(char const* text)
{
    if (text != nullptr && goesToTerminal())
        std::cerr << FltText::printable(text, true);
    else
        std::cerr << text;
}

void print(char const* text, int level)
{
    FltLogBuffer::writeCurrent();
    printText(text);
    std::cerr << std::endl << "(Warning Level: " << level << ")" << std::endl << std::endl;
}

void report(std::string const& text, Console::Place const* where)
{
    constexpr int level = 2;
    if (listener != nullptr)
        return listener->take(text.c_str(), level, where);
    if (keptGuardMessages < FltLimits::keptMessages) {
        ++keptGuardMessages;
        return Console::notifyMessage(Console::keepText(text), level, true);
    }
    print(text.c_str(), level);
}

/// Counts a message of a kind, while a Count lives.
/// @return whether to report it
bool isToBeReported(std::string const& kind)
{
    return !account->isCounting || ++account->kinds[kind] <= FltLimits::messagesOfAKind;
}

} // namespace

FltWarningMessageConsole* FltWarningMessageConsole::instance = nullptr;
std::vector<FltWarningMessage> FltWarningMessageConsole::setOfMessages;
int FltWarningMessageConsole::currentWarningLevel = 0;

FltWarningMessageConsole::~FltWarningMessageConsole()
{
    // The instance may be this object itself, which must not be deleted twice.
    FltWarningMessageConsole* const other = instance;
    instance = nullptr;
    if (other != nullptr && other != this)
        delete other;
}

FltWarningMessageConsole* FltWarningMessageConsole::getInstance()
{
    if (instance == nullptr)
        instance = new FltWarningMessageConsole;
    return instance;
}

void FltWarningMessageConsole::notifyMessage(char const* text, int level, bool isPrinted)
{
    if (listener != nullptr)
        return listener->take(text, level, nullptr);
    setOfMessages.push_back({text, level});
    if (isPrinted)
        print(text, level);
}

void FltWarningMessageConsole::notifyUnopened(char const* fileName)
{
    std::string const text = std::string("Error in opening file: ") + fileName;
    if (listener != nullptr)
        return listener->take(text.c_str(), 3, nullptr);
    printText(text.c_str());
    std::cerr << std::endl;
}

void FltWarningMessageConsole::showMessagesConsole(int minimumLevel)
{
    for (FltWarningMessage const& message : setOfMessages)
        if (message.level >= minimumLevel)
            std::cerr << message.message << std::endl
                      << "(Warning Level: " << message.level << ")" << std::endl;
}

void FltWarningMessageConsole::setWarningLevel(int level)
{
    currentWarningLevel = level;
}

void FltWarningMessageConsole::setDefaultWarningLevel()
{
    currentWarningLevel = 2;
}

char const* FltWarningMessageConsole::keepText(std::string const& text)
{
    static std::set<std::string> texts;
    return texts.insert(text).first->c_str();
}

FltWarningMessageConsole::Count::Count() : isOutermost(!account->isCounting)
{
    if (!isOutermost)
        return;
    account->kinds.clear();
    account->isCounting = true;
}

FltWarningMessageConsole::Count::~Count()
{
    if (isOutermost)
        account->isCounting = false;
}

void FltWarningMessageConsole::Count::finish()
{
    if (!isOutermost)
        return;
    for (auto const& [kind, count] : account->kinds) {
        int const more = count - FltLimits::messagesOfAKind;
        if (more <= 0)
            continue;
        if (listener != nullptr)
            listener->takeCount(kind, more);
        else
            report("WARNING ! " + std::to_string(more) + " more of this kind: " + kind, nullptr);
    }
    account->kinds.clear();
}

/// What a session has of its own.
struct FltWarningMessageConsole::Session::State {
    Account own;
    Account* before = nullptr;

    /// Those who read a file record by record begin a session for each: what one had serves the next.
    VELLOREADER_INNER static std::unique_ptr<State> spare;
};

std::unique_ptr<FltWarningMessageConsole::Session::State> FltWarningMessageConsole::Session::State::spare;

FltWarningMessageConsole::Session::Session() : state(std::move(State::spare))
{
    if (state == nullptr)
        state = std::make_unique<State>();
    state->before = std::exchange(account, &state->own);
}

FltWarningMessageConsole::Session::~Session()
{
    account = state->before;
    state->own.clear();
    State::spare = std::move(state);
}

void FltWarningMessageConsole::notifyGuard(std::string const& kind, std::string const& detail)
{
    if (isToBeReported(kind))
        report("WARNING ! " + kind + detail, nullptr);
}

void FltWarningMessageConsole::beginFile(char const* fileName)
{
    account->place = Place();
    account->place.fileName = fileName != nullptr ? fileName : "";
}

void FltWarningMessageConsole::setPosition(std::size_t byteOffset, int opcode)
{
    account->place.byteOffset = byteOffset;
    account->place.opcode = opcode;
}

void FltWarningMessageConsole::notifyDamage(std::string const& kind, std::string const& detail)
{
    if (!isToBeReported(kind))
        return;
    std::string const what = "WARNING ! " + kind + detail;
    if (listener != nullptr)
        return report(what, &account->place);
    report(what + " (" + account->place.fileName + ", record with opcode " +
               std::to_string(account->place.opcode) + " at byte offset " +
               std::to_string(account->place.byteOffset) + ")",
           &account->place);
}

FltWarningMessageConsole::Listener* FltWarningMessageConsole::setListener(Listener* newListener)
{
    return std::exchange(listener, newListener);
}

#include "messages/FltWarningMessageConsole.h"

#include "dump/FltLogBuffer.h"
#include "messages/FltLimits.h"

#include <iostream>
#include <set>

namespace
{

/// Where the parser stands, for messages about damage.
struct Position {
    std::string fileName;
    std::size_t byteOffset = 0;
    int opcode = 0;
    int reports = 0;
};

Position position;

} // namespace

FltWarningMessageConsole* FltWarningMessageConsole::instance = nullptr;
std::vector<FltWarningMessage> FltWarningMessageConsole::setOfMessages;
int FltWarningMessageConsole::currentWarningLevel = 0;

FltWarningMessageConsole::~FltWarningMessageConsole()
{
    // The instance may be the very object that goes: it must not be met twice.
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

void FltWarningMessageConsole::notifyMessage(char const* text, int level, bool print)
{
    setOfMessages.push_back({text, level});
    if (!print)
        return;
    FltLogBuffer::writeCurrent();
    std::cerr << text << std::endl << "(Warning Level: " << level << ")" << std::endl << std::endl;
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

void FltWarningMessageConsole::beginFile(char const* fileName)
{
    position = Position();
    position.fileName = fileName != nullptr ? fileName : "";
}

void FltWarningMessageConsole::setPosition(std::size_t byteOffset, int opcode)
{
    position.byteOffset = byteOffset;
    position.opcode = opcode;
}

void FltWarningMessageConsole::notifyDamage(std::string const& what)
{
    if (++position.reports > FltLimits::damageReports)
        return;
    std::string text = "WARNING ! " + what + " (" + position.fileName + ", record with opcode " +
                       std::to_string(position.opcode) + " at byte offset " +
                       std::to_string(position.byteOffset) + ")";
    if (position.reports == FltLimits::damageReports)
        text += "; further damage in this file is not told";
    notifyMessage(keepText(text), 2, true);
}

#pragma once

#include "messages/FltWarningMessage.h"
#include "toolkit/VelloReaderExport.h"

#include <string>
#include <vector>

/// The one channel for messages about failures. It keeps every message of the process, in order, and prints
/// those that are to be seen on std::cerr. Not for use from two threads at a time.
class VELLOREADER_API FltWarningMessageConsole
{
public:
    virtual ~FltWarningMessageConsole();

    /// The console as an object. All that it does is reached statically.
    static FltWarningMessageConsole* getInstance();

    /// Keeps a message and, if @p print is true, writes it to std::cerr with its level and a blank line.
    /// @param text  kept as a pointer, so it must live as long as the process; see keepText(). A null text
    /// sets
    ///              the bad bit of std::cerr and loses all later output there.
    /// @param level 1 for a remark on the data, 2 for a damaged file that can go on, 3 for an error
    static void notifyMessage(char const* text, int level, bool print);

    /// Writes all messages of at least @p minimumLevel to std::cerr, in order.
    static void showMessagesConsole(int minimumLevel);

    /// @name A level for hosts. Nothing here reads it.
    /// @{
    static void setWarningLevel(int level);
    static void setDefaultWarningLevel();
    /// @}

    /// A copy of @p text that lives as long as the process; equal texts share one copy.
    static char const* keepText(std::string const& text);

    /// @name Damage in a file
    /// The parser tells where it stands; whoever meets damage tells what is wrong and what was left out.
    /// @{

    /// Starts a file: damage is reported under this name.
    static void beginFile(char const* fileName);

    /// Tells the record that is being read.
    static void setPosition(std::size_t byteOffset, int opcode);

    /// Reports damage at level 2, printed, with file, byte offset and opcode. Of each file only the first
    /// faults are told (FltLimits::damageReports).
    static void notifyDamage(std::string const& what);
    /// @}

    static std::vector<FltWarningMessage> setOfMessages; ///< All messages of the process.
    static int currentWarningLevel;

private:
    static FltWarningMessageConsole* instance;
};

#pragma once

#include "messages/FltWarningMessage.h"
#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <memory>
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

    /// Keeps a message and, if @p print is true, writes it to std::cerr with its level and a blank line. On a
    /// terminal control characters of the text are shown as "\x1b" and the like.
    /// @param text  kept as a pointer, so it must live as long as the process; see keepText(). A null text
    ///              sets the bad bit of std::cerr, and all later output there is lost.
    /// @param level 1 for a remark on the data, 2 for a damaged file that can go on, 3 for an error
    static void notifyMessage(char const* text, int level, bool print);

    /// Prints that a file can't be opened, in a line without a level. It isn't kept.
    static void notifyUnopened(char const* fileName);

    /// Writes all messages of at least @p minimumLevel to std::cerr, in order.
    static void showMessagesConsole(int minimumLevel);

    /// @name A level for hosts. Nothing here reads it.
    /// @{
    static void setWarningLevel(int level); ///< Sets it.
    static void setDefaultWarningLevel();   ///< Sets it to 2.
    /// @}

    /// A copy of @p text that lives as long as the process; equal texts share one copy.
    static char const* keepText(std::string const& text);

    /// @name Guards
    /// Messages of the library's own guards. A file may cause millions of them: of each kind the first are
    /// reported one by one (FltLimits::messagesOfAKind), and the others as a number at the end. The process
    /// keeps a bounded number of them (FltLimits::keptMessages).
    /// @{

    /// Counts the messages of a conversion or a parse by kind, while this object lives. One that is made
    /// while another lives does nothing.
    class VELLOREADER_API Count
    {
    public:
        Count();
        ~Count();
        Count(Count const&) = delete;
        Count& operator=(Count const&) = delete;

        /// Reports how many more messages there were of each kind. Call it when the conversion has ended.
        void finish();

    private:
        bool isOutermost;
    };

    /// Counts and places of their own for as long as this object lives, for a conversion that starts in the
    /// middle of another one. Those of the other one come back afterwards.
    class VELLOREADER_API Session
    {
    public:
        Session();
        ~Session();
        Session(Session const&) = delete;
        Session& operator=(Session const&) = delete;

    private:
        struct State;
        std::unique_ptr<State> state;
    };

    /// Reports at level 2, printed: "WARNING ! ", the kind and the detail.
    /// @param kind what is the same for all messages of a kind
    static void notifyGuard(std::string const& kind, std::string const& detail = "");

    /// Starts a file: damage is reported under this name. A null name is an empty one.
    static void beginFile(char const* fileName);

    /// Sets the record that is being read.
    /// @param byteOffset of the record's first byte in the file
    static void setPosition(std::size_t byteOffset, int opcode);

    /// Reports damage in the file, with its name, the byte offset and the opcode of the record.
    static void notifyDamage(std::string const& kind, std::string const& detail = "");
    /// @}

    /// A place in a file.
    struct Place {
        std::string fileName;       ///< As it was opened.
        std::size_t byteOffset = 0; ///< Of the record's first byte.
        int opcode = 0;             ///< Of that record.
    };

    /// Gets messages instead of the console.
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /// @param place where damage is; null for a message that belongs to no place
        virtual void take(char const* text, int level, Place const* place) = 0;

        /// There were @p more messages of a kind than those that were reported one by one.
        virtual void takeCount(std::string const& kind, int more) = 0;
    };

    /// Sends all messages to a listener from now on: nothing is printed or kept then. Null sends them to the
    /// console again. The listener isn't owned.
    /// @return the earlier listener, or null
    static Listener* setListener(Listener* listener);

    static std::vector<FltWarningMessage> setOfMessages; ///< All messages of the process.
    static int currentWarningLevel;                      ///< What setWarningLevel() has set.

private:
    static FltWarningMessageConsole* instance;
};

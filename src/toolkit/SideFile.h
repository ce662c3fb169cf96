#pragma once

#include "toolkit/VelloReaderExport.h"

/// A file that the library writes beside a database, as its log and its statistics. Its name follows from the
/// database's, so anything may stand there already: opening it must neither harm another file nor wait.
class VELLOREADER_API SideFile
{
public:
    enum class Outcome {
        opened,
        failed,  ///< It can't be opened for writing: a directory, no permission, no folder to make it in.
        refused, ///< Something stands there that isn't a plain file of its own.
    };

    /// What an existing file is to become.
    enum class Content { emptied, appendedTo };

    /// Opens a regular file with no other name, or makes a new one. Links aren't followed; a pipe, a device, a
    /// file with a second name and the database itself are refused.
    /// @param database the name of the database; null if there is none
    SideFile(char const* path, char const* database, Content content);

    /// Closes the file unless it was released.
    ~SideFile();

    SideFile(SideFile const&) = delete;
    SideFile& operator=(SideFile const&) = delete;

    Outcome getOutcome() const { return outcome; }

    /// Hands the open file over. @return its descriptor, or -1
    int release();

private:
    Outcome outcome;
    int descriptor = -1;
};

#pragma once

#include "toolkit/VelloReaderExport.h"

/// A file that the library writes next to a database: its log or its statistics. Its name is made from the
/// database's, so there may be anything of that name already: opening it must neither harm another file nor
/// wait.
class VELLOREADER_API SideFile
{
public:
    /// What came of opening a file.
    enum class Outcome {
        opened,  ///< It is open for writing.
        failed,  ///< It can't be opened for writing: a directory, no permission, no folder to make it in.
        refused, ///< There is something else than a plain file with this name alone.
    };

    /// What happens to an existing file.
    enum class Content { emptied, appendedTo };

    /// Opens a regular file with no other name, or makes a new one. Links aren't followed; a pipe, a device,
    /// a file with a second name and the database itself are refused.
    /// @param database the name of the database; null if there is none
    SideFile(char const* path, char const* database, Content content);

    /// Closes the file unless it was released.
    ~SideFile();

    SideFile(SideFile const&) = delete;
    SideFile& operator=(SideFile const&) = delete;

    Outcome getOutcome() const { return outcome; } ///< What came of opening this one.

    /// Gives the open file to the caller.
    /// @return its descriptor, or -1
    int release();

private:
    Outcome outcome;
    int descriptor = -1;
};

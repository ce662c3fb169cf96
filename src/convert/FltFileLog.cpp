#include "convert/FltFileLog.h"

#include "dump/FltLogBuffer.h"
#include "messages/FltWarningMessageConsole.h"
#include "toolkit/SideFile.h"

#include <iostream>
#include <vector>

namespace
{

/// The log streams of finished conversions. std::cout may use the buffer of any until the process ends, so
/// they are never deleted.
std::vector<FltLogStream*>& retiredLogStreams()
{
    static auto* const streams = new std::vector<FltLogStream*>;
    return *streams;
}

} // namespace

void FltFileLog::open(char const* path, char const* database)
{
    retiredLogStreams().push_back(nullptr);
    logStream = new FltLogStream;
    retiredLogStreams().back() = logStream;
    SideFile::Outcome const outcome = logStream->buffer.open(path, database);
    if (outcome != SideFile::Outcome::opened)
        logStream->setstate(std::ios_base::failbit);
    if (outcome == SideFile::Outcome::refused)
        FltWarningMessageConsole::notifyGuard("No log is written: what stands at its place is a link, has a "
                                              "second name, or isn't a plain file. "
                                              "Remove it, or convert a copy",
                                              std::string(": ") + path);
    std::cout.rdbuf(&logStream->buffer);
    fileLoggingEnabled = true;
}

void FltFileLog::close()
{
    if (!fileLoggingEnabled)
        return;
    if (!logStream->buffer.close())
        logStream->setstate(std::ios_base::failbit);
    fileLoggingEnabled = false;
}

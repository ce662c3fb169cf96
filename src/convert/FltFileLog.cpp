#include "convert/FltFileLog.h"

#include "dump/FltLogBuffer.h"

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

void FltFileLog::open(char const* path)
{
    logStream = new FltLogStream;
    retiredLogStreams().push_back(logStream);
    if (!logStream->buffer.open(path))
        logStream->setstate(std::ios_base::failbit);
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

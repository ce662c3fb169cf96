#include "complete/FltCompleteConversion.h"

#include "complete/FltCompleteFiles.h"
#include "dump/FltDumpOutput.h"
#include "messages/FltWarningMessageConsole.h"

FltCompleteConversion::Result FltCompleteConversion::convert(std::string const& fileName,
                                                             Options const& options)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltWarningMessageConsole::Count messages;
    Result result;
    try {
        FltCompleteFiles(options, result).convert(fileName);
    } catch (FltCompleteFiles::Cancelled const&) {
        result = Result();
        result.outcome = Outcome::cancelled;
    }
    messages.finish();
    return result;
}

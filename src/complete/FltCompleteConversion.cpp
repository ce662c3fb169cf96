#include "complete/FltCompleteConversion.h"

#include "complete/FltCompleteFiles.h"
#include "dump/FltDumpOutput.h"
#include "messages/FltWarningMessageConsole.h"

#include <utility>

namespace
{

FltCompleteConversion::Result convertInput(FltFileInput& input, FltCompleteConversion::Options const& options)
{
    FltWarningMessageConsole::Count messages;
    FltCompleteConversion::Result result;
    try {
        FltCompleteFiles(options, result).convert(input);
    } catch (FltCompleteFiles::Cancelled const&) {
        result = {};
        result.outcome = FltCompleteConversion::Outcome::cancelled;
    }
    messages.finish();
    return result;
}

} // namespace

FltCompleteConversion::Result FltCompleteConversion::convert(std::string const& fileName,
                                                             Options const& options)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(fileName.c_str());
    return convertInput(input, options);
}

FltCompleteConversion::Result FltCompleteConversion::convert(std::string const& fileName, OpenFile file,
                                                             Options const& options)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(fileName.c_str(), std::move(file));
    return convertInput(input, options);
}

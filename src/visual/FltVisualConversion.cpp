#include "visual/FltVisualConversion.h"

#include "dump/FltDumpOutput.h"
#include "messages/FltWarningMessageConsole.h"
#include "visual/FltVisualFiles.h"

#include <utility>

namespace
{

FltVisualConversion::Result convertInput(FltFileInput& input, FltVisualConversion::Options const& options)
{
    FltWarningMessageConsole::Count messages;
    FltVisualConversion::Result result;
    try {
        FltVisualFiles(options, result).convert(input);
    } catch (FltVisualFiles::Cancelled const&) {
        result = {};
        result.outcome = FltVisualConversion::Outcome::cancelled;
    }
    messages.finish();
    return result;
}

} // namespace

FltVisualConversion::Result FltVisualConversion::convert(std::string const& fileName, Options const& options)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(fileName.c_str());
    return convertInput(input, options);
}

FltVisualConversion::Result FltVisualConversion::convert(std::string const& fileName, OpenFile file,
                                                         Options const& options)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(fileName.c_str(), std::move(file));
    return convertInput(input, options);
}

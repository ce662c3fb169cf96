#include "loader/FltMessageCollector.h"

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/errors/SoReadError.h>
#include <algorithm>
#include <utility>

namespace
{

FltMessage::Level levelOf(int number)
{
    return static_cast<FltMessage::Level>(std::clamp(number, 1, 3));
}

/// The text without what only makes sense on a console: its first word and line ends.
std::string withoutDecoration(std::string text)
{
    for (char const* const word : {"WARNING ! ", "ERROR ! ", "ERROR! "}) {
        std::string const prefix = word;
        if (text.compare(0, prefix.size(), prefix) == 0) {
            text.erase(0, prefix.size());
            break;
        }
    }
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

template <class Error>
SoErrorCB* exchangeHandler(SoErrorCB* callback, void*& data)
{
    SoErrorCB* const before = Error::getHandlerCallback();
    void* const dataBefore = Error::getHandlerData();
    Error::setHandlerCallback(callback, data);
    data = dataBefore;
    return before;
}

} // namespace

FltMessageCollector::FltMessageCollector() : listenerBefore(FltWarningMessageConsole::setListener(this))
{
    debugBefore.data = readBefore.data = memoryBefore.data = this;
    debugBefore.callback = exchangeHandler<SoDebugError>(takeToolkitMessage, debugBefore.data);
    readBefore.callback = exchangeHandler<SoReadError>(takeToolkitMessage, readBefore.data);
    memoryBefore.callback = exchangeHandler<SoMemoryError>(takeToolkitMessage, memoryBefore.data);
}

FltMessageCollector::~FltMessageCollector()
{
    SoMemoryError::setHandlerCallback(memoryBefore.callback, memoryBefore.data);
    SoReadError::setHandlerCallback(readBefore.callback, readBefore.data);
    SoDebugError::setHandlerCallback(debugBefore.callback, debugBefore.data);
    FltWarningMessageConsole::setListener(listenerBefore);
}

void FltMessageCollector::add(FltMessage message)
{
    std::string const key = std::to_string(static_cast<int>(message.level)) + ' ' +
                            std::to_string(message.offset) + ' ' + message.file + '\n' + message.text;
    auto const [known, isNew] = positions.try_emplace(key, collected.size());
    if (isNew)
        collected.push_back(std::move(message));
    else
        collected[known->second].count += message.count;
}

void FltMessageCollector::take(char const* text, int level, FltWarningMessageConsole::Place const* place)
{
    FltMessage message;
    message.level = levelOf(level);
    message.text = withoutDecoration(text != nullptr ? text : "");
    if (place != nullptr) {
        message.file = place->fileName;
        message.offset = static_cast<std::int64_t>(place->byteOffset);
        message.opcode = place->opcode;
    }
    add(std::move(message));
}

void FltMessageCollector::takeCount(std::string const& kind, int more)
{
    FltMessage message;
    message.text = "further ones of this kind: " + kind;
    message.count = more;
    add(std::move(message));
}

void FltMessageCollector::takeToolkitMessage(SoError const* error, void* collector)
{
    FltMessage message;
    message.text = withoutDecoration(error->getDebugString().getString());
    static_cast<FltMessageCollector*>(collector)->add(std::move(message));
}

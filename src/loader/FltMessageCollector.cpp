#include "loader/FltMessageCollector.h"

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

} // namespace

FltMessageCollector::FltMessageCollector() : listenerBefore(FltWarningMessageConsole::setListener(this)) {}

FltMessageCollector::~FltMessageCollector()
{
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
    message.file = file;
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
    message.file = file;
    message.count = more;
    add(std::move(message));
}

void FltMessageCollector::takeToolkitMessage(SoError const* error, void* collector)
{
    FltMessage message;
    message.text = withoutDecoration(error->getDebugString().getString());
    static_cast<FltMessageCollector*>(collector)->add(std::move(message));
}

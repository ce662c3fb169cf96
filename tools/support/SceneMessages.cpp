#include "support/SceneMessages.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>

namespace
{

/// A message in one line.
std::string lineOf(FltMessage const& message)
{
    std::string line = message.file.empty() ? message.text : message.file + ": " + message.text;
    if (message.offset >= 0)
        line += " (record with opcode " + std::to_string(message.opcode) + " at byte offset " +
                std::to_string(message.offset) + ")";
    if (message.count > 1)
        line += " (" + std::to_string(message.count) + " times)";
    return line;
}

} // namespace

SceneMessages::SceneMessages(Program const& program) : program(program)
{
    SoDB::init();
    SoInteraction::init();
    void* const data = const_cast<Program*>(&program); // only given back, as const
    SoDebugError::setHandlerCallback(takeToolkitMessage, data);
    SoReadError::setHandlerCallback(takeToolkitMessage, data);
}

SceneMessages::~SceneMessages()
{
    SoDebugError::setHandlerCallback(nullptr, nullptr);
    SoReadError::setHandlerCallback(nullptr, nullptr);
}

void SceneMessages::show(std::vector<FltMessage> const& messages) const
{
    constexpr std::size_t mostShown = 20;
    std::size_t shown = 0;
    for (FltMessage const& message : messages) {
        if (++shown > mostShown)
            break;
        if (message.level == FltMessage::Level::error)
            program.error(lineOf(message));
        else
            program.warn(lineOf(message));
    }
    if (shown > mostShown)
        program.warn(std::to_string(messages.size() - mostShown) + " more messages left out");
}

void SceneMessages::takeToolkitMessage(SoError const* message, void* program)
{
    std::string text = message->getDebugString().getString();
    // With an off-screen context and no X server the toolkit posts this once; it has no consequences.
    if (text.find("glxglue_isdirect") != std::string::npos)
        return;
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    static_cast<Program const*>(program)->warn(text);
}

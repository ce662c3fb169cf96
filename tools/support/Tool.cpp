#include "support/Tool.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <csignal>
#include <cstdio>
#include <utility>

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

Tool::Tool(std::string name, bool quiet) : name(std::move(name)), quiet(quiet)
{
    // A file that grows beyond the limit is reported then, as a full disk is.
    std::signal(SIGXFSZ, SIG_IGN);
    SoDB::init();
    SoInteraction::init();
    SoDebugError::setHandlerCallback(takeToolkitMessage, this);
    SoReadError::setHandlerCallback(takeToolkitMessage, this);
}

Tool::~Tool()
{
    SoDebugError::setHandlerCallback(nullptr, nullptr);
    SoReadError::setHandlerCallback(nullptr, nullptr);
}

FltScene Tool::load(FltLoader const& loader, std::string const& path) const
{
    FltScene scene = loader.load(path);
    show(scene);
    return scene;
}

void Tool::show(FltScene const& scene) const
{
    constexpr std::size_t mostShown = 20;
    std::size_t shown = 0;
    for (FltMessage const& message : scene.messages()) {
        if (++shown > mostShown)
            break;
        if (message.level == FltMessage::Level::error)
            error(lineOf(message));
        else
            warn(lineOf(message));
    }
    if (shown > mostShown)
        warn(std::to_string(scene.messages().size() - mostShown) + " more messages left out");
}

void Tool::error(std::string const& text) const
{
    std::fprintf(stderr, "%s: %s\n", name.c_str(), text.c_str());
}

void Tool::warn(std::string const& text) const
{
    if (!quiet)
        std::fprintf(stderr, "%s: warning: %s\n", name.c_str(), text.c_str());
}

void Tool::takeToolkitMessage(SoError const* message, void* tool)
{
    std::string text = message->getDebugString().getString();
    // With an off-screen context and no X server the toolkit posts this once; it has no consequences.
    if (text.find("glxglue_isdirect") != std::string::npos)
        return;
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    static_cast<Tool const*>(tool)->warn(text);
}

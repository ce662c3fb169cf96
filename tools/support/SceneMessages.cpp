#include "support/SceneMessages.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <string>

SceneMessages::SceneMessages(Program const& program) : messages(program)
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

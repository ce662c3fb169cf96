#pragma once

#include "support/LoadMessages.h"

class SoError;

/// Starts the toolkit for a program, and shows what the toolkit and the scenes have to say: lines on standard
/// error that begin with the program's name.
class SceneMessages
{
public:
    explicit SceneMessages(Program const& program);
    ~SceneMessages();

    SceneMessages(SceneMessages const&) = delete;
    SceneMessages& operator=(SceneMessages const&) = delete;

    /// Shows the messages about a database. @param loaded as LoadMessages does
    void show(FltScene const& loaded) const { messages.show(loaded); }
    void show(FltVisual const& loaded) const { messages.show(loaded); }

private:
    static void takeToolkitMessage(SoError const* message, void* program);

    LoadMessages messages;
};

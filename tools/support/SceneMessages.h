#pragma once

#include "support/Program.h"

#include "loader/FltScene.h"

#include <vector>

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

    /// Shows the messages of a scene, one line each, the first of them alone if there are many.
    void show(FltScene const& scene) const { show(scene.messages()); }

    /// The same for messages alone.
    void show(std::vector<FltMessage> const& messages) const;

private:
    static void takeToolkitMessage(SoError const* message, void* program);

    Program const& program;
};

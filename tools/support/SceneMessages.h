#pragma once

#include "support/Program.h"

#include "loader/FltScene.h"
#include "loader/FltVisual.h"

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

    /// Shows the messages about a database. Those of one cause in a file are one line, and of many only the
    /// first are shown; a verbose program shows each, and where missing textures were looked for.
    /// @param loaded its scene, or its visual
    void show(FltScene const& loaded) const { show(loaded.messages(), loaded.textures()); }
    void show(FltVisual const& loaded) const { show(loaded.messages, loaded.textures); }

private:
    void show(std::vector<FltMessage> const& messages, std::vector<FltTexture> const& textures) const;
    static void takeToolkitMessage(SoError const* message, void* program);

    Program const& program;
};

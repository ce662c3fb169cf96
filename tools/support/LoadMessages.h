#pragma once

#include "support/Program.h"

#include "loader/FltScene.h"
#include "loader/FltVisual.h"

#include <vector>

/// Shows what a load has to say, in lines on standard error that begin with the program's name. The toolkit
/// needn't be started.
class LoadMessages
{
public:
    /// @param program lives longer
    explicit LoadMessages(Program const& program) : program(program) {}

    /// Shows the messages about a database. Those of one cause in a file are one line, and of many only the
    /// first are shown; a verbose program shows each, and where missing textures were looked for.
    /// @param loaded its scene, or its visual
    void show(FltScene const& loaded) const { show(loaded.messages(), loaded.textures()); }
    void show(FltVisual const& loaded) const { show(loaded.messages, loaded.textures); }

private:
    void show(std::vector<FltMessage> const& messages, std::vector<FltTexture> const& textures) const;

    Program const& program;
};

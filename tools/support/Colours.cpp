#include "support/Colours.h"

#include <cstdlib>
#include <unistd.h>

namespace
{

bool isWanted()
{
    char const* const noColour = std::getenv("NO_COLOR");
    char const* const terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') && terminal != nullptr &&
           std::string_view(terminal) != "dumb";
}

} // namespace

Colours::Colours(Mode mode) : isOn(mode == Mode::always || (mode == Mode::automatic && isWanted())) {}

std::string Colours::in(char const* code, std::string_view text) const
{
    if (!isOn || text.empty())
        return std::string(text);
    return std::string("\x1b[") + code + "m" + std::string(text) + "\x1b[0m";
}

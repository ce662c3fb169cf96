#pragma once

#include <Inventor/SbColor.h>
#include <optional>
#include <string>

class SoSeparator;

/// What is seen behind a scene: a colour, or two that pass into each other.
class Backdrop
{
public:
    Backdrop(SbColor const& top, SbColor const& bottom) : top(top), bottom(bottom) {}

    /// A sky that is pale at the bottom of the picture.
    static Backdrop sky();

    /// @param text "sky", "#rrggbb", a name such as "white", or two of them from the top: "navy,#ffffff"
    /// @return nothing if it says no colour
    static std::optional<Backdrop> fromText(std::string const& text);

    /// The nodes that fill the picture.
    SoSeparator* makeNodes() const;

    SbColor top;
    SbColor bottom;
};

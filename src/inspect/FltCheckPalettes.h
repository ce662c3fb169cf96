#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltTextTransfer.h"

/// Palettes, and what names their entries: 3xx.
class FltCheckPalettes : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkSurface(FltInventory::Surface const& surface, int opcode);
    void checkRepetitions(FltInventory::Palette const& palette, char const* what);

    FltTextTransfer const transfer{inventory};
};

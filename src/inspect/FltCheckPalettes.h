#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltTextTransfer.h"

#include <cstdint>
#include <map>

/// Palettes, and what names their entries: 3xx.
class FltCheckPalettes : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    /// Mappings that faces of one texture name in vain.
    struct Mappings {
        std::uint64_t offset; ///< Of the first face.
        int opcode;
        int mapping;
        bool hasOthers = false;
        std::uint64_t count = 0;
    };

    void checkSurface(FltInventory::Surface const& surface, int opcode);
    void checkRepetitions(FltInventory::Palette const& palette, char const* what);

    void takeMapping(FltInventory::Surface const& surface, int opcode);
    void tellMappings();

    std::map<int, Mappings> undefinedMappings; ///< By texture; below zero for none.
    FltTextTransfer const transfer{inventory};
};

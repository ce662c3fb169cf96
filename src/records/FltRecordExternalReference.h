#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A node whose content stands in another file.
class FltRecordExternalReference : public FltRecordOf<FltRecordExternalReference, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::externalReference;
    static constexpr std::string_view title = "\n EXTERNAL REFERENCE RECORD ";

    char asciiPath[200] = {}; ///< Not terminated when it fills its two hundred characters.
    std::int32_t reserved1 = 0;
    std::uint32_t Flags = 0;
    std::int16_t reserved2 = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("asciiPath", self.asciiPath, dumpAs::text(&self.reserved2 + 1));
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("Flags", self.Flags, dumpAs::heading);
        visit.flag("colorPaletteOverride", self.Flags, 31, "      Color palette override: ");
        visit.flag("materialPaletteOverride", self.Flags, 30, "      Material palette override: ");
        visit.flag("textureAndTextureMappingPaletteOverride", self.Flags, 29,
                   "      Texture and texture mapping palette override: ");
        visit.flag("lineStylePaletteOverride", self.Flags, 28, "      Line style palette override: ");
        visit.flag("soundPaletteOverride", self.Flags, 27, "      Sound palette override: ");
        visit.flag("lightSourcePaletteOverride", self.Flags, 26, "      Light source palette override: ");
        visit.flag("lightPointPaletteOverride", self.Flags, 25, "      Light point palette override: ");
        visit.skip(2);
        visit("reserved2", self.reserved2, dumpAs::nothing);
    }
};

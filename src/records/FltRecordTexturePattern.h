#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// One entry of the texture table. The record's length says which of two forms it has:
class FltRecordTexturePattern : public FltRecordOf<FltRecordTexturePattern, PaletteFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::texturePattern;
    static constexpr std::string_view title = "\n TEXTURE_PATTERN RECORD ";

    /// Length of a record with a short file name.
    static constexpr unsigned int shortFormLength = 96;

    /// The image's file, as the file writes it. Without a zero if it takes all of its room; the short form
    /// leaves the bytes from 80 on zero.
    char fileName[200] = {};
    std::int32_t patternIndex = 0; ///< Slot in the texture table.
    std::int32_t XlocationInTexturePalette = 0;
    std::int32_t YlocationInTexturePalette = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        int const fileNameSize = visit.when(self.length != shortFormLength) ? 200 : 80;
        visit.first(fileNameSize, "fileName", self.fileName,
                    dumpAs::text(&self.YlocationInTexturePalette + 1));
        visit("patternIndex", self.patternIndex);
        visit("XlocationInTexturePalette", self.XlocationInTexturePalette);
        visit("YlocationInTexturePalette", self.YlocationInTexturePalette);
    }
};

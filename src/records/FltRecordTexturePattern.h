#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// One entry of the texture table. The record's length tells which of two forms it has:
///
/// | Field                       | Type  | Length exactly 96 | Any other length |
/// |-----------------------------|-------|-------------------|------------------|
/// | `fileName`                  | char  | 80 bytes at 4     | 200 bytes at 4   |
/// | `patternIndex`              | int32 | 84                | 204              |
/// | `XlocationInTexturePalette` | int32 | 88                | 208              |
/// | `YlocationInTexturePalette` | int32 | 92                | 212              |
class FltRecordTexturePattern : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::texturePattern; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// The image's file, as the file writes it. Without a zero if it takes all of its room; the short form
    /// leaves the bytes from 80 on zero.
    char fileName[200] = {};
    std::int32_t patternIndex = 0; ///< Slot in the texture table.
    std::int32_t XlocationInTexturePalette = 0;
    std::int32_t YlocationInTexturePalette = 0;
};

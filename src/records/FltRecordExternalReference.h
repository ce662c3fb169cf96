#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A node whose content stands in another file.
///
/// | Offset | Type      | Field       |                                                                    |
/// |--------|-----------|-------------|--------------------------------------------------------------------|
/// | 4      | char[200] | `asciiPath` | path of the file                                                   |
/// | 204    | int32     | reserved    |                                                                    |
/// | 208    | uint32    | `Flags`     | palettes that are overridden, see below                            |
/// | 212    | 2 bytes   |             | skipped                                                            |
/// | 214    | int16     | reserved    |                                                                    |
///
/// Flags: bit 31 colour palette, 30 material, 29 texture and texture mapping, 28 line style, 27 sound, 26
/// light source, 25 light point palette.
class FltRecordExternalReference : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::externalReference; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char asciiPath[200] = {}; ///< Not terminated when it fills its two hundred characters.
    std::int32_t reserved1 = 0;
    std::uint32_t Flags = 0;
    std::int16_t reserved2 = 0;
};

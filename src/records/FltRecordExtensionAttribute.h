#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>
#include <memory>

/// An attribute that the format itself doesn't know.
///
/// | Offset | Type              | Field           |
/// |--------|-------------------|-----------------|
/// | 4      | char[8]           | `idASCII`       |
/// | 12     | char[8]           | `idSite`        |
/// | 20     | uint8             | reserved        |
/// | 21     | uint8             | `revision`      |
/// | 22     | uint16            | `recordCode`    |
/// | 24     | byte[length - 24] | `extensionData` |
class FltRecordExtensionAttribute : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::extensionAttribute; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {};
    char idSite[8] = {};
    std::uint8_t reserved = 0;
    std::uint8_t revision = 0;
    std::uint16_t recordCode = 0;
    std::unique_ptr<char[]> extensionData; ///< Length minus 24 bytes, never dumped.
};

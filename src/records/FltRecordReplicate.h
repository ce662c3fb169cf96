#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// How many times the node before is repeated.
///
/// | Offset | Type  | Field                  |
/// |--------|-------|------------------------|
/// | 4      | int32 | `numberOfReplications` |
/// | 8      | int32 | reserved               |
class FltRecordReplicate : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::replicate; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t numberOfReplications = 0;
    std::int32_t reserved = 0;
};

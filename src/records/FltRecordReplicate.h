#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// How many times the node before is repeated.
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

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("numberOfReplications", self.numberOfReplications);
        visit("reserved", self.reserved, dumpAs::nothing);
    }
};

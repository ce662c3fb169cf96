#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// How many times the node before is repeated.
class FltRecordReplicate : public FltRecordOf<FltRecordReplicate, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::replicate;
    static constexpr std::string_view title = "\n REPLICATE RECORD ";

    std::int32_t numberOfReplications = 0;
    std::int32_t reserved = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("numberOfReplications", self.numberOfReplications);
        visit("reserved", self.reserved, dumpAs::nothing);
    }
};

#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <memory>

/// The full name of the node before, where the eight characters of its own record don't hold it.
class FltRecordLongID : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::longID; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// The name with a zero after it; null before the record is decoded. Zeros inside the name are kept.
    std::unique_ptr<char[]> idASCII;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.rest("idASCII", self.idASCII, self.length);
    }
};

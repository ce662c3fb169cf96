#pragma once

#include "records/AbstractFltRecord.h"

#include <algorithm>
#include <memory>

/// A record whose opcode has no class. Its bytes are kept and never dumped.
///
/// What is kept begins with the opcode word and lacks the record's last four bytes.
class FltRecordUnknown : public AbstractFltRecord
{
public:
    FltRecordUnknown(int opcode, unsigned int length) : AbstractFltRecord(length), opcode(opcode) {}

    int getOpcode() const override { return opcode; }
    std::string getRecordCategory() const override { return recordCategory; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;
    virtual void setRecordCategory(std::string const& category) { recordCategory = category; }

    int opcode;                      ///< As in the file, taken as a signed 16-bit number.
    std::unique_ptr<char[]> rawData; ///< Length minus 4 bytes.
    std::string recordCategory;      ///< Empty: the record goes by no category.

    /// Bytes of rawData.
    unsigned int getRawSize() const { return std::max(length, 4U) - 4; }

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.bytes("rawData", self.rawData.get(), self.getRawSize());
    }
};

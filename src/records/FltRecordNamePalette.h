#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>
#include <map>
#include <string>

/// Names by number.
///
/// | Offset | Type    | Field                                              |
/// |--------|---------|----------------------------------------------------|
/// | 4      | int32   | `numberOfNames`                                    |
/// | 8      | uint16  | `nextAvailableIndex`                               |
/// | 10     | entries | `numberOfNames` entries, one behind the other      |
///
/// An entry:
///
/// | Offset | Type             | Field                                          |
/// |--------|------------------|------------------------------------------------|
/// | 0      | uint32           | length of the entry in bytes, these 6 included |
/// | 4      | uint16           | index                                          |
/// | 6      | char[length - 6] | name                                           |
///
/// The entries end where the record does, whatever their number says: one that doesn't fit, or says that it
/// is shorter than its own head, ends the reading and is reported as damage.
class FltRecordNamePalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::namePalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t numberOfNames = 0; ///< As in the file, also where fewer entries fit into the record.
    std::uint16_t nextAvailableIndex = 0;

    /// The names by their index, each up to its first zero. Of several with the same index the last counts.
    std::map<int, std::string> setOfNames;
};

#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>
#include <map>
#include <string>

class FltFieldDecoder;

/// Names by number.
///
/// The entries end where the record does, whatever their number says: one that doesn't fit, or says that it
/// is shorter than its own head, ends the reading and is reported as damage.
class FltRecordNamePalette : public FltRecordOf<FltRecordNamePalette, PaletteFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::namePalette;
    static constexpr std::string_view title = "\n NAME PALETTE RECORD ";

    std::int32_t numberOfNames = 0; ///< As in the file, also where fewer entries fit into the record.
    std::uint16_t nextAvailableIndex = 0;

    /// The names by their index, each up to its first zero. Of several with the same index the last counts.
    std::map<int, std::string> setOfNames;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("numberOfNames", self.numberOfNames);
        visit("nextAvailableIndex", self.nextAvailableIndex);
        if constexpr (Visitor::decodes)
            self.getNamesFromData(visit);
        if constexpr (Visitor::dumps)
            for (auto const& [index, name] : self.setOfNames)
                (visit.dump << "name[" << index << "] : " << name).endLine();
        if constexpr (Visitor::lists)
            for (auto const& [index, name] : self.setOfNames) {
                visit.openElement("names");
                visit.number("index", index);
                visit.text("name", name);
                visit.close();
            }
    }

private:
    void getNamesFromData(FltFieldDecoder& decoder);
};

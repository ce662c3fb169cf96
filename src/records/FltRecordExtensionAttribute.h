#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <algorithm>
#include <cstdint>
#include <memory>

/// An attribute that the format itself doesn't know.
class FltRecordExtensionAttribute : public FltRecordOf<FltRecordExtensionAttribute, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::extensionAttribute;
    static constexpr std::string_view title = "\n EXTENSION ATTRIBUTE RECORD ";

    /// Bytes of extensionData.
    unsigned int getExtensionSize() const { return std::max(length, 24U) - 24; }

    char idASCII[8] = {};
    char idSite[8] = {};
    std::uint8_t reserved = 0;
    std::uint8_t revision = 0;
    std::uint16_t recordCode = 0;
    std::unique_ptr<char[]> extensionData; ///< Length minus 24 bytes, never dumped.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        // An address is not for the dump: text without an end stops before the buffer's.
        visit("idASCII", self.idASCII, dumpAs::text(&self.extensionData));
        visit("idSite", self.idSite, dumpAs::text(&self.extensionData));
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("revision", self.revision);
        visit("recordCode", self.recordCode);
        if constexpr (Visitor::decodes)
            self.extensionData.reset(new char[self.getExtensionSize()]);
        visit.bytes("extensionData", self.extensionData.get(), self.getExtensionSize());
    }
};

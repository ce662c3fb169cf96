#include "inspect/FltCheckRecords.h"

#include "messages/FltFindingNumber.h"
#include "records/FltFields.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "records/FltRevision.h"
#include "records/FltUnits.h"

#include <algorithm>
#include <string>

namespace Number = FltFindingNumber;

void FltCheckRecords::check()
{
    auto const faultOffset = static_cast<std::int64_t>(inventory.faultOffset());
    std::string const rest =
        FltFraming::restFrom(inventory.faultOffset(), inventory.bytes()) + ", is left out";
    switch (inventory.fault()) {
    case FltFraming::Fault::none:
        break;
    case FltFraming::Fault::zeroLength:
        findings.addHere(Number::zeroLength, faultOffset, 0, rest);
        break;
    case FltFraming::Fault::pastEnd:
        findings.addHere(Number::recordPastEnd, faultOffset, 0, rest);
        break;
    case FltFraming::Fault::cutHead:
        findings.addHere(Number::cutHead, faultOffset, 0, rest);
        break;
    }
    for (FltInventory::ShortRecord const& record : inventory.shortRecords)
        findings.addHere(
            record.length < FltFieldReach::head ? Number::shorterThanHead : Number::shorterThanLayout,
            static_cast<std::int64_t>(record.offset), record.opcode,
            std::to_string(record.length) + " of " + std::to_string(record.leastLength) + " bytes");
    for (FltInventory::Complaint const& complaint : inventory.complaints)
        findings.addHere(Number::brokenPromise, static_cast<std::int64_t>(complaint.offset), complaint.opcode,
                         complaint.text);
    for (auto const& [opcode, facts] : inventory.opcodes)
        if (!FltOpcodeName::isKnown(opcode))
            findings.addHere(Number::unknownOpcode, static_cast<std::int64_t>(facts.first), opcode,
                             "opcode " + std::to_string(opcode), facts.count);
    checkTextTransfer();
    checkHeader();
}

void FltCheckRecords::checkHeader()
{
    FltInventory::Header const& header = inventory.header;
    if (!FltUnits::isKnown(static_cast<std::size_t>(header.units)))
        findings.addHere(Number::unknownUnit, 0, FltOpcode::header, "unit " + std::to_string(header.units));
    if (header.revision <= FltRevision::lastWithMultiplier && header.unitMultiplier == 0)
        findings.addHere(Number::zeroMultiplier, 0, FltOpcode::header, "");
}

void FltCheckRecords::checkTextTransfer()
{
    std::uint64_t traces = 0;
    std::uint64_t first = UINT64_MAX;
    auto const take = [&](std::int64_t number, std::uint64_t offset) {
        if (!transfer.hasTrace(number))
            return;
        ++traces;
        first = std::min(first, offset);
    };
    for (FltInventory::LostOffset const& lost : inventory.lostOffsets)
        take(lost.value, lost.record);
    for (FltInventory::Palette const* const palette : {&inventory.textures, &inventory.materials})
        for (auto const& [index, entry] : *palette)
            if (entry.repetition != 0)
                take(index, entry.repetition);
    if (traces != 0)
        findings.addHere(Number::textTransfer, static_cast<std::int64_t>(first), 0,
                         std::to_string(traces) + (traces == 1 ? " number" : " numbers") +
                             " with a line feed hit nothing, or are there twice");
}

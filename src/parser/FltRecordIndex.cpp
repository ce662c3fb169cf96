#include "parser/FltRecordIndex.h"

#include "parser/FltFraming.h"
#include "parser/FltInput.h"
#include "parser/FltStoredRecord.h"
#include "records/FltOpcode.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordJson.h"

#include <nlohmann/json.hpp>

FltRecordIndex::FltRecordIndex(FltInput& input) : input(input)
{
    if (!input.isInFlowCreated() || input.getBuffer() == nullptr)
        return;
    FltFraming framing(input.getBuffer(), static_cast<std::size_t>(input.getSize()));
    while (framing.next()) {
        if (places.empty() && framing.getOpcode() != FltOpcode::header)
            return;
        places.push_back({framing.getOffset(), static_cast<unsigned short>(framing.getLength()),
                          static_cast<unsigned short>(framing.getOpcode())});
    }
    if (places.empty())
        return;
    std::unique_ptr<FltRecord> const first = decode(0);
    auto const* const header = static_cast<FltRecordHeader const*>(first.get());
    version.revision = header->formatRevisionLevel;
    version.rgbMode = (header->flags >> 30 & 1) != 0;
}

char const* FltRecordIndex::bytes(std::size_t position) const
{
    return input.getBuffer() + places[position].offset;
}

std::unique_ptr<FltRecord> FltRecordIndex::decode(std::size_t position) const
{
    Place const& place = places[position];
    char const* const fileEnd = input.getBuffer() + input.getSize();
    return FltStoredRecord{bytes(position), fileEnd, place.opcode, place.length, version.revision}.decode();
}

nlohmann::ordered_json FltRecordIndex::json(std::size_t position) const
{
    return FltRecordJson::of(*decode(position), places[position].offset);
}

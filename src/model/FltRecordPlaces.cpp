#include "model/FltRecordPlaces.h"

void FltRecordPlaces::add(FltRecordView const& record)
{
    constexpr std::uint64_t opcodes = 0xffff;
    std::uint64_t const opcode = record.opcode & opcodes;
    if (file == nullptr && !record.isApart)
        file = record.data - record.offset;
    if (!record.isApart && record.data == file + record.offset) {
        places.push_back({record.offset, 0, opcode});
        return;
    }
    places.push_back({apart.size(), 1, opcode});
    apart.push_back(record);
}

FltRecordView FltRecordPlaces::operator[](std::size_t number) const
{
    Place const& place = places[number];
    if (place.isApart != 0)
        return apart[place.offset];
    char const* const data = file + place.offset;
    return {data, FltUtils::word16At(data + sizeof(std::uint16_t)), static_cast<std::uint32_t>(place.opcode),
            place.offset};
}

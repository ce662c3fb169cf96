#include "parser/FltStoredRecord.h"

#include "parser/FltRawData.h"
#include "records/FltRecord.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <cstdint>

std::size_t FltStoredRecord::borrowedBytes() const
{
    std::size_t const reach = FltRecordTable::reachOf(opcode, length, revision);
    return reach > length ? reach - length : 0;
}

std::unique_ptr<FltRecord> FltStoredRecord::make() const
{
    FltRecordRow const* const row = FltRecordTable::find(opcode);
    return std::unique_ptr<FltRecord>(row != nullptr
                                          ? row->make(length, revision)
                                          : new FltRecordUnknown(static_cast<std::int16_t>(opcode), length));
}

void FltStoredRecord::decodeTo(FltRecord& record, FltRawData& block) const
{
    block.assign(begin, fileEnd, length, FltRecordTable::reachOf(opcode, length, revision));
    record.getPropertiesFromData(block.data);
}

void FltStoredRecord::decodeTo(FltRecord& record) const
{
    FltRawData block;
    decodeTo(record, block);
}

std::unique_ptr<FltRecord> FltStoredRecord::decode() const
{
    std::unique_ptr<FltRecord> record = make();
    decodeTo(*record);
    return record;
}

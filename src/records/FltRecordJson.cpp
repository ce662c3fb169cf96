#include "records/FltRecordJson.h"

#include "records/FltJsonText.h"
#include "records/FltRecordFields.h"

std::string FltRecordJson::of(FltRecord const& record, std::uint64_t byteOffset)
{
    FltJsonText json;
    FltRecordFields::giveWhole(record, byteOffset, json);
    return std::string(json.written());
}

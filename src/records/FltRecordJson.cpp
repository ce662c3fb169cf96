#include "records/FltRecordJson.h"

#include "records/FltFieldLister.h"
#include "records/FltJsonText.h"

std::string FltRecordJson::of(FltRecord const& record, std::uint64_t byteOffset)
{
    std::string text;
    FltJsonText json(text);
    FltFieldLister::giveRecord(record, byteOffset, json);
    return text;
}

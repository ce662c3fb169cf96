#include "records/FltRecordJson.h"

#include "records/FltFieldJson.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

std::string FltRecordJson::of(FltRecord const& record, std::uint64_t byteOffset)
{
    auto const* const unknown = dynamic_cast<FltRecordUnknown const*>(&record);
    FltRecordRow const* const row = unknown == nullptr ? FltRecordTable::find(record.getOpcode()) : nullptr;
    std::string text;
    FltJsonText json(text);
    json.open('{');
    json.key("opcode");
    json.value(record.getOpcode());
    json.key("class");
    json.value(std::string_view(row != nullptr ? row->className : "FltRecordUnknown"));
    json.key("category");
    json.value(std::string_view(record.getRecordCategory()));
    json.key("length");
    json.value(record.getLength());
    json.key("offset");
    json.value(byteOffset);
    json.key("fields");
    json.open('{');
    FltFieldJson fields(json);
    if (row != nullptr)
        row->list(record, fields);
    else if (unknown != nullptr)
        FltRecordUnknown::fields(*unknown, fields);
    json.close('}');
    json.close('}');
    return text;
}

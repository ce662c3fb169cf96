#include "records/FltRecordJson.h"

#include "records/FltFieldJson.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

} // namespace

nlohmann::ordered_json FltRecordJson::of(FltRecord const& record, std::uint64_t byteOffset)
{
    FltRecordRow const* const row = FltRecordTable::find(record.getOpcode());
    Json fields = Json::object();
    FltFieldJson visitor(fields);
    bool const listed = row != nullptr && row->list(record, visitor);
    if (auto const* const unknown = dynamic_cast<FltRecordUnknown const*>(&record))
        FltRecordUnknown::fields(*unknown, visitor);
    return {{"opcode", record.getOpcode()},
            {"class", listed ? row->className : "FltRecordUnknown"},
            {"category", record.getRecordCategory()},
            {"length", record.getLength()},
            {"offset", byteOffset},
            {"fields", std::move(fields)}};
}

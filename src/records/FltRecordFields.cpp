#include "records/FltRecordFields.h"

#include "records/FltFieldColumns.h"
#include "records/FltFieldLister.h"
#include "records/FltJsonText.h"
#include "records/FltRecord.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <string_view>
#include <typeinfo>

namespace
{

bool isUnknown(FltRecord const& record)
{
    return typeid(record) == typeid(FltRecordUnknown);
}

/// The row of the class that a record is of; null if its opcode has none.
FltRecordRow const* rowOf(FltRecord const& record)
{
    return isUnknown(record) ? nullptr : FltRecordTable::find(record.getOpcode());
}

void list(FltRecordRow const& row, FltRecord const& record, FltFieldReceiver& receiver)
{
    row.list(record, receiver);
}

void list(FltRecordRow const& row, FltRecord const& record, FltJsonText& json)
{
    row.listAsJson(record, json);
}

void list(FltRecordRow const& row, FltRecord const& record, FltFieldColumns& columns)
{
    row.listInColumns(record, columns);
}

template <class Receiver>
void giveFields(FltRecordRow const* row, FltRecord const& record, Receiver& receiver)
{
    if (row != nullptr)
        return list(*row, record, receiver);
    if (!isUnknown(record))
        return;
    FltFieldLister<Receiver> values(receiver);
    FltRecordUnknown::fields(static_cast<FltRecordUnknown const&>(record), values);
}

template <class Receiver>
void giveText(Receiver& receiver, char const* key, std::string_view text)
{
    receiver.key(key);
    receiver.text(text);
}

template <class Receiver>
void giveNumber(Receiver& receiver, char const* key, std::uint64_t number)
{
    receiver.key(key);
    receiver.integer(static_cast<std::int64_t>(number));
}

template <class Receiver>
void giveCategory(Receiver& receiver, FltRecord const& record)
{
    FltRecordCategory const category = record.getCategory();
    if (category != FltRecordCategory::unknown)
        giveText(receiver, "category", nameOf(category));
    else
        giveText(receiver, "category", record.getRecordCategory());
}

template <class Receiver>
void giveObject(FltRecord const& record, std::uint64_t byteOffset, Receiver& receiver)
{
    FltRecordRow const* const row = rowOf(record);
    receiver.beginObject();
    giveNumber(receiver, "opcode", static_cast<std::uint64_t>(record.getOpcode()));
    giveText(receiver, "class", row != nullptr ? row->className : "FltRecordUnknown");
    giveCategory(receiver, record);
    giveNumber(receiver, "length", record.getLength());
    giveNumber(receiver, "offset", byteOffset);
    receiver.key("fields");
    receiver.beginObject();
    giveFields(row, record, receiver);
    receiver.endObject();
    receiver.endObject();
}

} // namespace

void FltRecordFields::give(FltRecord const& record, FltFieldReceiver& receiver)
{
    giveFields(rowOf(record), record, receiver);
}

void FltRecordFields::give(FltRecord const& record, FltFieldColumns& columns)
{
    giveFields(rowOf(record), record, columns);
}

void FltRecordFields::giveWhole(FltRecord const& record, std::uint64_t byteOffset, FltFieldReceiver& receiver)
{
    giveObject(record, byteOffset, receiver);
}

void FltRecordFields::giveWhole(FltRecord const& record, std::uint64_t byteOffset, FltJsonText& json)
{
    giveObject(record, byteOffset, json);
}

#include "records/FltFieldLister.h"

#include "messages/FltText.h"
#include "records/FltRecord.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <algorithm>
#include <cstring>

namespace
{

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

void giveText(FltFieldReceiver& receiver, char const* key, std::string_view text)
{
    receiver.key(key);
    receiver.text(text);
}

void giveNumber(FltFieldReceiver& receiver, char const* key, std::uint64_t number)
{
    receiver.key(key);
    receiver.integer(static_cast<std::int64_t>(number));
}

/// The row of the class that a record is of; null if its opcode has none.
FltRecordRow const* rowOf(FltRecord const& record)
{
    bool const isUnknown = dynamic_cast<FltRecordUnknown const*>(&record) != nullptr;
    return isUnknown ? nullptr : FltRecordTable::find(record.getOpcode());
}

} // namespace

void FltFieldLister::giveFields(FltRecord const& record, FltFieldReceiver& receiver)
{
    FltFieldLister values(receiver);
    if (FltRecordRow const* const row = rowOf(record))
        row->list(record, values);
    else if (auto const* const unknown = dynamic_cast<FltRecordUnknown const*>(&record))
        FltRecordUnknown::fields(*unknown, values);
}

void FltFieldLister::giveRecord(FltRecord const& record, std::uint64_t byteOffset, FltFieldReceiver& receiver)
{
    FltRecordRow const* const row = rowOf(record);
    receiver.beginObject();
    giveNumber(receiver, "opcode", static_cast<std::uint64_t>(record.getOpcode()));
    giveText(receiver, "class", row != nullptr ? row->className : "FltRecordUnknown");
    giveText(receiver, "category", record.getRecordCategory());
    giveNumber(receiver, "length", record.getLength());
    giveNumber(receiver, "offset", byteOffset);
    receiver.key("fields");
    receiver.beginObject();
    giveFields(record, receiver);
    receiver.endObject();
    receiver.endObject();
}

void FltFieldLister::open(char const* name)
{
    begin(name);
    receiver.beginObject();
    levels.push_back(nullptr);
}

/// Blocks of one name that follow one another are elements of one array.
void FltFieldLister::openElement(char const* name)
{
    if (lastElement != nullptr && std::strcmp(lastElement, name) == 0) {
        receiver.resumeArray();
    } else {
        begin(name);
        receiver.beginArray(FltFieldReceiver::Length::counted);
    }
    receiver.beginObject();
    levels.push_back(name);
}

void FltFieldLister::close()
{
    receiver.endObject();
    lastElement = levels.back();
    if (lastElement != nullptr)
        receiver.endArray();
    levels.pop_back();
}

void FltFieldLister::characters(char const* name, char const* characters, int size)
{
    if (beginsWith(name, "reserved") || beginsWith(name, "spare"))
        bytes(name, characters, static_cast<unsigned int>(size));
    else
        text(name, characters, size);
}

void FltFieldLister::rest(char const* name, std::unique_ptr<char[]> const& characters, unsigned int length)
{
    if (characters != nullptr)
        text(name, characters.get(), length > 4 ? static_cast<int>(length - 4) : 0);
}

void FltFieldLister::text(char const* name, char const* characters, int count)
{
    if (characters != nullptr)
        text(name, std::string_view(characters, ::strnlen(characters, static_cast<std::size_t>(count))));
}

void FltFieldLister::text(char const* name, std::string_view characters)
{
    begin(name);
    bool const isPlain = std::all_of(characters.begin(), characters.end(),
                                     [](char character) { return static_cast<signed char>(character) >= 0; });
    if (isPlain)
        receiver.text(characters);
    else
        receiver.text(FltText::utf8(characters));
}

void FltFieldLister::bytes(char const* name, char const* characters, unsigned int count)
{
    if (characters == nullptr)
        return;
    begin(name);
    receiver.bytes({characters, count});
}

#include "loader/FltRecordReader.h"

#include "loader/FltDatabaseFile.h"
#include "loader/FltLoadLock.h"
#include "parser/FltRecordScan.h"
#include "records/FltFieldColumns.h"
#include "records/FltJsonText.h"
#include "records/FltOpcodeTable.h"
#include "records/FltRecordFields.h"

#include <limits>
#include <new>
#include <stdexcept>

struct FltRecordReader::State {
    explicit State(std::string const& path) : scan(path) {}

    /// Gives the record that the scan stands at as one object.
    template <class Receiver>
    void give(Receiver& receiver) const
    {
        if (scan.record() != nullptr)
            return FltRecordFields::giveWhole(*scan.record(), scan.offset(), receiver);
        receiver.beginObject();
        receiver.key("opcode");
        receiver.integer(scan.opcode());
        receiver.key("length");
        receiver.integer(scan.length());
        receiver.key("offset");
        receiver.integer(static_cast<std::int64_t>(scan.offset()));
        receiver.key("error");
        receiver.text(scan.complaints().empty() ? "too many records are shorter than their layout"
                                                : scan.complaints().back());
        receiver.endObject();
    }

    FltRecordScan scan;
    FltJsonText text; ///< Of the last record that was asked for.
};

FltRecordReader::FltRecordReader(std::string const& path)
{
    FltDatabaseFile const file(path, std::numeric_limits<std::uint64_t>::max());
    if (!file.canConvert())
        throw file.whyNotConverted();
    FltLoadLock const lock;
    try {
        state = std::make_unique<State>(path);
    } catch (std::bad_alloc const&) {
        throw FltDatabaseFile::outOfMemory(path);
    } catch (std::runtime_error const&) {
        throw file.whyNotConverted();
    }
}

FltRecordReader::~FltRecordReader() = default;
FltRecordReader::FltRecordReader(FltRecordReader&& other) noexcept = default;
FltRecordReader& FltRecordReader::operator=(FltRecordReader&& other) noexcept = default;

bool FltRecordReader::next()
{
    return state->scan.next();
}

void FltRecordReader::goTo(std::uint64_t offset)
{
    state->scan.goTo(offset);
}

int FltRecordReader::opcode() const
{
    return state->scan.opcode();
}

std::uint64_t FltRecordReader::offset() const
{
    return state->scan.offset();
}

unsigned FltRecordReader::length() const
{
    return state->scan.length();
}

bool FltRecordReader::isAncillary() const
{
    return FltOpcodeTable::partOf(opcode()) == FltOpcodeRow::Part::ancillary;
}

std::string FltRecordReader::json() const
{
    std::string text;
    addJson(text);
    return text;
}

void FltRecordReader::addJson(std::string& text) const
{
    FltLoadLock const lock;
    state->text.clear();
    state->give(state->text);
    text += state->text.written();
}

void FltRecordReader::give(FltFieldReceiver& receiver) const
{
    FltLoadLock const lock;
    state->give(receiver);
}

bool FltRecordReader::isReadable() const
{
    FltLoadLock const lock;
    return state->scan.record() != nullptr;
}

void FltRecordReader::giveFields(FltFieldReceiver& receiver) const
{
    if (isReadable())
        FltRecordFields::give(*state->scan.record(), receiver);
}

std::vector<FltColumn> FltRecordReader::columns(int opcode)
{
    FltLoadLock const lock;
    FltRecordScan& scan = state->scan;
    FltFieldColumns columns(scan.countOf(opcode));
    while (scan.next()) {
        FltRecord const* const record = scan.opcode() == opcode ? scan.record() : nullptr;
        if (record == nullptr)
            continue;
        columns.beginRecord(scan.offset());
        FltRecordFields::give(*record, columns);
        columns.endRecord();
    }
    return columns.take();
}

std::string FltRecordReader::fault() const
{
    return state->scan.faultText();
}

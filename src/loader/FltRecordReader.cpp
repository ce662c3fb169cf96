#include "loader/FltRecordReader.h"

#include "loader/FltDatabaseFile.h"
#include "loader/FltLoadLock.h"
#include "parser/FltRecordScan.h"
#include "records/FltFieldLister.h"
#include "records/FltJsonText.h"
#include "records/FltOpcodeTable.h"

#include <limits>
#include <new>
#include <stdexcept>

struct FltRecordReader::State {
    explicit State(std::string const& path) : scan(path) {}

    FltRecordScan scan;
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
    FltJsonText json(text);
    give(json);
    return text;
}

void FltRecordReader::give(FltFieldReceiver& receiver) const
{
    FltLoadLock const lock;
    FltRecordScan const& scan = state->scan;
    if (scan.record() != nullptr)
        return FltFieldLister::giveRecord(*scan.record(), offset(), receiver);
    receiver.beginObject();
    receiver.key("opcode");
    receiver.integer(opcode());
    receiver.key("length");
    receiver.integer(length());
    receiver.key("offset");
    receiver.integer(static_cast<std::int64_t>(offset()));
    receiver.key("error");
    receiver.text(scan.complaints().empty() ? "too many records are shorter than their layout"
                                            : scan.complaints().back());
    receiver.endObject();
}

bool FltRecordReader::isReadable() const
{
    FltLoadLock const lock;
    return state->scan.record() != nullptr;
}

void FltRecordReader::giveFields(FltFieldReceiver& receiver) const
{
    if (isReadable())
        FltFieldLister::giveFields(*state->scan.record(), receiver);
}

std::string FltRecordReader::fault() const
{
    return state->scan.faultText();
}

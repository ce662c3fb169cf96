#include "model/FltModelRecordReader.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcodeTable.h"

namespace
{

constexpr std::size_t headSize = 4;

/// Records in a row that are taken for a sound part of a file.
constexpr int plausibleRun = 3;

} // namespace

FltModelRecordReader::FltModelRecordReader(char const* begin, std::size_t size, bool salvages)
    : begin(begin), size(size), salvages(salvages), framing(begin, size)
{
}

bool FltModelRecordReader::next(FltRecordView& record)
{
    while (advance()) {
        record.data = framing.data();
        record.size = framing.getLength();
        record.opcode = static_cast<std::uint32_t>(framing.getOpcode());
        record.offset = base + framing.getOffset();
        record.isApart = false;
        position = record.offset + record.size;
        if (record.size < headSize) {
            FltWarningMessageConsole::setPosition(record.offset, framing.getOpcode());
            FltWarningMessageConsole::notifyDamage("A record is shorter than its own first four bytes");
            continue;
        }
        if (isContinuedAt(position))
            join(record);
        return true;
    }
    position = size;
    return false;
}

bool FltModelRecordReader::advance()
{
    while (!framing.next()) {
        if (framing.getFault() == FltFraming::Fault::none)
            return false;
        if (!salvage())
            return false;
    }
    return true;
}

/// Looks for records after a fault. @return whether there are any
bool FltModelRecordReader::salvage()
{
    std::size_t const fault = base + framing.getOffset();
    std::size_t at = salvages ? fault + 1 : size;
    while (at < size && !isRunAt(at))
        ++at;
    FltWarningMessageConsole::setPosition(fault, framing.getOpcode());
    if (at >= size) {
        FltWarningMessageConsole::notifyDamage(framing.faultText(),
                                               ": " + FltFraming::restFrom(fault, size) + ", is left out");
        return false;
    }
    FltWarningMessageConsole::notifyDamage(framing.faultText(), ": reading goes on at byte offset " +
                                                                    std::to_string(at) + ", " +
                                                                    std::to_string(at - fault) + " bytes on");
    base = at;
    framing = FltFraming(begin + at, size - at);
    return true;
}

bool FltModelRecordReader::isRunAt(std::size_t at) const
{
    for (int found = 0; found < plausibleRun; ++found) {
        if (at == size)
            return found == plausibleRun - 1;
        if (size - at < headSize)
            return false;
        unsigned int const length = FltUtils::word16At(begin + at + 2);
        if (length > size - at || !FltOpcodeTable::isPlausible(FltUtils::word16At(begin + at), length))
            return false;
        at += length;
    }
    return true;
}

bool FltModelRecordReader::isContinuedAt(std::size_t at) const
{
    return size - at >= headSize && FltUtils::word16At(begin + at) == FltOpcode::continuation;
}

/// Joins the bytes of a record and of its continuations, without their heads.
void FltModelRecordReader::join(FltRecordView& record)
{
    FltFraming ahead(begin + position, size - position);
    std::size_t whole = record.size;
    while (ahead.next() && ahead.getOpcode() == FltOpcode::continuation)
        whole += std::max<std::size_t>(ahead.getLength(), headSize) - headSize;
    std::unique_ptr<char[]> bytes(new char[whole]);
    char* out = std::copy(record.data, record.data + record.size, bytes.get());
    while (isContinuedAt(position) && framing.next()) {
        if (framing.getLength() >= headSize)
            out = std::copy(framing.data() + headSize, framing.data() + framing.getLength(), out);
        position = base + framing.getOffset() + framing.getLength();
    }
    record.data = bytes.get();
    record.isApart = true;
    record.size = static_cast<std::uint32_t>(whole);
    joined.push_back(std::move(bytes));
}

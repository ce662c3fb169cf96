#include "parser/FltParser.h"

#include "dump/FltDump.h"
#include "dump/FltDumpOutput.h"
#include "dump/FltLogBuffer.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltFraming.h"
#include "parser/FltParseHost.h"
#include "parser/FltRawData.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordTable.h"
#include "records/FltUtils.h"
#include "toolkit/LargePages.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace
{

/// Bytes of opcode and length.
constexpr unsigned int headSize = 4;

/// Records have more bytes than this in the mean, so that one piece of memory is enough for the list of most
/// files. What isn't filled of it takes none.
constexpr std::size_t fewBytesOfARecord = 32;

/// Bounds what the records of a file may cost that are shorter than their layouts. Each reads on into the
/// bytes after it, and makes an object, and a dump, as large as those of a whole one.
class ShortRecords
{
public:
    explicit ShortRecords(std::size_t fileSize)
        : left(FltLimits::shortRecordBytes + fileSize * FltLimits::shortRecordBytesPerFileByte)
    {
    }

    /// Whether one more record may be read; if so, its cost is counted.
    bool mayRead(int opcode, unsigned int length, std::size_t reach)
    {
        if (reach <= length)
            return true;
        std::size_t const cost = std::max(reach - length, FltRecordTable::objectSizeOf(opcode));
        if (cost > left)
            return false;
        left -= cost;
        return true;
    }

private:
    std::size_t left;
};

} // namespace

FltParser::FltParser()
{
    init();
}

FltParser::FltParser(FltInput* input) : input(input)
{
    init();
}

FltParser::~FltParser()
{
    delete creationVisitor;
    delete dynamic_cast<FltFileInput*>(input);
    std::free(additionalDirPath);
}

void FltParser::init()
{
    allFltRecordsCreated = false;
    setDefaultFltCreationVisitor();
    setAdditionalDirPath(".");
}

void FltParser::attachFltObserver(FltRecordObserver* observer)
{
    observers.push_back(observer);
}

void FltParser::detachFltObserver(FltRecordObserver* observer)
{
    auto const found = std::find(observers.begin(), observers.end(), observer);
    if (found != observers.end())
        observers.erase(found);
}

void FltParser::notify(FltRecord const* record)
{
    for (FltRecordObserver* observer : observers)
        observer->update(record);
}

void FltParser::setDefaultFltCreationVisitor()
{
    creationVisitor = new Flt_15_7_CreationVisitor;
}

void FltParser::setAdditionalDirPath(char const* path)
{
    std::free(additionalDirPath);
    additionalDirPath = ::strdup(path);
}

std::ostream& FltParser::showAllFltRecords(std::ostream& os) const
{
    for (FltRecord const* record : fltRecords)
        record->properties(os);
    return os;
}

bool FltParser::isAnOpenFlightInput(FltInput* candidate)
{
    char const* const bytes =
        candidate != nullptr && candidate->getSize() >= 4 ? candidate->getBuffer() : nullptr;
    if (bytes != nullptr && FltUtils::word16At(bytes) == 1 && FltUtils::word16At(bytes + 2) != 0)
        return true;
    FltWarningMessageConsole::notifyMessage("ERROR! Not an Openflight Input !", 3, true);
    return false;
}

void FltParser::fltRecordsVectorBuild(FltRawData* raw)
{
    // Room comes first, so that a record that was made always has its place.
    LargePages::makeRoom(fltRecords);
    FltRecord* record = nullptr;
    creationVisitor->visitFltRawData(record, raw);
    fltRecords.push_back(record);
    notify(record);
}

bool FltParser::makeRecord(FltRawData* raw, std::size_t offset)
{
    if (host == nullptr) {
        fltRecordsVectorBuild(raw);
        return true;
    }
    try {
        fltRecordsVectorBuild(raw);
    } catch (std::bad_array_new_length const&) {
        FltWarningMessageConsole::notifyDamage("A record counts fewer than nothing, and is left out");
        return false;
    }
    host->takeRecord(*input, *fltRecords.back(), offset);
    return true;
}

int FltParser::run()
{
    numberOfFltRawData = 0;
    if (!isAnOpenFlightInput(input))
        return 1;
    FltWarningMessageConsole::Count messages;
    FltWarningMessageConsole::beginFile(input->getFileName());
    if (host != nullptr)
        host->beginFile(*input);
    FltDumpOutput::line("beginning of parsing");

    char* const begin = input->getBuffer();
    auto const size = static_cast<std::size_t>(input->getSize());
    LargePages::makeRoom(fltRecords, size / fewBytesOfARecord + 1);
    FltFraming framing(begin, size);
    ShortRecords shortRecords(size);
    FltRawData raw;
    auto* const file = dynamic_cast<FltFileInput*>(input);
    while (framing.next()) {
        if (file != nullptr)
            file->dropBytesBefore(framing.data());
        FltWarningMessageConsole::setPosition(framing.getOffset(), framing.getOpcode());
        unsigned int const length = framing.getLength();
        if (length < headSize)
            FltWarningMessageConsole::notifyDamage("A record is shorter than its own first four bytes",
                                                   ", with a length of " + std::to_string(length) +
                                                       ": the next one is looked for after that");
        std::size_t const reach = creationVisitor->getReach(framing.getOpcode(), length);
        if (!shortRecords.mayRead(framing.getOpcode(), length, reach)) {
            FltWarningMessageConsole::notifyDamage("Too many records are shorter than their layout: " +
                                                   FltFraming::restFrom(framing.getOffset(), size) +
                                                   ", is left out");
            break;
        }
        raw.refer(begin + framing.getOffset(), begin + size, length, reach);
        if (!makeRecord(&raw, framing.getOffset()))
            continue;
        ++numberOfFltRawData;
        auto const* const header =
            numberOfFltRawData == 1 ? dynamic_cast<FltRecordHeader const*>(fltRecords.back()) : nullptr;
        if (header != nullptr)
            readVersion(*header);
    }
    if (framing.getFault() != FltFraming::Fault::none) {
        FltWarningMessageConsole::setPosition(framing.getOffset(), framing.getOpcode());
        FltWarningMessageConsole::notifyDamage(framing.faultText(), framing.costText());
    }

    if (file != nullptr)
        file->dropBytes();
    FltDumpOutput::line("end of parsing");
    FltLogBuffer::writeCurrent();
    messages.finish();
    allFltRecordsCreated = true;
    return 0;
}

void FltParser::readVersion(FltRecordHeader const& header)
{
    creationVisitor->revision = header.formatRevisionLevel;
    creationVisitor->rgbMode = (header.flags >> 30 & 1) != 0;
    std::ostream* const os = FltDumpOutput::current();
    if (os == nullptr)
        return;
    FltDump dump(*os);
    dump.field("OpenFlight file version", creationVisitor->revision);
    dump.text("RGB mode: ", creationVisitor->rgbMode ? "true" : "false");
}

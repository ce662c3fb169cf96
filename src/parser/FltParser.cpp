#include "parser/FltParser.h"

#include "dump/FltLogBuffer.h"
#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltRawData.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecordHeader.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>

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
    FltRecord* record = nullptr;
    creationVisitor->visitFltRawData(record, raw);
    fltRecords.push_back(record);
    notify(record);
}

int FltParser::run()
{
    numberOfFltRawData = 0;
    if (!isAnOpenFlightInput(input))
        return 1;
    FltWarningMessageConsole::beginFile(input->getFileName());
    std::cout << "beginning of parsing" << std::endl;

    char const* const begin = input->getBuffer();
    auto const size = static_cast<std::size_t>(input->getSize());
    std::size_t lendable = FltLimits::borrowedBytes + size * FltLimits::borrowedBytesPerFileByte;
    FltRawData raw;
    for (std::size_t offset = 0; offset < size;) {
        char const* const at = begin + offset;
        std::size_t const rest = size - offset;
        if (rest < 4) {
            FltWarningMessageConsole::setPosition(offset, 0);
            FltWarningMessageConsole::notifyDamage(
                "The file ends inside the first words of a record, which is left out");
            break;
        }
        int const opcode = FltUtils::word16At(at);
        std::size_t const length = FltUtils::word16At(at + 2);
        FltWarningMessageConsole::setPosition(offset, opcode);
        if (length == 0) {
            FltWarningMessageConsole::notifyDamage(
                "A record has the length zero: the rest of the file is left out");
            break;
        }
        if (length > rest) {
            FltWarningMessageConsole::notifyDamage("A record runs past the end of the file and is left out");
            break;
        }
        std::size_t const reach = creationVisitor->getReach(opcode, static_cast<unsigned int>(length));
        std::size_t const borrowed = reach > length ? reach - length : 0;
        if (borrowed > lendable) {
            FltWarningMessageConsole::notifyDamage(
                "Too many records are shorter than their layout: the rest of the file is left out");
            break;
        }
        lendable -= borrowed;

        raw.assign(at, begin + size, length, reach);
        fltRecordsVectorBuild(&raw);
        ++numberOfFltRawData;
        auto const* const header =
            numberOfFltRawData == 1 ? dynamic_cast<FltRecordHeader const*>(fltRecords.back()) : nullptr;
        if (header != nullptr)
            readVersion(*header);
        offset += length;
    }

    std::cout << "end of parsing" << std::endl;
    FltLogBuffer::writeCurrent();
    allFltRecordsCreated = true;
    return 0;
}

void FltParser::readVersion(FltRecordHeader const& header)
{
    creationVisitor->revision = header.formatRevisionLevel;
    creationVisitor->rgbMode = (header.flags >> 30 & 1) != 0;
    std::cout << "OpenFlight file version: " << creationVisitor->revision << std::endl
              << "RGB mode: " << (creationVisitor->rgbMode ? "true" : "false") << std::endl;
}

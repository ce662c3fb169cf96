#include "statistics/FltStatisticsTool.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecord.h"

#include <cstdlib>
#include <cstring>
#include <string>

namespace
{

void replace(char*& text, char const* newer)
{
    char* const copy = newer != nullptr ? ::strdup(newer) : nullptr;
    std::free(text);
    text = copy;
}

} // namespace

FltStatisticsTool::~FltStatisticsTool()
{
    std::free(fltFile);
    std::free(statFile);
}

void FltStatisticsTool::setFltFile(char const* name)
{
    replace(fltFile, name);
}

void FltStatisticsTool::setStatFile(char const* name)
{
    replace(statFile, name);
}

void FltStatisticsTool::setVectorOfFltRecords(std::vector<FltRecord*>& records)
{
    vectorOfFltRecords = &records;
}

/// Opens the file with the guards of everything that is written beside a database. @return null if that fails
FILE* FltStatisticsTool::open(SideFile::Content content)
{
    if (statFile == nullptr)
        return nullptr;
    SideFile file(statFile, fltFile, content);
    if (file.getOutcome() == SideFile::Outcome::refused && !refusalIsReported) {
        refusalIsReported = true;
        FltWarningMessageConsole::notifyGuard("No statistics are written: what stands at their place is a "
                                              "link, has a second name, or isn't a plain file. "
                                              "Remove it, or use a copy of the database",
                                              std::string(": ") + statFile);
    }
    int const descriptor = file.release();
    return descriptor >= 0 ? ::fdopen(descriptor, content == SideFile::Content::appendedTo ? "a" : "w")
                           : nullptr;
}

void FltStatisticsTool::makeEmptyFile()
{
    if (FILE* const file = open(SideFile::Content::emptied))
        std::fclose(file);
}

bool FltStatisticsTool::isOutputFileEmpty()
{
    if (outputFile == nullptr)
        return false;
    std::fseek(outputFile, 0, SEEK_END);
    long const size = std::ftell(outputFile);
    std::rewind(outputFile);
    return size == 0;
}

void FltStatisticsTool::writeFltStatisticsHeader()
{
    if (outputFile == nullptr)
        return;
    std::fputs("#Openflight Statistics File\n\n", outputFile);
    std::fputs("\n************************\n", outputFile);
    std::fputs(fltFile != nullptr ? fltFile : "", outputFile);
    std::fputs("\n", outputFile);
}

void FltStatisticsTool::makeStatistics()
{
    outputFile = open(SideFile::Content::appendedTo);
    if (outputFile == nullptr)
        return;
    if (isOutputFileEmpty())
        writeFltStatisticsHeader();
    if (vectorOfFltRecords != nullptr)
        for (FltRecord const* record : *vectorOfFltRecords)
            ++opcodeCounts[record->getOpcode()];
    for (auto const& [opcode, count] : opcodeCounts)
        std::fprintf(outputFile, " \n Opcode %d:  %d ", opcode, count);
    std::fclose(outputFile);
    outputFile = nullptr;
}

#include "statistics/FltStatisticsTool.h"

#include "records/FltRecord.h"

#include <cstdlib>
#include <cstring>

namespace
{

void replace(char*& text, char const* newer)
{
    char* const copy = newer != nullptr ? ::strdup(newer) : nullptr;
    std::free(text);
    text = copy;
}

FILE* open(char const* name, char const* mode)
{
    return name != nullptr ? ::fopen64(name, mode) : nullptr;
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

void FltStatisticsTool::makeEmptyFile()
{
    if (FILE* const file = open(statFile, "wt"))
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
    outputFile = open(statFile, "at");
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

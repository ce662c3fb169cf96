#pragma once

#include "toolkit/SideFile.h"
#include "toolkit/VelloReaderExport.h"

#include <cstdio>
#include <map>
#include <vector>

class FltRecord;

/// Counts records by opcode and writes the counts into a text file.
///
/// The counts go by FltRecord::getOpcode(), so a record counts as what its class reports, and an object in
/// two entries counts twice. A file that can't be opened is ignored without a message; one that is a link,
/// has a second name, or isn't a plain file is left alone, and that is reported to the console once.
class VELLOREADER_API FltStatisticsTool
{
public:
    FltStatisticsTool() = default;
    virtual ~FltStatisticsTool();

    FltStatisticsTool(FltStatisticsTool const&) = delete;
    FltStatisticsTool& operator=(FltStatisticsTool const&) = delete;

    /// Sets the name of the database, which the header of the file holds. The text is copied.
    void setFltFile(char const* name);

    /// Sets the name of the file to write. The text is copied.
    void setStatFile(char const* name);

    /// Sets the records to count, which stay the caller's.
    void setVectorOfFltRecords(std::vector<FltRecord*>& records);

    /// Creates the file, or empties it.
    void makeEmptyFile();

    /// Whether the open file has no bytes.
    bool isOutputFileEmpty();

    /// Writes the title and the name of the database into the open file.
    void writeFltStatisticsHeader();

    /// Adds the records to the counts and appends all counts to the file, which gets its header if it is
    /// empty. The counts are kept, so a second run adds to them.
    void makeStatistics();

private:
    FILE* open(SideFile::Content content);

    std::vector<FltRecord*>* vectorOfFltRecords = nullptr;
    std::map<int, int> opcodeCounts;
    char* fltFile = nullptr;
    char* statFile = nullptr;
    FILE* outputFile = nullptr;
    bool refusalIsReported = false;
};

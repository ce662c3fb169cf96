// Parses any bytes as a database without a listing, and writes each record as JSON.

#include "FuzzTarget.h"

#include "dump/FltDumpOutput.h"
#include "records/FltRecordJson.h"
#include "support/MemoryInput.h"
#include "support/StreamCapture.h"

#include <iostream>

void useDatabase(std::string const& bytes)
{
    StreamCapture const err(std::cerr, CaptureBuffer::nothing);
    FltDumpOutput::Redirect const noListing(nullptr);
    MemoryInput input(bytes);
    FltParser parser(&input);
    RecordsDestroyed const records(parser);
    parser.run();
    FltRecord const* previous = nullptr;
    for (FltRecord const* record : parser.getFltRecords()) {
        if (record != previous && record != nullptr)
            static_cast<void>(FltRecordJson::of(*record, 0));
        previous = record;
    }
}

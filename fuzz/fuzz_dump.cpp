// Parses any bytes as a database and lists its records.

#include "FuzzTarget.h"

#include "support/MemoryInput.h"
#include "support/StreamCapture.h"

#include <iostream>

void useDatabase(std::string const& bytes)
{
    StreamCapture const out(std::cout, CaptureBuffer::nothing);
    StreamCapture const err(std::cerr, CaptureBuffer::nothing);
    MemoryInput input(bytes);
    FltParser parser(&input);
    RecordsDestroyed const records(parser);
    parser.run();
}

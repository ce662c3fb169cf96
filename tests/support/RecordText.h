#pragma once

#include "writer/FltWriter.h"

#include "parser/FltRawData.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"

#include <memory>
#include <string>

/// What a record prints on a stream of its own.
std::string dumpOf(FltRecord const& record);

/// Dumps without the one number in them that is another in each run: a clip region shows where its flags
/// stand in memory.
std::string withoutAddress(std::string dumps);

/// The lines of the frame: title, category, opcode and length.
std::string frame(std::string const& title, std::string const& category, int opcode, unsigned length);

/// The record that the factory makes of the last one that @p flt holds, at its revision. Its dump to
/// std::cout is swallowed.
std::unique_ptr<FltRecord> decodeLast(FltWriter const& flt);

/// The same as the class that it is expected to be; null if it is another.
template <class Record>
std::unique_ptr<Record> decodeLastAs(FltWriter const& flt)
{
    std::unique_ptr<FltRecord> record = decodeLast(flt);
    auto* const found = dynamic_cast<Record*>(record.get());
    if (found != nullptr)
        static_cast<void>(record.release());
    return std::unique_ptr<Record>(found);
}

#include "support/RecordText.h"

#include "support/StreamCapture.h"

#include "records/FltUtils.h"

#include <sstream>

std::string dumpOf(FltRecord const& record)
{
    std::ostringstream os;
    record.properties(os);
    return os.str();
}

std::string withoutAddress(std::string dumps)
{
    std::string const before = "flags: 0x";
    std::size_t const clipRegion = dumps.find("\n CLIP REGION RECORD ");
    for (std::size_t at = dumps.find(before, clipRegion);
         clipRegion != std::string::npos && at < dumps.size(); at = dumps.find(before, at + 1)) {
        std::size_t const title = dumps.rfind(" RECORD ", at);
        if (dumps.compare(title - 11, 11, "CLIP REGION") == 0)
            dumps.replace(at, dumps.find('\n', at) - at, "flags: ADDRESS");
    }
    return dumps;
}

std::string frame(std::string const& title, std::string const& category, int opcode, unsigned length)
{
    return title + "\n  (" + category + ")\n-- Opcode: " + std::to_string(opcode) +
           "  Length: " + std::to_string(length) + " --\n";
}

std::unique_ptr<FltRecord> decodeLast(FltWriter const& flt)
{
    StreamCapture const swallowed(std::cout);
    Flt_15_7_CreationVisitor::forgetPrevious();
    Flt_15_7_CreationVisitor visitor;
    visitor.revision = flt.getRevision();
    std::string const& bytes = flt.bytes();
    char const* const begin = bytes.data() + flt.lastOffset();
    std::size_t const length = FltUtils::word16At(begin + 2);
    FltRawData raw;
    raw.assign(begin, bytes.data() + bytes.size(), length,
               visitor.getReach(FltUtils::word16At(begin), static_cast<unsigned>(length)));
    FltRecord* record = nullptr;
    visitor.visitFltRawData(record, &raw);
    Flt_15_7_CreationVisitor::forgetPrevious();
    return std::unique_ptr<FltRecord>(record);
}

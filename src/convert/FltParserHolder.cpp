#include "convert/FltParserHolder.h"

#include "parser/FltParser.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"

namespace
{

/// Deletes every record once. An object may stand in neighbouring entries.
void deleteRecords(std::vector<FltRecord*> const& records)
{
    FltRecord const* previous = nullptr;
    for (FltRecord* record : records) {
        if (record != previous)
            delete record;
        previous = record;
    }
    Flt_15_7_CreationVisitor::forgetPrevious();
}

/// Records that a failed conversion left alive: those of the last one stay, so that they are bounded, and
/// reachable for a leak checker.
class AbandonedRecords
{
public:
    ~AbandonedRecords() { deleteRecords(records); }

    /// Takes the records out of a parser's vector. This happens while exceptions unwind, so it allocates
    /// nothing.
    void replaceBy(std::vector<FltRecord*>& newer)
    {
        deleteRecords(records);
        records.clear();
        records.swap(newer);
    }

private:
    std::vector<FltRecord*> records;
};

AbandonedRecords abandoned;

} // namespace

void FltParserHolder::GiveInputBackAndDelete::operator()(FltParser* parser) const
{
    parser->setInput(nullptr);
    delete parser;
}

FltParserHolder::~FltParserHolder()
{
    retire();
}

void FltParserHolder::take(FltParser* parser)
{
    abandonRecords();
    fltParser = parser;
    recordsDestroyed = false;
}

void FltParserHolder::make(FltInput* input)
{
    retire();
    made.push_back(OwnParser(new FltParser(input)));
    fltParser = made.back().get();
    ownsFltParser = true;
    recordsDestroyed = false;
}

void FltParserHolder::retire()
{
    if (!ownsFltParser || fltParser == nullptr)
        return;
    abandonRecords();
    fltParser = nullptr;
    ownsFltParser = false;
}

void FltParserHolder::destroyRecords()
{
    if (holdsRecords())
        deleteRecords(fltParser->getFltRecords());
    recordsDestroyed = true;
}

/// Takes the records over from a parser that was made here; a caller's parser keeps them.
void FltParserHolder::abandonRecords()
{
    bool const isOwn = !made.empty() && made.back().get() == fltParser;
    if (isOwn && !keepsAbandonedRecords)
        destroyRecords();
    else if (isOwn && holdsRecords() && !fltParser->getFltRecords().empty())
        abandoned.replaceBy(fltParser->getFltRecords());
    recordsDestroyed = true;
}

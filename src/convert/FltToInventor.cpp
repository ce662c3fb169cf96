#include "convert/FltToInventor.h"

#include "convert/FltToInventorState.h"
#include "dump/FltLogBuffer.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"
#include "statistics/FltStatisticsTool.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoSeparator.h>
#include <iostream>
#include <sys/stat.h>

namespace
{

constexpr int oldestRevision = 11;

/// Deletes every record once. An object may stand in neighbouring entries.
void deleteRecords(std::vector<FltRecord*> const& records)
{
    FltRecord const* before = nullptr;
    for (FltRecord* record : records) {
        if (record != before)
            delete record;
        before = record;
    }
    Flt_15_7_CreationVisitor::forgetPrevious();
}

/// Records that a failed conversion left alive: those of the last one stay, so that they are bounded, and
/// reachable for a leak checker.
class AbandonedRecords
{
public:
    ~AbandonedRecords() { deleteRecords(records); }
    void replace(std::vector<FltRecord*> const& newer)
    {
        deleteRecords(records);
        records = newer;
    }

private:
    std::vector<FltRecord*> records;
};

/// The log streams of finished conversions. std::cout may stand on the buffer of any until the process ends,
/// so they are never deleted.
std::vector<FltLogStream*>& retiredLogStreams()
{
    static auto* const streams = new std::vector<FltLogStream*>;
    return *streams;
}

/// A null entry after the last record while the records are walked: the end of all walks.
class NullEntryAtEnd
{
public:
    explicit NullEntryAtEnd(std::vector<FltRecord*>& records) : records(records)
    {
        records.push_back(nullptr);
    }
    ~NullEntryAtEnd() { records.pop_back(); }

    NullEntryAtEnd(NullEntryAtEnd const&) = delete;
    NullEntryAtEnd& operator=(NullEntryAtEnd const&) = delete;

private:
    std::vector<FltRecord*>& records;
};

/// Sets a flag for as long as this object lives.
class FlagRaised
{
public:
    explicit FlagRaised(bool& flag) : flag(flag) { flag = true; }
    ~FlagRaised() { flag = false; }

    FlagRaised(FlagRaised const&) = delete;
    FlagRaised& operator=(FlagRaised const&) = delete;

private:
    bool& flag;
};

} // namespace

char const* FltToInventor::getProductNameString()
{
    return "VelloReader";
}

char const* FltToInventor::getVersionString()
{
    return "9.6.1";
}

int FltToInventor::internalInit()
{
    if (!SoDB::isInitialized())
        SoDB::init();
    return 1;
}

SoSeparator* FltToInventor::convertFromFile(char const* fileName)
{
    if (internalInit() == 0 || fileName == nullptr || *fileName == '\0')
        return nullptr;
    FltFileInput input(fileName);
    FltToInventor converter;
    converter.setFltInputToconvert(&input);
    converter.enableFileLogging((std::string(fileName) + ".log").c_str());
    auto* const root = new SoSeparator;
    root->ref();
    converter.setResult(root);
    try {
        converter.convert();
    } catch (...) {
        root->unref();
        throw;
    }
    root->unrefNoDelete();
    return root;
}

FltToInventor::FltToInventor() : FltToInventor(std::make_unique<State>()) {}

FltToInventor::FltToInventor(std::unique_ptr<State> state) : state(std::move(state))
{
    this->state->minRangeLabel->label = "MinRangeLimitForLOD";
    this->state->maxRangeLabel->label = "MaxRangeLimitForLOD";
}

FltToInventor::~FltToInventor()
{
    FltToInventor::deleteCurrentFltParser();
    disableFileLogging();
}

FltToInventor::State::~State()
{
    for (FltParser* parser : retiredParsers) {
        parser->setInput(nullptr);
        delete parser;
    }
}

void FltToInventor::update(FltRecord const* /*record*/) {}

void FltToInventor::setResult(SoSeparator* root)
{
    state->result = root != nullptr ? root : new SoSeparator;
}

SoSeparator* FltToInventor::getResult() const
{
    return state->result;
}

void FltToInventor::setFltParser(FltParser* parser)
{
    state->fltParser = parser;
    state->recordsDestroyed = false;
    if (parser != nullptr)
        parser->attachFltObserver(this);
}

void FltToInventor::setFltInputToconvert(FltInput* input)
{
    deleteCurrentFltParser();
    state->fltParser = new FltParser(input);
    state->ownsFltParser = true;
    state->recordsDestroyed = false;
}

void FltToInventor::deleteCurrentFltParser()
{
    if (!state->ownsFltParser || state->fltParser == nullptr)
        return;
    static AbandonedRecords abandoned;
    if (!state->recordsDestroyed && !state->fltParser->getFltRecords().empty())
        abandoned.replace(state->fltParser->getFltRecords());
    state->retiredParsers.push_back(state->fltParser);
    state->fltParser = nullptr;
    state->ownsFltParser = false;
}

int FltToInventor::convert()
{
    if (state->result == nullptr)
        state->result = new SoSeparator;
    if (state->fltParser == nullptr) {
        FltWarningMessageConsole::notifyMessage("ERROR ! The field fltParser is NULL", 3, true);
        return 1;
    }
    FltInput* const input = state->fltParser->getInput();
    if (input == nullptr || !input->isInFlowCreated()) {
        FltWarningMessageConsole::notifyMessage("ERROR ! FltParser has no INPUT !", 3, true);
        return 1;
    }
    struct stat status;
    if (state->shared.chain.empty() && ::stat(input->getFileName(), &status) == 0)
        state->shared.chain.emplace_back(status.st_dev, status.st_ino);

    if (state->fltParser->run() == 1)
        return 1;
    if (state->fltParser->getFltCreationVisitor()->revision < oldestRevision) {
        FltWarningMessageConsole::notifyMessage("ERROR ! Openflight Format Revision not supported !", 3,
                                                true);
        return 1;
    }
    visitAllFltRecords();
    destroyAllFltRecords();
    return 0;
}

bool FltToInventor::isAllFltRecordsVisited() const
{
    return state->allFltRecordsVisited;
}

void FltToInventor::visitAllFltRecords()
{
    std::vector<FltRecord*>& records = state->fltParser->getFltRecords();
    NullEntryAtEnd const end(records);
    FlagRaised const visiting(state->visitsRecords);
    state->switches.clear();
    for (RecordIterator iterator = records.begin(); *iterator != nullptr;) {
        FltRecord* const record = *iterator;
        std::string const category = record->getRecordCategory();
        if (category == "PRIMARY_RECORD")
            visitPrimaryRecord(iterator);
        else if (category == "ANCILLARY_RECORD")
            visitAncillaryRecord(record);
        else if (category == "CONTROL_RECORD")
            visitControlRecord(record);
        else if (category == "PALETTE_RECORD")
            visitPaletteRecord(record);
        else
            visitUnknownCategoryFltRecord(record);
        if (*iterator != nullptr)
            ++iterator;
    }
    state->vertices.close();
    state->scene.end();
    if (state->result != nullptr)
        state->result->touch();
    state->allFltRecordsVisited = true;
}

void FltToInventor::destroyAllFltRecords()
{
    if (!state->recordsDestroyed)
        deleteRecords(state->fltParser->getFltRecords());
    state->recordsDestroyed = true;
}

std::string const& FltToInventor::getRelativePath() const
{
    return state->relativePath;
}

void FltToInventor::setRelativePath(std::string& path)
{
    state->relativePath = path;
}

void FltToInventor::enableFileLogging(char const* path)
{
    state->logStream = new FltLogStream;
    retiredLogStreams().push_back(state->logStream);
    if (!state->logStream->buffer.open(path))
        state->logStream->setstate(std::ios_base::failbit);
    std::cout.rdbuf(&state->logStream->buffer);
    state->fileLoggingEnabled = true;
}

void FltToInventor::disableFileLogging()
{
    if (!state->fileLoggingEnabled)
        return;
    if (!state->logStream->buffer.close())
        state->logStream->setstate(std::ios_base::failbit);
    state->fileLoggingEnabled = false;
}

void FltToInventor::makeStats() const
{
    if (state->fltParser == nullptr || state->fltParser->getInput() == nullptr || state->recordsDestroyed)
        return;
    FltStatisticsTool tool;
    std::string const fileName = state->fltParser->getInput()->getFileName();
    tool.setFltFile(fileName.c_str());
    tool.setStatFile((fileName + ".stat").c_str());
    tool.makeEmptyFile();
    tool.setVectorOfFltRecords(state->fltParser->getFltRecords());
    tool.makeStatistics();
}

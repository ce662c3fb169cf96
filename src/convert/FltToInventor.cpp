#include "convert/FltToInventor.h"

#include "convert/FltConversionHost.h"
#include "convert/FltToInventorState.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltCreationVisitor.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "records/FltRecord.h"
#include "records/FltRevision.h"
#include "statistics/FltStatisticsTool.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoSeparator.h>
#include <optional>

namespace
{

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
    // The product's fixed answer to its hosts: it stays when the package gets another version.
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
    input.dropBytesWhenParsed();
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

int FltToInventor::list(FltInput& input, FltConversionHost& host)
{
    FltToInventor lister(std::make_unique<State>(false));
    lister.setFltInputToconvert(&input);
    lister.setHost(&host);
    return lister.convert() != 0 || lister.state->parser.get()->getFltRecords().empty() ? 1 : 0;
}

FltToInventor::FltToInventor() : FltToInventor(std::make_unique<State>(true)) {}

FltToInventor::FltToInventor(std::unique_ptr<State> state) : state(std::move(state)) {}

FltToInventor::~FltToInventor()
{
    FltToInventor::deleteCurrentFltParser();
    disableFileLogging();
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
    state->parser.take(parser);
    if (parser != nullptr)
        parser->attachFltObserver(this);
}

void FltToInventor::setFltInputToconvert(FltInput* input)
{
    deleteCurrentFltParser();
    state->parser.make(input);
}

void FltToInventor::deleteCurrentFltParser()
{
    state->parser.retire();
}

void FltToInventor::setHost(FltConversionHost* host)
{
    state->shared.host = host;
}

int FltToInventor::convert()
{
    if (state->result == nullptr)
        state->result = state->make<SoSeparator>();
    FltParser* const parser = state->parser.get();
    if (parser == nullptr) {
        FltWarningMessageConsole::notifyMessage("ERROR ! The field fltParser is NULL", 3, true);
        return 1;
    }
    FltInput* const input = parser->getInput();
    if (input == nullptr || !input->isInFlowCreated()) {
        FltWarningMessageConsole::notifyMessage("ERROR ! FltParser has no INPUT !", 3, true);
        return 1;
    }
    FltReferenceChain& chain = state->shared.chain;
    std::optional<FltReferenceChain::Link> top;
    if (chain.isEmpty()) {
        if (auto const file = FltReferenceChain::identityOf(input->getFileName())) {
            state->shared.files.begin(*file, input->getSize());
            top.emplace(chain, *file);
        }
    }

    FltWarningMessageConsole::Count messages;
    parser->setHost(state->shared.host);
    if (state->shared.host != nullptr)
        state->parser.keepNothing();
    if (parser->run() == 1)
        return 1;
    if (parser->getFltCreationVisitor()->revision < FltRevision::oldest) {
        FltWarningMessageConsole::notifyMessage("ERROR ! Openflight Format Revision not supported !", 3,
                                                true);
        return 1;
    }
    visitAllFltRecords();
    destroyAllFltRecords();
    messages.finish();
    if (state->shared.host != nullptr)
        state->shared.host->endFile(*input);
    return 0;
}

bool FltToInventor::isAllFltRecordsVisited() const
{
    return state->allFltRecordsVisited;
}

void FltToInventor::State::reportConverted(RecordIterator const& iterator)
{
    constexpr std::ptrdiff_t recordsPerReport = 256;
    FltParser& fltParser = *parser.get();
    std::ptrdiff_t const converted = iterator - fltParser.getFltRecords().begin();
    if (fltParser.getInput() == nullptr || converted < reportedRecords + recordsPerReport)
        return;
    reportedRecords = converted;
    shared.host->takeConverted(*fltParser.getInput(), static_cast<std::size_t>(converted),
                               fltParser.getFltRecords().size());
}

void FltToInventor::visitAllFltRecords()
{
    FltParser& parser = *state->parser.get();
    if (state->isTopLevel() && parser.getInput() != nullptr)
        state->shared.allowances.growBy(parser.getInput()->getSize());
    std::vector<FltRecord*>& records = parser.getFltRecords();
    NullEntryAtEnd const end(records);
    FlagRaised const visiting(state->visitsRecords);
    state->switches.clear();
    for (RecordIterator iterator = records.begin(); *iterator != nullptr;) {
        state->reportProgress(iterator);
        FltRecord* const record = *iterator;
        switch (record->getCategory()) {
        case FltRecordCategory::primary:
            visitPrimaryRecord(iterator);
            break;
        case FltRecordCategory::ancillary:
            visitAncillaryRecord(record);
            break;
        case FltRecordCategory::control:
            visitControlRecord(record);
            break;
        case FltRecordCategory::palette:
            visitPaletteRecord(record);
            break;
        case FltRecordCategory::unknown:
            visitUnknownCategoryFltRecord(record);
            break;
        }
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
    state->parser.destroyRecords();
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
    FltParser const* const parser = state->parser.get();
    FltInput const* const input = parser != nullptr ? parser->getInput() : nullptr;
    state->log.open(path, input != nullptr ? input->getFileName() : nullptr);
}

void FltToInventor::disableFileLogging()
{
    state->log.close();
}

void FltToInventor::makeStats() const
{
    FltParser* const parser = state->parser.get();
    if (!state->parser.holdsRecords() || parser->getInput() == nullptr)
        return;
    FltStatisticsTool tool;
    std::string const fileName = parser->getInput()->getFileName();
    tool.setFltFile(fileName.c_str());
    tool.setStatFile((fileName + ".stat").c_str());
    tool.makeEmptyFile();
    tool.setVectorOfFltRecords(parser->getFltRecords());
    tool.makeStatistics();
}

#include "convert/FltToInventor.h"

#include "dump/FltLogBuffer.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "records/FltRecord.h"
#include "statistics/FltStatisticsTool.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLabel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoVertexProperty.h>
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

/// A null entry behind the last record while the records are walked: the end of all walks.
class NullEntryBehind
{
public:
    explicit NullEntryBehind(std::vector<FltRecord*>& records) : records(records)
    {
        records.push_back(nullptr);
    }
    ~NullEntryBehind() { records.pop_back(); }

    NullEntryBehind(NullEntryBehind const&) = delete;
    NullEntryBehind& operator=(NullEntryBehind const&) = delete;

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

template <class Nodes>
void unrefAll(Nodes const& nodes)
{
    for (auto const& entry : nodes)
        if (entry.second != nullptr)
            entry.second->unref();
}

} // namespace

int FltToInventor::initialVertexCapacity = 100000;

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

FltToInventor::FltToInventor() : references(ownReferences)
{
    init();
}

FltToInventor::FltToInventor(References& references, int depthAbove, int hierarchyDepth)
    : instanceGraph(depthAbove), references(references), hierarchyDepth(hierarchyDepth)
{
    init();
}

void FltToInventor::init()
{
    materialPalette = new SoMaterial;
    materialPalette->ref();

    char const* const names[vertexFormCount] = {"vertexColorProperty", "vertexColorNormalProperty",
                                                "vertexColorUVProperty", "vertexColorNormalUVProperty"};
    SoVertexProperty** const properties[vertexFormCount] = {&vertexColorProperty, &vertexColorNormalProperty,
                                                            &vertexColorUVProperty,
                                                            &vertexColorNormalUVProperty};
    for (int form = 0; form < vertexFormCount; ++form) {
        auto* const property = new SoVertexProperty;
        property->ref();
        property->setName(names[form]);
        *properties[form] = property;
        vertexCapacities[form] = initialVertexCapacity;
        setVertexFieldSizes(form, initialVertexCapacity);
    }

    minRangeLabel = new SoLabel;
    minRangeLabel->ref();
    minRangeLabel->label = "MinRangeLimitForLOD";
    maxRangeLabel = new SoLabel;
    maxRangeLabel->ref();
    maxRangeLabel->label = "MaxRangeLimitForLOD";
}

FltToInventor::~FltToInventor()
{
    FltToInventor::deleteCurrentFltParser();
    for (FltParser* parser : retiredParsers) {
        parser->setInput(nullptr);
        delete parser;
    }
    if (fileLoggingEnabled)
        disableFileLogging();
    for (SoNode* node : unattachedNodes)
        node->unref();
    unrefAll(texturePalette);
    unrefAll(lineStylePalette);
    unrefAll(instanceDefinitions);
    minRangeLabel->unref();
    maxRangeLabel->unref();
    materialPalette->unref();
    for (int form = 0; form < vertexFormCount; ++form)
        propertyOf(form)->unref();
}

void FltToInventor::update(FltRecord const* /*record*/) {}

void FltToInventor::setResult(SoSeparator* root)
{
    result = root != nullptr ? root : new SoSeparator;
}

SoSeparator* FltToInventor::getResult() const
{
    return result;
}

void FltToInventor::setFltParser(FltParser* parser)
{
    fltParser = parser;
    recordsDestroyed = false;
    if (parser != nullptr)
        parser->attachFltObserver(this);
}

void FltToInventor::setFltInputToconvert(FltInput* input)
{
    deleteCurrentFltParser();
    fltParser = new FltParser(input);
    ownsFltParser = true;
    recordsDestroyed = false;
}

void FltToInventor::deleteCurrentFltParser()
{
    if (!ownsFltParser || fltParser == nullptr)
        return;
    abandonRecords(fltParser);
    retiredParsers.push_back(fltParser);
    fltParser = nullptr;
    ownsFltParser = false;
}

void FltToInventor::abandonRecords(FltParser* parser)
{
    static AbandonedRecords abandoned;
    if (!recordsDestroyed && !parser->getFltRecords().empty())
        abandoned.replace(parser->getFltRecords());
}

int FltToInventor::convert()
{
    if (result == nullptr)
        result = new SoSeparator;
    if (fltParser == nullptr) {
        FltWarningMessageConsole::notifyMessage("ERROR ! The field fltParser is NULL", 3, true);
        return 1;
    }
    FltInput* const input = fltParser->getInput();
    if (input == nullptr || !input->isInFlowCreated()) {
        FltWarningMessageConsole::notifyMessage("ERROR ! FltParser has no INPUT !", 3, true);
        return 1;
    }
    struct stat status;
    if (references.chain.empty() && ::stat(input->getFileName(), &status) == 0)
        references.chain.emplace_back(status.st_dev, status.st_ino);

    FltWarningMessageConsole::Count messages;
    if (fltParser->run() == 1)
        return 1;
    if (fltParser->getFltCreationVisitor()->revision < oldestRevision) {
        FltWarningMessageConsole::notifyMessage("ERROR ! Openflight Format Revision not supported !", 3,
                                                true);
        return 1;
    }
    visitAllFltRecords();
    destroyAllFltRecords();
    messages.finish();
    return 0;
}

bool FltToInventor::isAllFltRecordsVisited() const
{
    return allFltRecordsVisited;
}

void FltToInventor::visitAllFltRecords()
{
    std::vector<FltRecord*>& records = fltParser->getFltRecords();
    NullEntryBehind const end(records);
    FlagRaised const visiting(visitsRecords);
    switchStates.clear();
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
    closeVertexProperties();
    endSilence();
    allFltRecordsVisited = true;
}

void FltToInventor::destroyAllFltRecords()
{
    if (!recordsDestroyed)
        deleteRecords(fltParser->getFltRecords());
    recordsDestroyed = true;
}

std::string const& FltToInventor::getRelativePath() const
{
    return relativePath;
}

void FltToInventor::setRelativePath(std::string& path)
{
    relativePath = path;
}

void FltToInventor::enableFileLogging(char const* path)
{
    logStream = new FltLogStream;
    retiredLogStreams().push_back(logStream);
    FltInput const* const input = fltParser != nullptr ? fltParser->getInput() : nullptr;
    SideFile::Outcome const outcome =
        logStream->buffer.open(path, input != nullptr ? input->getFileName() : nullptr);
    if (outcome != SideFile::Outcome::opened)
        logStream->setstate(std::ios_base::failbit);
    if (outcome == SideFile::Outcome::refused)
        FltWarningMessageConsole::notifyGuard("No log is written: what stands at its place is a link, has a "
                                              "second name, or isn't a plain file. "
                                              "Remove it, or convert a copy",
                                              std::string(": ") + path);
    std::cout.rdbuf(&logStream->buffer);
    fileLoggingEnabled = true;
}

void FltToInventor::disableFileLogging()
{
    if (!fileLoggingEnabled)
        return;
    if (!logStream->buffer.close())
        logStream->setstate(std::ios_base::failbit);
    fileLoggingEnabled = false;
}

void FltToInventor::makeStats() const
{
    if (fltParser == nullptr || fltParser->getInput() == nullptr || recordsDestroyed)
        return;
    FltStatisticsTool tool;
    std::string const fileName = fltParser->getInput()->getFileName();
    tool.setFltFile(fileName.c_str());
    tool.setStatFile((fileName + ".stat").c_str());
    tool.makeEmptyFile();
    tool.setVectorOfFltRecords(fltParser->getFltRecords());
    tool.makeStatistics();
}

void FltToInventor::notifyOnce(std::string const& text)
{
    if (toldOnce.insert(text).second)
        FltWarningMessageConsole::notifyMessage(FltWarningMessageConsole::keepText(text), 2, true);
}

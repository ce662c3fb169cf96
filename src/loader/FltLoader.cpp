#include "loader/FltLoader.h"

#include "convert/FltToInventor.h"
#include "dump/FltDumpOutput.h"
#include "loader/FltDatabaseFile.h"
#include "loader/FltLoadHost.h"
#include "loader/FltLoadLock.h"
#include "loader/FltLoadLog.h"
#include "loader/FltMessageCollector.h"
#include "loader/FltSceneContent.h"
#include "parser/FltFileInput.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "scene/FltNodeInfos.h"
#include "scene/FltSceneMaker.h"
#include "toolkit/SoReferencesGivenBack.h"
#include "visual/FltCutOuts.h"
#include "visual/FltLocalOrigin.h"
#include "visual/FltMeshMerger.h"
#include "visual/FltVisualConversion.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoInfo.h>
#include <algorithm>
#include <new>

namespace
{

using Kind = FltLoadError::Kind;

void refuseWhatIsForTheCompleteConversion(FltLoader const& loader, std::string const& path)
{
    auto const refuse = [&](char const* what) {
        throw FltLoadError(Kind::refused, path,
                           std::string("the exact conversion has no choice of ") + what +
                               ". Leave that option as it is.");
    };
    if (loader.references == FltLoader::References::asFile)
        refuse("references as files");
    if (loader.levelsOfDetail != FltLoader::LevelsOfDetail::all)
        refuse("levels of detail");
    if (loader.units != FltLoader::Units::metres)
        refuse("units");
    if (loader.origin != FltLoader::Origin::stored)
        refuse("the origin");
    if (loader.time != FltLoader::TimeOfDay::day)
        refuse("the time of day");
    if (loader.names != FltLoader::Names::all)
        refuse("the choice of names");
    if (loader.merge)
        refuse("merged shapes");
}

void startToolkit()
{
    if (!SoDB::isInitialized())
        SoDB::init();
}

/// A database that can be converted.
FltDatabaseFile open(FltLoader const& options, std::string const& path)
{
    FltDatabaseFile database(path, options.largestFile);
    if (!database.canConvert())
        throw database.whyNotConverted();
    return database;
}

FltLoadError notReadable(FltDatabaseFile const& database)
{
    return {Kind::cannotOpen, database.getPath(),
            "cannot be read: the process has too many files open. Allow more (ulimit -n)."};
}

FltFileInput readFile(FltDatabaseFile const& database)
{
    FltDumpOutput::Redirect const noDump(nullptr); // the log begins with the records
    return FltFileInput(database.getPathWithDirectory().c_str(), database.open());
}

/// Makes the scene by the exact conversion.
void convertExactly(FltDatabaseFile const& database, FltInput& input, FltLoadHost& host, SoSeparator* root)
{
    SoReferencesGivenBack const references(root);
    FltToInventor converter;
    converter.setFltInputToconvert(&input);
    converter.setResult(root);
    converter.setHost(&host);
    if (converter.convert() != 0 || root->getNumChildren() == 0)
        throw database.whyNotConverted();
}

/// Gives the file to an action that reads all its records, and keeps the log that is asked for meanwhile.
/// @param messages get to know if the log isn't whole
template <class Read>
void readAndLog(FltLoader const& options, FltDatabaseFile const& database, FltMessageCollector& messages,
                Read read)
{
    Flt_15_7_CreationVisitor::Session const factory;
    FltFileInput input = readFile(database);
    if (!input.isInFlowCreated())
        throw notReadable(database);
    input.dropBytesWhenParsed();
    FltLoadLog log(options.log, database.getPath());
    read(input);
    if (!log.close())
        messages.add(
            {FltMessage::Level::error, "the log isn't whole. Check the space on the disk.", log.getPath()});
}

/// Loads by the exact conversion.
std::unique_ptr<FltScene::Content> loadExactly(FltLoader const& options, FltDatabaseFile const& database)
{
    auto content = std::make_unique<FltScene::Content>();
    content->root = SoNodeRef<SoSeparator>(new SoSeparator);
    FltMessageCollector messages;
    FltLoadHost host(options, database.getPath(), *content, messages);
    readAndLog(options, database, messages,
               [&](FltInput& input) { convertExactly(database, input, host, content->root.get()); });
    host.finishScene();
    content->messages = std::move(messages.messages());
    return content;
}

/// Writes the log that is asked for, as the exact conversion does. What it tells is dropped.
/// @param messages get to know if the log isn't whole
void writeLog(FltLoader const& options, FltDatabaseFile const& database, FltMessageCollector& messages)
{
    FltLoadReport dropped;
    FltMessageCollector unheard;
    FltLoadHost host(options, database.getPath(), dropped, unheard);
    readAndLog(options, database, messages, [&](FltInput& input) {
        if (FltToInventor::list(input, host) != 0)
            throw database.whyNotConverted();
    });
}

FltVisualConversion::Options visualOptions(FltLoader const& options, FltLoadHost& host)
{
    FltVisualConversion::Options visual{options, {}, {}, FltReadableTree(options.onlyBelow)};
    visual.open = [&host](std::string const& file) { return host.openReferenced(file); };
    if (options.progress)
        visual.progress = [&host](std::string const& file, std::size_t done, std::size_t all) {
            host.report(file, done, all);
            return true;
        };
    return visual;
}

/// Of the coordinates of a visual as a whole.
double metresPerUnit(FltLoader const& options, FltVisualConversion::Result const& visual)
{
    return options.units == FltLoader::Units::metres ? 1 : visual.metresPerUnit;
}

/// The same for how far joining meshes may move their corners.
double unitToMergeIn(FltLoader const& options, FltVisualConversion::Result const& visual)
{
    bool const isInDegrees =
        visual.header != nullptr && visual.header->projectionType == FltRecordHeader::geodetic;
    return isInDegrees ? FltLocalOrigin::degrees : metresPerUnit(options, visual);
}

/// Loads by the complete conversion.
/// @param told gets what is to be known besides
FltVisualConversion::Result loadCompletely(FltLoader const& options, FltDatabaseFile const& database,
                                           FltLoadReport& told)
{
    FltMessageCollector messages;
    if (options.log)
        writeLog(options, database, messages);
    FltLoadHost host(options, database.getPath(), told, messages);
    messages.setFile(database.getPath());
    FltVisualConversion::Result result = FltVisualConversion::convert(
        database.getPathWithDirectory(), database.open(), visualOptions(options, host));
    if (result.outcome == FltVisualConversion::Outcome::cannotOpen)
        throw notReadable(database);
    if (result.outcome != FltVisualConversion::Outcome::converted)
        throw database.whyNotConverted();
    result.files.at(0) = database.getPath(); // as the host names it
    if (result.header != nullptr)
        host.takeHeader(*result.header);
    told.info.records = result.records;
    told.info.bytes = result.bytes;
    std::copy_n(result.offset.getValue(), 3, told.info.offset);
    told.references = std::move(result.references);
    for (auto const& [kind, count] : result.leftOut)
        told.omissions.push_back({kind, static_cast<std::uint64_t>(count)});
    host.findTextures(result.textures);
    FltCutOuts::mark(result.root, result.textures);
    if (options.merge)
        FltMeshMerger::merge(*result.root, unitToMergeIn(options, result));
    told.messages = std::move(messages.messages());
    return result;
}

/// Says in the scene itself from where it was moved, for who reads it from a file.
void tellOffset(SoSeparator& root, FltDatabaseInfo const& info)
{
    if (SbVec3d(info.offset) == SbVec3d(0, 0, 0))
        return;
    auto* const node = new SoInfo;
    node->string = FltNodeInfos::describeOffset(info.offset).c_str();
    root.insertChild(node, 0);
}

/// Puts nodes together with what is to be known of them.
FltScene sceneOf(FltMadeScene&& made, FltLoadReport&& told, std::vector<std::string> files,
                 FltVisualOptions::Names names)
{
    auto content = std::make_unique<FltScene::Content>();
    static_cast<FltLoadReport&>(*content) = std::move(told);
    content->files = std::move(files);
    content->root = std::move(made.root);
    tellOffset(*content->root, content->info);
    content->records = std::move(made.records);
    content->switches = std::move(made.switches);
    content->joints = std::move(made.joints);
    content->flipBooks = std::move(made.flipBooks);
    made.names.give(names); // the last that is done, when nothing can fail any more
    return FltScene(std::move(content));
}

FltScene loadScene(FltLoader const& options, std::string const& path)
{
    FltDatabaseFile const database = open(options, path);
    startToolkit();
    if (options.exact) {
        refuseWhatIsForTheCompleteConversion(options, path);
        return FltScene(loadExactly(options, database));
    }
    FltLoadReport told;
    FltVisualConversion::Result visual = loadCompletely(options, database, told);
    return sceneOf(
        FltSceneMaker::make(std::move(visual.root), visual.textures, metresPerUnit(options, visual)),
        std::move(told), std::move(visual.files), options.names);
}

FltVisual loadVisual(FltLoader const& options, std::string const& path)
{
    FltDatabaseFile const database = open(options, path);
    if (options.exact)
        throw FltLoadError(Kind::refused, path,
                           "the exact conversion makes scenes only. Load without that option.");
    FltVisual visual;
    FltVisualConversion::Result result = loadCompletely(options, database, visual);
    visual.metresPerUnit = metresPerUnit(options, result);
    visual.names = options.names;
    visual.root = std::move(result.root);
    visual.files = std::move(result.files);
    visual.textures = std::move(result.textures);
    return visual;
}

FltScene makeScene(FltVisual const& visual)
{
    startToolkit();
    FltLoadReport told = visual;
    told.textures = visual.distinctTextures();
    return sceneOf(FltSceneMaker::makeOfKept(visual.root, visual.textures, visual.metresPerUnit),
                   std::move(told), visual.files, visual.names);
}

/// Made beforehand, for when there isn't even the memory to say so; copying it takes none.
FltLoadError const noMemoryForWords(Kind::outOfMemory, "", "the memory doesn't suffice.");

/// Calls a function that loads, and tells whatever goes wrong as a FltLoadError.
template <class Load>
auto loadOrExplain(std::string const& path, Load load)
{
    try {
        return load();
    } catch (FltLoadError const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw FltDatabaseFile::outOfMemory(path);
    } catch (std::exception const& problem) {
        throw FltLoadError(Kind::failed, path, std::string("unexpected failure: ") + problem.what());
    }
}

/// The same as the only load in the process.
template <class Load>
auto loadAlone(std::string const& path, Load load)
{
    FltLoadLock const lock;
    try {
        return loadOrExplain(path, load);
    } catch (FltLoadHost::CallbackFailure const& failure) {
        std::rethrow_exception(failure.reason);
    } catch (std::bad_alloc const&) {
        throw FltLoadError(noMemoryForWords);
    }
}

} // namespace

FltScene FltLoader::load(std::string const& path) const
{
    return loadAlone(path, [&] { return loadScene(*this, path); });
}

FltVisual FltLoader::loadVisual(std::string const& path) const
{
    return loadAlone(path, [&] { return ::loadVisual(*this, path); });
}

FltScene FltLoader::makeScene(FltVisual const& visual)
{
    return loadAlone(visual.files.front(), [&] { return ::makeScene(visual); });
}

bool FltLoader::canLoad(std::string const& path)
{
    return FltDatabaseFile::canConvert(path);
}

void FltLoader::setWait(Wait const* wait)
{
    FltLoadLock::setWait(wait);
}

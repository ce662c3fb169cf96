#include "loader/FltLoader.h"

#include "complete/FltCompleteConversion.h"
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
#include "toolkit/SoReferencesGivenBack.h"

#include <Inventor/SoDB.h>
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

/// The same with the log that is asked for.
/// @param messages get to know if the log isn't whole
void convertAndLog(FltLoader const& options, FltDatabaseFile const& database, FltLoadHost& host,
                   SoSeparator* root, FltMessageCollector& messages)
{
    Flt_15_7_CreationVisitor::Session const factory;
    FltFileInput input = readFile(database);
    if (!input.isInFlowCreated())
        throw notReadable(database);
    input.dropBytesWhenParsed();
    FltLoadLog log(options.log, database.getPath());
    convertExactly(database, input, host, root);
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
    convertAndLog(options, database, host, content->root.get(), messages);
    host.finish();
    content->messages = std::move(messages.messages());
    return content;
}

FltCompleteConversion::Options completeOptions(FltLoader const& options, FltLoadHost& host)
{
    using Complete = FltCompleteConversion;
    FltCompleteConversion::Options complete;
    complete.lod = options.levelsOfDetail == FltLoader::LevelsOfDetail::highest  ? Complete::Lod::highest
                   : options.levelsOfDetail == FltLoader::LevelsOfDetail::lowest ? Complete::Lod::lowest
                                                                                 : Complete::Lod::stored;
    complete.units =
        options.units == FltLoader::Units::stored ? Complete::Units::stored : Complete::Units::metres;
    complete.references = options.references == FltLoader::References::asFile ? Complete::References::file
                          : options.references == FltLoader::References::skip ? Complete::References::skipped
                                                                              : Complete::References::inlined;
    complete.salvage = options.salvage;
    complete.makeTexture = [&host](std::string const& stored, std::string const& file) {
        return host.makeTexture(file, stored);
    };
    complete.open = [&host](std::string const& file) { return host.openReferenced(file); };
    if (options.progress)
        complete.progress = [&host](std::string const& file, std::size_t done, std::size_t all) {
            host.report(file, done, all);
            return true;
        };
    return complete;
}

/// Writes the log that is asked for, as the exact conversion does. Its scene and what it tells are dropped.
/// @param messages get to know if the log isn't whole
void writeLog(FltLoader const& options, FltDatabaseFile const& database, FltMessageCollector& messages)
{
    FltScene::Content dropped;
    SoNodeRef<SoSeparator> const root(new SoSeparator);
    FltMessageCollector unheard;
    FltLoadHost host(options, database.getPath(), dropped, unheard);
    convertAndLog(options, database, host, root.get(), messages);
}

/// Loads by the complete conversion.
std::unique_ptr<FltScene::Content> loadCompletely(FltLoader const& options, FltDatabaseFile const& database)
{
    FltMessageCollector messages;
    if (options.log)
        writeLog(options, database, messages);
    auto content = std::make_unique<FltScene::Content>();
    FltLoadHost host(options, database.getPath(), *content, messages);
    messages.setFile(database.getPath());
    FltCompleteConversion::Result result = FltCompleteConversion::convert(
        database.getPathWithDirectory(), database.open(), completeOptions(options, host));
    if (result.outcome == FltCompleteConversion::Outcome::cannotOpen)
        throw notReadable(database);
    if (result.outcome != FltCompleteConversion::Outcome::converted)
        throw database.whyNotConverted();
    content->root = result.root;
    if (result.header != nullptr)
        host.takeHeader(*result.header);
    content->info.records = result.records;
    content->info.bytes = result.bytes;
    for (FltCompleteConversion::Reference& reference : result.references)
        content->references.push_back({std::move(reference.stored), std::move(reference.from),
                                       std::move(reference.found), reference.isLoaded});
    for (auto const& [kind, count] : result.leftOut)
        content->omissions.push_back({kind, static_cast<std::uint64_t>(count)});
    content->switches = std::move(result.switches);
    content->dofs = std::move(result.dofs);
    host.finishTextures();
    content->messages = std::move(messages.messages());
    result.names.give(); // the last that is done, when nothing can fail any more
    return content;
}

FltScene loadScene(FltLoader const& options, std::string const& path)
{
    FltDatabaseFile const database = open(options, path);
    if (!SoDB::isInitialized())
        SoDB::init();
    if (!options.exact)
        return FltScene(loadCompletely(options, database));
    refuseWhatIsForTheCompleteConversion(options, path);
    return FltScene(loadExactly(options, database));
}

/// Made beforehand, for when there isn't even the memory to say so; copying it takes none.
FltLoadError const noMemoryForWords(Kind::outOfMemory, "", "the memory doesn't suffice.");

FltScene loadOrExplain(FltLoader const& options, std::string const& path)
{
    try {
        return loadScene(options, path);
    } catch (FltLoadError const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw FltDatabaseFile::outOfMemory(path);
    } catch (std::exception const& problem) {
        throw FltLoadError(Kind::failed, path, std::string("unexpected failure: ") + problem.what());
    }
}

} // namespace

FltScene FltLoader::load(std::string const& path) const
{
    FltLoadLock const lock;
    try {
        return loadOrExplain(*this, path);
    } catch (FltLoadHost::CallbackFailure const& failure) {
        std::rethrow_exception(failure.reason);
    } catch (std::bad_alloc const&) {
        throw FltLoadError(noMemoryForWords);
    }
}

bool FltLoader::canLoad(std::string const& path)
{
    return FltDatabaseFile::canConvert(path);
}

void FltLoader::setWait(Wait const* wait)
{
    FltLoadLock::setWait(wait);
}

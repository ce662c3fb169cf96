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

/// Makes the scene by the exact conversion.
void convertExactly(std::string const& path, FltInput& input, FltLoadHost& host, SoSeparator* root)
{
    SoReferencesGivenBack const references(root);
    FltToInventor converter;
    converter.setFltInputToconvert(&input);
    converter.setResult(root);
    converter.setHost(&host);
    if (converter.convert() != 0 || root->getNumChildren() == 0)
        throw FltDatabaseFile::whyNotConverted(path);
}

FltFileInput readFile(std::string const& path)
{
    FltDumpOutput::Redirect const noDump(nullptr); // the log begins with the records
    return FltFileInput(FltDatabaseFile::withDirectory(path).c_str());
}

/// What has to be there before a conversion can begin.
void prepare(FltLoader const& options, std::string const& path)
{
    FltDatabaseFile::checkReadable(path, options.largestFile);
    if (!FltDatabaseFile::canConvert(path))
        throw FltDatabaseFile::whyNotConverted(path);
    if (!SoDB::isInitialized())
        SoDB::init();
}

FltLoadError notReadable(std::string const& path)
{
    return {Kind::cannotOpen, path,
            "cannot be read. A backslash in a name is taken as a slash: give it another name."};
}

/// Loads by the exact conversion, which writes the log.
std::unique_ptr<FltScene::Content> loadExactly(FltLoader const& options, std::string const& path)
{
    auto content = std::make_unique<FltScene::Content>();
    content->root = SoNodeRef<SoSeparator>(new SoSeparator);
    FltMessageCollector messages;
    Flt_15_7_CreationVisitor::Session const factory;
    FltFileInput input = readFile(path);
    if (!input.isInFlowCreated())
        throw notReadable(path);
    input.dropBytesWhenParsed();
    FltLoadLog log(options.log, path);
    FltLoadHost host(options, path, *content, messages);
    convertExactly(path, input, host, content->root.get());
    host.finish();
    if (!log.close())
        messages.add(
            {FltMessage::Level::error, "the log isn't whole. Check the space on the disk.", log.getPath()});
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
    complete.largestFile = options.largestFile;
    complete.makeTexture = [&host](std::string const& stored, std::string const& file) {
        return host.makeTexture(file, stored);
    };
    if (options.onlyBelow)
        complete.mayRead = [&host](std::string const& file) { return host.isInReach(file); };
    if (options.progress)
        complete.progress = [&host](std::string const& file, std::size_t done, std::size_t all) {
            host.report(file, done, all);
            return true;
        };
    return complete;
}

/// Writes the log that is asked for, as the exact conversion does; its scene and its messages are dropped.
void writeLog(FltLoader const& options, std::string const& path)
{
    FltLoader exact;
    exact.log = options.log;
    exact.largestFile = options.largestFile;
    exact.onlyBelow = options.onlyBelow;
    if (options.references == FltLoader::References::skip)
        exact.references = options.references;
    loadExactly(exact, path);
}

/// Loads by the complete conversion.
std::unique_ptr<FltScene::Content> loadCompletely(FltLoader const& options, std::string const& path)
{
    if (options.log)
        writeLog(options, path);
    auto content = std::make_unique<FltScene::Content>();
    FltMessageCollector messages;
    FltLoadHost host(options, path, *content, messages);
    messages.setFile(path);
    FltCompleteConversion::Result result =
        FltCompleteConversion::convert(FltDatabaseFile::withDirectory(path), completeOptions(options, host));
    if (result.outcome == FltCompleteConversion::Outcome::cannotOpen)
        throw notReadable(path);
    if (result.outcome != FltCompleteConversion::Outcome::converted)
        throw FltDatabaseFile::whyNotConverted(path);
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
    prepare(options, path);
    if (!options.exact)
        return FltScene(loadCompletely(options, path));
    refuseWhatIsForTheCompleteConversion(options, path);
    return FltScene(loadExactly(options, path));
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

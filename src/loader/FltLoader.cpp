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

FltScene loadScene(FltLoader const& options, std::string const& path)
{
    FltDatabaseFile::checkReadable(path, options.largestFile);
    refuseWhatIsForTheCompleteConversion(options, path);
    if (!FltDatabaseFile::canConvert(path))
        throw FltDatabaseFile::whyNotConverted(path);
    if (!SoDB::isInitialized())
        SoDB::init();

    auto content = std::make_unique<FltScene::Content>();
    content->root = SoNodeRef<SoSeparator>(new SoSeparator);
    FltMessageCollector messages;
    Flt_15_7_CreationVisitor::Session const factory;
    FltFileInput input = readFile(path);
    if (!input.isInFlowCreated())
        throw FltLoadError(
            Kind::cannotOpen, path,
            "cannot be read. A backslash in a name is taken as a slash: give it another name.");
    input.dropBytesWhenParsed();
    FltLoadLog log(options.log, path);
    FltLoadHost host(options, path, *content, messages);
    convertExactly(path, input, host, content->root.get());
    host.finish();
    if (!log.close())
        messages.add(
            {FltMessage::Level::error, "the log isn't whole. Check the space on the disk.", log.getPath()});
    content->messages = std::move(messages.messages());
    return FltScene(std::move(content));
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

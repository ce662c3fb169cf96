#include "loader/FltLoader.h"

#include "convert/FltToInventor.h"
#include "dump/FltDumpOutput.h"
#include "loader/FltDatabaseFile.h"
#include "loader/FltLoadHost.h"
#include "loader/FltLoadLog.h"
#include "loader/FltMessageCollector.h"
#include "loader/FltSceneContent.h"
#include "parser/FltFileInput.h"
#include "parser/Flt_15_7_CreationVisitor.h"
#include "toolkit/SoReferencesGivenBack.h"

#include <Inventor/SoDB.h>
#include <mutex>
#include <new>

namespace
{

using Kind = FltLoadError::Kind;

/// Held during a load: the toolkit and the library's own registers are for one thread at a time. A callback
/// of a load may load on its own.
std::recursive_mutex& loadLock()
{
    static auto* const lock = new std::recursive_mutex;
    return *lock;
}

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
void convertExactly(FltInput& input, FltLoadHost& host, SoSeparator* root)
{
    SoReferencesGivenBack const references(root);
    FltToInventor converter;
    converter.setFltInputToconvert(&input);
    converter.setResult(root);
    converter.setHost(&host);
    if (converter.convert() != 0 || root->getNumChildren() == 0)
        throw FltDatabaseFile::whyNotConverted(input.getFileName());
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
    FltLoadLog log(options.log, path);
    FltLoadHost host(options, input.getFileName(), *content, messages);
    convertExactly(input, host, content->root.get());
    host.finish();
    if (!log.close())
        messages.add(
            {FltMessage::Level::error, "the log isn't whole. Check the space on the disk.", log.getPath()});
    content->messages = std::move(messages.messages());
    return FltScene(std::move(content));
}

} // namespace

FltScene FltLoader::load(std::string const& path) const
{
    std::lock_guard<std::recursive_mutex> const lock(loadLock());
    try {
        return loadScene(*this, path);
    } catch (FltLoadError const&) {
        throw;
    } catch (FltLoadHost::CallbackFailure const& failure) {
        std::rethrow_exception(failure.reason);
    } catch (std::bad_alloc const&) {
        throw FltLoadError(
            Kind::outOfMemory, path,
            "the memory doesn't suffice. The database is damaged, or too large for this machine.");
    } catch (std::exception const& problem) {
        throw FltLoadError(Kind::failed, path, std::string("unexpected failure: ") + problem.what());
    }
}

bool FltLoader::canLoad(std::string const& path)
{
    return FltDatabaseFile::canConvert(path);
}

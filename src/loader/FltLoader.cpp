#include "loader/FltLoader.h"

#include "convert/FltToInventor.h"
#include "dump/FltDumpOutput.h"
#include "loader/FltDatabaseFile.h"
#include "loader/FltMessageCollector.h"
#include "loader/FltSceneContent.h"
#include "parser/FltFileInput.h"

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
void convertExactly(std::string const& path, FltScene::Content& content)
{
    FltDumpOutput::Redirect const noDump(nullptr);
    FltFileInput input(FltDatabaseFile::withDirectory(path).c_str());
    input.dropBytesWhenParsed();
    SoNodeRef<SoSeparator> const root(new SoSeparator);
    bool converted = false;
    {
        FltToInventor converter;
        converter.setFltInputToconvert(&input);
        converter.setResult(root.get());
        converted = converter.convert() == 0;
    }
    while (root->getRefCount() > 1)
        root->unrefNoDelete(); // each header took one
    if (!converted || root->getNumChildren() == 0)
        throw FltDatabaseFile::whyNotConverted(path);
    content.root = root;
}

FltScene loadScene(FltLoader const& loader, std::string const& path)
{
    FltDatabaseFile::checkReadable(path, loader.largestFile);
    refuseWhatIsForTheCompleteConversion(loader, path);
    if (!SoDB::isInitialized())
        SoDB::init();
    auto content = std::make_unique<FltScene::Content>();
    FltMessageCollector messages;
    convertExactly(path, *content);
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

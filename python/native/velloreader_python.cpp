// What the Python package calls. Answers go through callbacks as JSON, which Python reads by itself.

#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <dlfcn.h>
#include <exception>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace
{

using Json = nlohmann::ordered_json;
using Answer = void (*)(char const* json);
using Progress = int (*)(char const* file, std::uint64_t bytesDone, std::uint64_t bytesInAll);

void answer(Answer callback, Json const& json)
{
    callback(json.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
}

char const* nameOf(FltLoadError::Kind kind)
{
    switch (kind) {
    case FltLoadError::Kind::cannotOpen:
        return "cannotOpen";
    case FltLoadError::Kind::notOpenFlight:
        return "notOpenFlight";
    case FltLoadError::Kind::revision:
        return "revision";
    case FltLoadError::Kind::damaged:
        return "damaged";
    case FltLoadError::Kind::outOfMemory:
        return "outOfMemory";
    case FltLoadError::Kind::cancelled:
        return "cancelled";
    case FltLoadError::Kind::refused:
        return "refused";
    case FltLoadError::Kind::failed:
        break;
    }
    return "failed";
}

char const* nameOf(FltMessage::Level level)
{
    return level == FltMessage::Level::remark  ? "remark"
           : level == FltMessage::Level::error ? "error"
                                               : "warning";
}

/// A number, or null for one that stands for "none".
Json known(std::int64_t number)
{
    return number >= 0 ? Json(number) : Json();
}

Json textOrNull(std::string const& text)
{
    return text.empty() ? Json() : Json(text);
}

Json errorOf(char const* kind, std::string const& text)
{
    return {{"error", {{"kind", kind}, {"text", text}}}};
}

Json contentOf(FltScene const& scene)
{
    Json json = {{"messages", Json::array()},
                 {"textures", Json::array()},
                 {"references", Json::array()},
                 {"omissions", Json::object()},
                 {"info", Json::object()}};
    for (FltMessage const& message : scene.messages())
        json["messages"].push_back({{"level", nameOf(message.level)},
                                    {"text", message.text},
                                    {"file", message.file},
                                    {"offset", known(message.offset)},
                                    {"opcode", known(message.opcode)},
                                    {"times", message.count}});
    for (FltTexture const& texture : scene.textures())
        json["textures"].push_back({{"name", texture.name},
                                    {"database", texture.database},
                                    {"path", textOrNull(texture.path)},
                                    {"tried", texture.tried}});
    for (FltReference const& reference : scene.references())
        json["references"].push_back({{"name", reference.name},
                                      {"database", reference.database},
                                      {"path", textOrNull(reference.path)},
                                      {"loaded", reference.isLoaded}});
    for (FltOmission const& omission : scene.omissions())
        json["omissions"][omission.kind] = omission.count;
    FltDatabaseInfo const& info = scene.info();
    json["info"] = {{"name", info.name},
                    {"revision", info.revision},
                    {"unit", FltDatabaseInfo::nameOf(info.unit)},
                    {"unit_multiplier", info.unitMultiplier},
                    {"last_change", info.lastChange},
                    {"projection", info.projection},
                    {"ellipsoid", info.ellipsoid},
                    {"origin", {info.originLatitude, info.originLongitude}},
                    {"south_west", {info.southWestLatitude, info.southWestLongitude}},
                    {"north_east", {info.northEastLatitude, info.northEastLongitude}},
                    {"records", info.records},
                    {"bytes", info.bytes}};
    return json;
}

/// Calls a function, and gives its answer, or the error that it threw.
template <typename Function>
void guarded(Answer callback, Function const& function)
{
    try {
        answer(callback, function());
    } catch (FltLoadError const& problem) {
        Json json = errorOf(nameOf(problem.kind()), problem.what());
        json["error"]["file"] = problem.file();
        json["error"]["offset"] = known(problem.offset());
        answer(callback, json);
    } catch (std::bad_alloc const&) {
        callback(R"({"error": {"kind": "outOfMemory", "text": "out of memory"}})");
    } catch (std::exception const& problem) {
        answer(callback, errorOf("failed", problem.what()));
    }
}

} // namespace

extern "C" {

/// Options of a load, as in FltLoader.
struct VelloreaderOptions {
    char const* log;                ///< Null for none.
    char const* const* texturePath; ///< Ends with a null.
    int references;
    int exact;
    Progress progress; ///< Null for none.
};

/// Lets SoDB::readAll() and SoFile read databases: the toolkit doesn't find the module by itself where Python
/// loaded it.
/// @return 0, or -1 if the module isn't there
VELLOREADER_API int velloreader_register()
{
    void* const module = ::dlopen("libSoFLTFileKit.so", RTLD_NOW);
    void* const function = module != nullptr ? ::dlsym(module, "_ZN12SoFLTFileKit9initClassEv") : nullptr;
    if (function == nullptr)
        return -1;
    reinterpret_cast<void (*)()>(function)();
    return 0;
}

/// Loads a database and adds the root of its scene to @p parent.
VELLOREADER_API void velloreader_load(SoGroup* parent, char const* path, VelloreaderOptions const* options,
                                      Answer callback)
{
    guarded(callback, [&] {
        FltLoader loader;
        if (options->log != nullptr)
            loader.log = options->log;
        for (char const* const* directory = options->texturePath; *directory != nullptr; ++directory)
            loader.texturePath.emplace_back(*directory);
        loader.references = static_cast<FltLoader::References>(options->references);
        loader.exact = options->exact != 0;
        if (options->progress != nullptr)
            loader.progress = [options](std::string const& file, std::uint64_t bytesDone,
                                        std::uint64_t bytesInAll) {
                return options->progress(file.c_str(), bytesDone, bytesInAll) != 0;
            };
        FltScene const scene = loader.load(path);
        Json content = contentOf(scene);
        parent->addChild(scene.root());
        return content;
    });
}

/// Begins to read the records of a database. @return what velloreader_next() takes; null after an error
VELLOREADER_API FltRecordReader* velloreader_records(char const* path, Answer callback)
{
    FltRecordReader* reader = nullptr;
    guarded(callback, [&] {
        reader = new FltRecordReader(path);
        return Json();
    });
    return reader;
}

/// Gives the next record, or null after the last one.
VELLOREADER_API void velloreader_next(FltRecordReader* reader, Answer callback)
{
    bool isThere = false;
    std::string record;
    try {
        isThere = reader->next();
        if (isThere)
            record = reader->json();
    } catch (std::exception const& problem) {
        return answer(callback, errorOf("outOfMemory", problem.what()));
    }
    callback(isThere ? record.c_str() : "null");
}

VELLOREADER_API void velloreader_close(FltRecordReader* reader)
{
    delete reader;
}

/// Gives a reference to a node back.
VELLOREADER_API void velloreader_unref(SoNode* node)
{
    node->unref();
}
}

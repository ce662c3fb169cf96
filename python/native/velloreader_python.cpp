// What the Python package calls. Whoever calls holds the interpreter's lock: other threads of Python don't
// use the toolkit meanwhile, except while a callback runs. A call gives an object that owns its result, or
// raises an exception.

#include "PythonApi.h"

#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "toolkit/SoNodeRef.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <dlfcn.h>
#include <exception>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <unistd.h>

namespace
{

using Json = nlohmann::ordered_json;
using Root = SoNodeRef<SoSeparator>;

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

PyObject* textOf(std::string_view text)
{
    return PyUnicode_DecodeUTF8(text.data(), static_cast<std::ptrdiff_t>(text.size()), "replace");
}

/// Hands an object over to the interpreter, which deletes it with the last reference. No step of Python is in
/// that, before which an exception could come.
template <typename Object>
PyObject* owning(std::unique_ptr<Object> object)
{
    auto const free = [](PyObject* capsule) {
        delete static_cast<Object*>(PyCapsule_GetPointer(capsule, nullptr));
    };
    PyObject* const capsule = PyCapsule_New(object.get(), nullptr, free);
    if (capsule != nullptr)
        static_cast<void>(object.release());
    return capsule;
}

/// Calls a function, and has @p fail raise the error that it threw.
/// @return its result, or null where an exception is raised
template <typename Function>
PyObject* guarded(PyObject* fail, Function const& function)
{
    try {
        return function();
    } catch (FltLoadError const& problem) {
        if (PyErr_Occurred() == nullptr) // by the progress function, which ends the load
            Py_DecRef(PyObject_CallFunction(fail, "sNiN", nameOf(problem.kind()), textOf(problem.what()),
                                            problem.systemError(),
                                            PyUnicode_DecodeFSDefault(problem.file().c_str())));
    } catch (std::bad_alloc const&) {
        PyErr_NoMemory();
    } catch (std::exception const& problem) {
        PyErr_SetString(PyExc_RuntimeError, problem.what());
    }
    return nullptr;
}

/// Stands around a call that takes the interpreter's lock, and throws nothing. A thread that comes back when
/// the interpreter has ended is unwound by it. That mustn't go through a load, which would use the toolkit
/// beside the thread that ends the process: the thread stays here.
class Return
{
public:
    Return() = default;
    ~Return()
    {
        while (!isBack)
            ::pause();
    }
    Return(Return const&) = delete;
    Return& operator=(Return const&) = delete;

    bool isBack = false;
};

/// For FltLoader::setWait(): a thread that waits doesn't keep the interpreter's lock, which callbacks take.
constexpr FltLoader::Wait withoutInterpreter = {
    []() -> void* {
        bool const isHeld =
            Py_IsInitialized() != 0 && PyGILState_GetThisThreadState() != nullptr && PyGILState_Check() != 0;
        return isHeld ? PyEval_SaveThread() : nullptr;
    },
    [](void* state) {
        if (state == nullptr)
            return;
        Return thread;
        PyEval_RestoreThread(static_cast<PyThreadState*>(state));
        thread.isBack = true;
    },
};

/// Calls what Python gave as progress function, and the handlers of signals that have come.
/// @return whether to go on; not after an exception, which stays raised
bool goesOn(PyObject* progress, std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll)
{
    if (PyErr_CheckSignals() != 0)
        return false;
    if (progress == nullptr)
        return true;
    PyObject* const result = PyObject_CallFunction(progress, "NKK", PyUnicode_DecodeFSDefault(file.c_str()),
                                                   static_cast<unsigned long long>(bytesDone),
                                                   static_cast<unsigned long long>(bytesInAll));
    bool const isTrue = result != nullptr && PyObject_IsTrue(result) > 0;
    Py_DecRef(result);
    return isTrue;
}

} // namespace

extern "C" {

/// Options of a load, as in FltLoader.
struct VelloreaderOptions {
    char const* log;                ///< Null for none.
    char const* const* texturePath; ///< Ends with a null.
    int references;
    int exact;
};

/// Readies the library. Lets SoDB::readAll() and SoFile read databases: the toolkit doesn't find the module
/// by itself where Python loaded it.
/// @return 0, or -1 if the module isn't there
VELLOREADER_API int velloreader_begin()
{
    FltLoader::setWait(&withoutInterpreter);
    void* const module = ::dlopen("libSoFLTFileKit.so", RTLD_NOW);
    void* const function = module != nullptr ? ::dlsym(module, "_ZN12SoFLTFileKit9initClassEv") : nullptr;
    if (function == nullptr)
        return -1;
    reinterpret_cast<void (*)()>(function)();
    return 0;
}

/// Loads a database and adds the root of its scene to @p parent.
/// @param progress called as FltLoader::progress; null for none
/// @param fail     raises the exception for an error, from its kind, text, number of the system and file
/// @return a tuple: the content as JSON, and an object that owns a reference to the root
VELLOREADER_API PyObject* velloreader_load(SoGroup* parent, char const* path,
                                           VelloreaderOptions const* options, PyObject* progress,
                                           PyObject* fail)
{
    return guarded(fail, [&]() -> PyObject* {
        FltLoader loader;
        if (options->log != nullptr)
            loader.log = options->log;
        for (char const* const* directory = options->texturePath; *directory != nullptr; ++directory)
            loader.texturePath.emplace_back(*directory);
        loader.references = static_cast<FltLoader::References>(options->references);
        loader.exact = options->exact != 0;
        loader.progress = [&](std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll) {
            Return thread;
            bool const isWanted = goesOn(progress, file, bytesDone, bytesInAll);
            thread.isBack = true;
            return isWanted;
        };
        FltScene const scene = loader.load(path);
        parent->addChild(scene.root());
        auto root = std::make_unique<Root>(scene.root());
        PyObject* const content =
            textOf(contentOf(scene).dump(-1, ' ', false, Json::error_handler_t::replace));
        return Py_BuildValue("NN", content, owning(std::move(root)));
    });
}

/// Begins to read the records of a database.
/// @return what velloreader_next() takes
VELLOREADER_API PyObject* velloreader_records(char const* path, PyObject* fail)
{
    return guarded(fail, [&] { return owning(std::make_unique<FltRecordReader>(path)); });
}

/// @return the next record as JSON, or None after the last one
VELLOREADER_API PyObject* velloreader_next(PyObject* records, PyObject* fail)
{
    return guarded(fail, [&] {
        auto& reader = *static_cast<FltRecordReader*>(PyCapsule_GetPointer(records, nullptr));
        return reader.next() ? textOf(reader.json()) : Py_BuildValue("");
    });
}
}

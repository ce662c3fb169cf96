// What the Python package calls. Whoever calls holds the interpreter's lock: other threads of Python don't
// use the toolkit meanwhile, except while a callback runs. A call gives an object that owns its result, or
// raises an exception.

#include "LoadedVisual.h"
#include "PythonObjects.h"
#include "RecordColumns.h"
#include "RecordObject.h"
#include "ReportJson.h"

#include "gltf/FltGltf.h"
#include "loader/FltLoader.h"
#include "loader/FltLoaderOption.h"
#include "loader/FltRecordReader.h"
#include "obj/FltObj.h"
#include "toolkit/SoNodeRef.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

namespace
{

using PythonObjects::owned;
using PythonObjects::owning;
using PythonObjects::textOf;
using ReportJson::Json;
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

char const* nameOf(FltMesh::Kind kind)
{
    return kind == FltMesh::Kind::faces ? "faces" : kind == FltMesh::Kind::lines ? "lines" : "points";
}

char const* nameOf(FltLoaderOption::Kind kind)
{
    switch (kind) {
    case FltLoaderOption::Kind::flag:
        return "flag";
    case FltLoaderOption::Kind::word:
        return "word";
    case FltLoaderOption::Kind::number:
        return "number";
    case FltLoaderOption::Kind::directory:
        return "directory";
    case FltLoaderOption::Kind::directories:
        return "directories";
    case FltLoaderOption::Kind::log:
        break;
    }
    return "log";
}

PyObject* jsonTextOf(Json const& json)
{
    return textOf(json.dump(-1, ' ', false, Json::error_handler_t::replace));
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
    } catch (FltGltfError const& problem) {
        Py_DecRef(PyObject_CallFunction(fail, "sNiN", "refused", textOf(problem.what()),
                                        problem.systemError(),
                                        PyUnicode_DecodeFSDefault(problem.file().c_str())));
    } catch (std::bad_alloc const&) {
        PyErr_NoMemory();
    } catch (std::invalid_argument const& problem) {
        PyErr_SetString(PyExc_ValueError, problem.what());
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

/// A walk over the meshes of a visual, which keeps it.
struct MeshWalk {
    explicit MeshWalk(std::shared_ptr<LoadedVisual> loaded)
        : visual(std::move(loaded)), walk(visual->visual.root)
    {
    }

    std::shared_ptr<LoadedVisual> visual;
    FltVisualWalk walk;
};

/// Records that are made for one call: a call costs as much as one of them.
constexpr int recordsAtOnce = 64;

/// A walk over the records of a file.
struct RecordWalk {
    /// @param opcodes of the records that are wanted; empty for all
    RecordWalk(char const* path, std::set<int> opcodes) : reader(path), opcodes(std::move(opcodes)) {}

    /// Goes on to the next record that is wanted. @return false after the last one
    bool next()
    {
        while (reader.next())
            if (opcodes.empty() || opcodes.count(reader.opcode()) != 0)
                return true;
        return false;
    }

    FltRecordReader reader;
    std::set<int> opcodes;
    RecordObject object;
};

PyObject* colorOf(SbColor const& color)
{
    return Py_BuildValue("(ddd)", static_cast<double>(color[0]), static_cast<double>(color[1]),
                         static_cast<double>(color[2]));
}

/// What the class Material is made of.
PyObject* materialOf(FltMesh const& mesh, LoadedVisual const& visual)
{
    FltMesh::Material const& material = mesh.material;
    return Py_BuildValue("(NNNdNNNNNNidi)", colorOf(material.ambient), colorOf(material.specular),
                         colorOf(material.emissive), static_cast<double>(material.shininess),
                         PyBool_FromLong(mesh.isLit), PyBool_FromLong(mesh.isTwoSided),
                         PyBool_FromLong(mesh.isBlended), PyBool_FromLong(mesh.isCutOut),
                         PyBool_FromLong(mesh.ignoresTextureAlpha), PyBool_FromLong(mesh.isOutlined),
                         int(mesh.level), static_cast<double>(mesh.size), visual.textureOf(mesh.texture));
}

/// The number and the texture of each further layer.
PyObject* layersOf(FltMesh const& mesh, LoadedVisual const& visual)
{
    Json layers = Json::array();
    for (FltMesh::Layer const& layer : mesh.layers)
        layers.push_back({layer.number, visual.textureOf(layer.texture)});
    return jsonTextOf(layers);
}

/// What the class Mesh is made of.
PyObject* meshOf(MeshWalk const& at)
{
    FltMesh const& mesh = at.walk.mesh();
    FltVisualNode::Record const record = at.walk.record();
    bool const isKnown = record.offset != FltVisualNode::Record::none;
    std::string const& file = at.visual->visual.files[isKnown ? record.file : 0];
    return Py_BuildValue("(NNNNsNN)", owning(std::make_unique<PlacedMesh>(at.visual, at.walk)),
                         textOf(at.walk.name()), PyUnicode_DecodeFSDefault(file.c_str()),
                         isKnown ? Py_BuildValue("K", static_cast<unsigned long long>(record.offset))
                                 : PythonObjects::none(),
                         nameOf(mesh.kind), materialOf(mesh, *at.visual), layersOf(mesh, *at.visual));
}

} // namespace

extern "C" {

/// Readies the library.
VELLOREADER_API void velloreader_begin()
{
    FltLoader::setWait(&withoutInterpreter);
}

/// Lets SoDB::readAll() and SoFile read databases, once the toolkit is started: it doesn't find the module by
/// itself where Python loaded it.
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

/// @return the names of the loader's options and the kinds of their values, as JSON
VELLOREADER_API PyObject* velloreader_options(PyObject* fail)
{
    return guarded(fail, [] {
        Json options;
        for (FltLoaderOption const& option : FltLoaderOption::table())
            options[std::string(option.name)] = nameOf(option.kind);
        return jsonTextOf(options);
    });
}

/// @return a loader, for velloreader_set() and velloreader_load()
VELLOREADER_API PyObject* velloreader_loader(PyObject* fail)
{
    return guarded(fail, [] { return owning(std::make_unique<FltLoader>()); });
}

/// Gives an option of a loader a value, as FltLoaderOption::set() does.
VELLOREADER_API PyObject* velloreader_set(PyObject* loader, char const* option, char const* value,
                                          PyObject* fail)
{
    return guarded(fail, [&] {
        FltLoaderOption::named(option).set(owned<FltLoader>(loader), value);
        return PythonObjects::none();
    });
}

/// Loads a database.
/// @param parent   gets the root of its scene; null for plain data
/// @param progress called as FltLoader::progress; null for none
/// @param fail     raises the exception for an error, from its kind, text, number of the system and file
/// @return a tuple: the content as JSON, and an object that owns a reference to the root, or the plain data
VELLOREADER_API PyObject* velloreader_load(PyObject* options, char const* path, SoGroup* parent,
                                           PyObject* progress, PyObject* fail)
{
    return guarded(fail, [&]() -> PyObject* {
        FltLoader loader = owned<FltLoader>(options);
        loader.progress = [&](std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll) {
            Return thread;
            bool const isWanted = goesOn(progress, file, bytesDone, bytesInAll);
            thread.isBack = true;
            return isWanted;
        };
        if (parent == nullptr) {
            FltVisual visual = loader.loadVisual(path);
            Json const content = ReportJson::of(visual);
            auto loaded = std::make_unique<std::shared_ptr<LoadedVisual>>(
                std::make_shared<LoadedVisual>(std::move(visual)));
            return Py_BuildValue("NN", jsonTextOf(content), owning(std::move(loaded)));
        }
        FltScene const scene = loader.load(path);
        parent->addChild(scene.root());
        auto root = std::make_unique<Root>(scene.root());
        return Py_BuildValue("NN", jsonTextOf(ReportJson::of(scene)), owning(std::move(root)));
    });
}

/// Makes the scene of plain data, and adds its root to @p parent.
/// @return an object that owns a reference to the root
VELLOREADER_API PyObject* velloreader_scene(PyObject* visual, SoGroup* parent, PyObject* fail)
{
    return guarded(fail, [&] {
        std::shared_ptr<LoadedVisual> const loaded = owned<std::shared_ptr<LoadedVisual>>(visual);
        FltScene const scene = FltLoader::makeScene(loaded->visual);
        parent->addChild(scene.root());
        return owning(std::make_unique<Root>(scene.root()));
    });
}

/// Writes plain data into a file, in the form that its name says.
/// @return what that form can't tell, by kind, as JSON
VELLOREADER_API PyObject* velloreader_save(PyObject* visual, char const* path, PyObject* fail)
{
    return guarded(fail, [&] {
        FltVisual const& loaded = owned<std::shared_ptr<LoadedVisual>>(visual)->visual;
        bool const isObj = std::filesystem::path(path).extension() == ".obj";
        FltGltfReport const report = isObj ? FltObj::write(loaded, path) : FltGltf::write(loaded, path);
        Json omissions = Json::object();
        for (FltOmission const& omission : report.omissions)
            omissions[omission.kind] = omission.count;
        return jsonTextOf(omissions);
    });
}

/// Begins to go over the meshes of plain data.
/// @return what velloreader_next_mesh() takes
VELLOREADER_API PyObject* velloreader_meshes(PyObject* visual, PyObject* fail)
{
    return guarded(fail, [&] {
        return owning(std::make_unique<MeshWalk>(owned<std::shared_ptr<LoadedVisual>>(visual)));
    });
}

/// @return what the next mesh is made of, or None after the last one
VELLOREADER_API PyObject* velloreader_next_mesh(PyObject* meshes, PyObject* fail)
{
    return guarded(fail, [&] {
        auto& at = owned<MeshWalk>(meshes);
        return at.walk.next() ? meshOf(at) : PythonObjects::none();
    });
}

/// @param layer as in PlacedMesh::array()
/// @return address, rows, columns (0 for a single row) and type of an array in the storage of a mesh; None if
///         it has none
VELLOREADER_API PyObject* velloreader_array(PyObject* mesh, char const* which, std::size_t layer,
                                            PyObject* fail)
{
    return guarded(fail, [&] {
        PlacedMesh::Array const array = owned<PlacedMesh>(mesh).array(which, layer);
        return array.rows == 0 ? PythonObjects::none()
                               : Py_BuildValue("(KKKs)", reinterpret_cast<unsigned long long>(array.first),
                                               static_cast<unsigned long long>(array.rows),
                                               static_cast<unsigned long long>(array.columns), array.type);
    });
}

/// Begins to read the records of a database.
/// @param opcodes of the records that are wanted
/// @param count   how many there are; 0 if all records are wanted
/// @return what velloreader_next() takes
VELLOREADER_API PyObject* velloreader_records(char const* path, int const* opcodes, std::size_t count,
                                              PyObject* fail)
{
    return guarded(fail, [&] {
        return owning(std::make_unique<RecordWalk>(path, std::set<int>(opcodes, opcodes + count)));
    });
}

/// @return a list of the next records as dictionaries; an empty one after the last record
VELLOREADER_API PyObject* velloreader_next(PyObject* records, PyObject* fail)
{
    return guarded(fail, [&]() -> PyObject* {
        auto& at = owned<RecordWalk>(records);
        PyObject* const list = PyList_New(0);
        for (int i = 0; i < recordsAtOnce && PyErr_Occurred() == nullptr && at.next(); ++i) {
            at.reader.give(at.object);
            PythonObjects::append(list, at.object.take());
        }
        return PythonObjects::unlessRaised(list);
    });
}

/// @return the columns of the records of an opcode, as RecordColumns gives them, and first where the records
///         begin in the file, in the same form
VELLOREADER_API PyObject* velloreader_columns(char const* path, int opcode, PyObject* fail)
{
    return guarded(fail, [&] { return RecordColumns::listOf(FltRecordReader(path).columns(opcode)); });
}
}

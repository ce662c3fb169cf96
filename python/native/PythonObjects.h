#pragma once

#include "PythonApi.h"

#include <memory>
#include <string_view>

/// Objects of Python for those of the library.
namespace PythonObjects
{

inline PyObject* textOf(std::string_view text)
{
    return PyUnicode_DecodeUTF8(text.data(), static_cast<std::ptrdiff_t>(text.size()), "replace");
}

inline PyObject* none()
{
    return Py_BuildValue("");
}

/// Appends an item to a list, and gives it away. An item that there was no memory for raises an exception.
inline void append(PyObject* list, PyObject* item)
{
    if (list != nullptr && item != nullptr)
        static_cast<void>(PyList_Append(list, item));
    Py_DecRef(item);
}

/// The object itself, or null after an exception, when it isn't wanted any more.
inline PyObject* unlessRaised(PyObject* object)
{
    if (PyErr_Occurred() == nullptr)
        return object;
    Py_DecRef(object);
    return nullptr;
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

/// The object that owning() handed over.
template <typename Object>
Object& owned(PyObject* capsule)
{
    return *static_cast<Object*>(PyCapsule_GetPointer(capsule, nullptr));
}

} // namespace PythonObjects

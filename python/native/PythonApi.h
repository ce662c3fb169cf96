#pragma once

#include <cstddef>

// The functions of the interpreter that the library calls. They stand here, so that to build it takes no
// headers of Python's. All but PyGILState_Check() belong to the stable interface, so one library serves every
// version of Python 3; that one is in each all the same.

struct PyObject;
struct PyThreadState;

extern "C" {

PyObject* PyCapsule_New(void* pointer, char const* name, void (*destructor)(PyObject*));
void* PyCapsule_GetPointer(PyObject* capsule, char const* name);

PyObject* Py_BuildValue(char const* format, ...);
PyObject* PyObject_CallMethod(PyObject* object, char const* name, char const* format, ...);
PyObject* PyObject_CallFunction(PyObject* callable, char const* format, ...);
PyObject* PyUnicode_DecodeFSDefault(char const* text);
PyObject* PyUnicode_DecodeUTF8(char const* text, std::ptrdiff_t size, char const* errors);
PyObject* PyUnicode_InternFromString(char const* text);
PyObject* PyBool_FromLong(long value);
PyObject* PyFloat_FromDouble(double value);
PyObject* PyLong_FromLongLong(long long value);
PyObject* PyBytes_FromStringAndSize(char const* bytes, std::ptrdiff_t size);
PyObject* PyByteArray_FromStringAndSize(char const* bytes, std::ptrdiff_t size);
PyObject* PyDict_New();
PyObject* PyDict_GetItem(PyObject* dictionary, PyObject* key); ///< Gives no reference away.
int PyDict_SetItem(PyObject* dictionary, PyObject* key, PyObject* value);
PyObject* PyList_New(std::ptrdiff_t size);
int PyList_Append(PyObject* list, PyObject* item);
int PyObject_IsTrue(PyObject* object);
void Py_DecRef(PyObject* object);

extern PyObject* PyExc_RuntimeError;
extern PyObject* PyExc_ValueError;
int PyErr_CheckSignals();
PyObject* PyErr_NoMemory();
PyObject* PyErr_Occurred();
void PyErr_SetString(PyObject* type, char const* text);

int Py_IsInitialized();
int PyGILState_Check();
PyThreadState* PyGILState_GetThisThreadState();
PyThreadState* PyEval_SaveThread();
void PyEval_RestoreThread(PyThreadState* state);
}

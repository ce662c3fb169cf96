#include "RecordObject.h"

#include "PythonObjects.h"

#include <cmath>
#include <utility>

namespace
{

/// Whole numbers up to here are floats.
constexpr float lastWhole = 1 << 24;

} // namespace

RecordObject::~RecordObject()
{
    for (auto const& name : names)
        Py_DecRef(name.second);
    Py_DecRef(whole);
}

PyObject* RecordObject::take()
{
    PyObject* const taken = std::exchange(whole, nullptr);
    open.clear();
    last = {};
    member = nullptr;
    if (!std::exchange(isOutOfMemory, false))
        return taken;
    Py_DecRef(taken);
    return nullptr;
}

/// Names are few, and come again in every record.
PyObject* RecordObject::nameOf(char const* key)
{
    PyObject*& name = names[key];
    if (name == nullptr)
        name = PyUnicode_InternFromString(key);
    return name;
}

void RecordObject::key(char const* name)
{
    member = nameOf(name);
    isOutOfMemory |= member == nullptr;
    if (std::exchange(areFlags, false))
        last = {open.back(), member, nullptr};
}

/// Adds a value to what is open, and gives it away.
void RecordObject::put(PyObject* value)
{
    if (value == nullptr || isOutOfMemory) {
        isOutOfMemory = true;
        Py_DecRef(value);
        return;
    }
    if (open.empty()) {
        whole = value;
        return;
    }
    int const failure =
        member != nullptr ? PyDict_SetItem(open.back(), member, value) : PyList_Append(open.back(), value);
    isOutOfMemory |= failure != 0;
    Py_DecRef(value);
}

void RecordObject::begin(PyObject* group)
{
    put(group);
    open.push_back(group);
    member = nullptr;
}

void RecordObject::end()
{
    lastArray = open.back();
    open.pop_back();
}

void RecordObject::integer(std::int64_t value)
{
    put(PyLong_FromLongLong(value));
}

void RecordObject::real(float value)
{
    // Most are small whole numbers. What is larger has fewer digits than its double.
    bool const isExact = std::abs(value) < lastWhole ? std::trunc(value) == value : !std::isfinite(value);
    put(PyFloat_FromDouble(isExact ? static_cast<double>(value) : shortest(value)));
}

void RecordObject::real(double value)
{
    put(PyFloat_FromDouble(value));
}

void RecordObject::text(std::string_view characters)
{
    put(PythonObjects::textOf(characters));
}

void RecordObject::bytes(std::string_view bytes)
{
    PyObject* const object =
        PyBytes_FromStringAndSize(bytes.data(), static_cast<std::ptrdiff_t>(bytes.size()));
    put(object == nullptr ? nullptr : PyObject_CallMethod(object, "hex", nullptr));
    Py_DecRef(object);
}

/// Flags may be named when further members are there already: their value becomes a dictionary at its place.
void RecordObject::flag(char const* name, bool isSet)
{
    if (isOutOfMemory || last.owner == nullptr)
        return;
    if (last.bits == nullptr) {
        PyObject* const word = PyDict_GetItem(last.owner, last.name);
        last.bits = PyDict_New();
        isOutOfMemory = last.bits == nullptr || PyDict_SetItem(last.bits, nameOf("word"), word) != 0 ||
                        PyDict_SetItem(last.owner, last.name, last.bits) != 0;
        Py_DecRef(last.bits); // its place keeps it
        if (isOutOfMemory)
            return;
    }
    PyObject* const truth = PyBool_FromLong(isSet ? 1 : 0);
    isOutOfMemory = PyDict_SetItem(last.bits, nameOf(name), truth) != 0;
    Py_DecRef(truth);
}

void RecordObject::beginArray(Length /*length*/)
{
    begin(PyList_New(0));
}

void RecordObject::beginObject()
{
    begin(PyDict_New());
}

void RecordObject::resumeArray()
{
    open.push_back(lastArray);
    member = nullptr;
}

#pragma once

#include "PythonApi.h"

#include "loader/FltRecordReader.h"

#include <unordered_map>
#include <vector>

/// Makes a dictionary of Python of each record. Whoever calls holds the interpreter's lock.
///
/// Text is read as JSON reads it, and floats have the value that JSON writes. Bytes are two hexadecimal
/// digits each. Flags whose bits are named are a dictionary: the word, and each bit.
class RecordObject final : public FltFieldReceiver
{
public:
    RecordObject() = default;
    ~RecordObject();

    RecordObject(RecordObject const&) = delete;
    RecordObject& operator=(RecordObject const&) = delete;

    /// The object that was given, which becomes the caller's. Null, with an exception raised, if there was no
    /// memory for it.
    PyObject* take();

    void key(char const* name) override;
    void integer(std::int64_t value) override;
    void real(float value) override;
    void real(double value) override;
    void text(std::string_view characters) override;
    void bytes(std::string_view bytes) override;
    void beginArray(Length length) override;
    void endArray() override { end(); }
    void beginObject() override;
    void endObject() override { end(); }
    void resumeArray() override;
    void beginFlags() override { areFlags = true; }
    void endFlags() override {}
    void flag(char const* name, bool isSet) override;

private:
    /// Flags that may become a dictionary: where they stand.
    struct Flags {
        PyObject* owner = nullptr; ///< The dictionary that has them.
        PyObject* name = nullptr;
        PyObject* bits = nullptr; ///< The dictionary that they became.
    };

    PyObject* nameOf(char const* key);
    void put(PyObject* value);
    void begin(PyObject* group);
    void end();

    std::unordered_map<char const*, PyObject*> names; ///< Of all members so far, which this object owns.
    std::vector<PyObject*> open; ///< Dictionaries and lists; the first one owns them all.
    PyObject* whole = nullptr;
    PyObject* lastArray = nullptr;
    PyObject* member = nullptr; ///< The name of the value that follows; null in a list.
    bool areFlags = false;      ///< Whether the next member's value is flags.
    Flags last;
    bool isOutOfMemory = false;
};

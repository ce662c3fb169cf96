#pragma once

#include "PythonApi.h"

#include "loader/FltRecordReader.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Gathers the fields of many records of one opcode: a column a field, without an object a record.
///
/// A field in a block is called "block.field", and a named bit "flags.bit". Bytes, and blocks of which a
/// record has several, have no column.
class RecordColumns final : public FltFieldReceiver
{
public:
    /// Adds a row for the record that a reader stands at, unless it is too broken to be read. The first
    /// column is its place in the file, "offset".
    void add(FltRecordReader const& record);

    /// The columns as a list of tuples, one each: name, type of a value as in Python's struct, values in a
    /// row by dimension, values as a bytearray, how many values each row has (None if all have as many),
    /// whether each record lacks the field (None if none does). For texts, all in UTF-8 one behind the other,
    /// type "s".
    /// @return null, with an exception raised, if there was no memory for it
    PyObject* take();

    void key(char const* name) override { member = name; }
    void integer(std::int64_t value) override { add("q", value); }
    void real(float value) override { add("f", value); }
    void real(double value) override { add("d", value); }
    void text(std::string_view characters) override;
    void bytes(std::string_view /*bytes*/) override {}
    void beginArray(Length length) override;
    void endArray() override;
    void beginObject() override;
    void endObject() override;
    void resumeArray() override { beginArray(Length::counted); }
    void beginFlags() override { lastFlags = none; }
    void endFlags() override { lastFlags = expected - 1; }
    void flag(char const* name, bool isSet) override;

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    using Shape = std::vector<std::size_t>;

    struct Column {
        std::string name;
        char const* type = nullptr; ///< Of a value; null for a block, and for what is left out.
        std::string values;         ///< Of all records.
        Shape shape;                ///< Of a row; of an element where rows are counted. Empty for a number.
        std::size_t rowSize = 0;    ///< Bytes of a row.
        bool isCounted = false;     ///< Whether records have different numbers of values,
        std::vector<std::uint64_t> counts; ///< and how many each has.
        std::size_t rows = 0;              ///< Records so far.
        std::string absences;              ///< Whether each record lacks it; empty if none did.
    };

    Column& columnOf(char const* key, char const* type);
    template <class Value>
    void add(char const* type, Value value);
    void endRow(Column& column, std::size_t start, std::size_t count);
    static void fillUp(Column& column, std::size_t rows, std::size_t at);

    std::vector<Column> columns;                                      ///< In the order of the first record.
    std::vector<std::pair<std::size_t, char const*>> keys;            ///< Block and key of each column.
    std::map<std::pair<std::size_t, char const*>, std::size_t> known; ///< The column of each.
    std::size_t expected = 0; ///< The column of the next field if this record has the fields of the last one.
    std::size_t records = 0;
    char const* member = nullptr;
    std::vector<std::size_t> blocks; ///< The columns of the open blocks.
    std::size_t lastFlags = none;    ///< Their column.

    std::size_t array = none; ///< The column of the open array.
    int depth = 0;            ///< Of open arrays.
    std::size_t start = 0;    ///< Where the values of the outermost one begin.
    std::size_t elements = 0; ///< Arrays in it so far.
    int ignored = 0;          ///< Open objects in arrays, which have no column.
};

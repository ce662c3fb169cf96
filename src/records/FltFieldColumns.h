#pragma once

#include "records/FltColumn.h"
#include "records/FltFieldReceiver.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// Gathers the fields of many records of one opcode, for FltFieldLister: a column a field, without an object
/// a record.
///
/// The fields of a record mostly are those of the record before, in the same order: so the columns stand in
/// the order of the fields, and each field is expected at the next one. Bytes, and blocks of which a record
/// has several, have no column. A list has one if any record has a value of it.
class FltFieldColumns
{
public:
    static constexpr bool takesLists = true;

    /// @param mostRecords that are going to be gathered: each column gets room for them at once
    explicit FltFieldColumns(std::size_t mostRecords) : slots(1), capacity(mostRecords) {}

    /// Begins a row. @throw std::length_error if there are more than was said. The first column is the
    /// record's place in the file, "offset".
    void beginRecord(std::uint64_t byteOffset);
    void endRecord(); ///< Ends it. What the record lacked is marked.

    /// The columns, in the order of the first record. Nothing may be added after it.
    std::vector<FltColumn> take();

    /// @name As FltFieldReceiver has them
    /// @{
    using Length = FltFieldReceiver::Length;

    void key(char const* name) { member = name; }
    void integer(std::int64_t value) { put(FltColumn::Type::integer, value); }
    void real(float value) { put(FltColumn::Type::single, value); }
    void real(double value) { put(FltColumn::Type::real, value); }
    void text(std::string_view characters);
    void bytes(std::string_view /*bytes*/) {}
    void beginArray(Length length);
    void endArray();
    void beginObject();
    void endObject();
    void resumeArray() { beginArray(Length::counted); }
    void beginFlags() { lastFlags = none; }
    void endFlags() { lastFlags = ignored > 0 ? none : expected - 1; }
    void flag(char const* name, bool isSet)
    {
        if (lastFlags == none || ignored > 0)
            return;
        std::size_t const outer = std::exchange(block, lastFlags);
        member = name;
        put(FltColumn::Type::flag, static_cast<std::uint8_t>(isSet));
        block = outer;
    }
    /// @}

    /// Takes an array of numbers, or of arrays of them, in one piece.
    template <class Value>
    void list(Value const* values, int count, Length length)
    {
        using Number = std::remove_all_extents_t<Value>;
        using Stored = std::conditional_t<std::is_integral_v<Number>, std::int64_t, Number>;
        constexpr std::size_t inElement = std::is_array_v<Value> ? std::extent_v<Value> : 1;
        auto const elements = static_cast<std::size_t>(count);
        std::size_t const size = elements * inElement * sizeof(Stored);
        char* const row = length == Length::fixed ? fixedRow(typeOf<Stored>(), size)
                                                  : countedRow(typeOf<Stored>(), elements, size);
        if (row == nullptr)
            return;
        if (std::vector<std::size_t>& shape = columns[expected - 1].shape; shape.empty()) {
            if (length == Length::fixed)
                shape.push_back(elements);
            if (std::is_array_v<Value>)
                shape.push_back(inElement);
        }
        copy<Stored>(values, elements, row);
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    static constexpr std::size_t nowhere = none - 1; ///< The block of what has no column.

    /// What is asked of a column for each record.
    struct Slot {
        char const* key = nullptr; ///< Null after the last column.
        std::size_t block = none;
        std::uint64_t form = 0;     ///< Type and bytes of a row.
        std::size_t lastRecord = 0; ///< That had the field; the first one is 1.
        char* rows = nullptr;       ///< Values, or the counts of them.
    };

    static constexpr std::uint64_t formOf(FltColumn::Type type, std::size_t rowSize)
    {
        return static_cast<std::uint64_t>(rowSize) << 8 | static_cast<unsigned char>(type);
    }
    /// Where rows are counted, they have no size.
    static constexpr std::uint64_t countedForm(FltColumn::Type type) { return formOf(type, 0); }
    static constexpr std::uint64_t formOfBlock = 0;

    template <class Stored>
    static constexpr FltColumn::Type typeOf()
    {
        return std::is_same_v<Stored, float>    ? FltColumn::Type::single
               : std::is_same_v<Stored, double> ? FltColumn::Type::real
                                                : FltColumn::Type::integer;
    }

    /// Copies numbers as they are stored. @return the end
    template <class Stored, class Value>
    static char* copy(Value const* values, std::size_t count, char* to)
    {
        if constexpr (std::is_same_v<Stored, Value>) {
            if (count > 0)
                std::memcpy(to, values, count * sizeof(Stored));
            return to + count * sizeof(Stored);
        } else {
            for (std::size_t i = 0; i < count; ++i)
                if constexpr (std::is_array_v<Value>) {
                    to = copy<Stored>(values[i], std::extent_v<Value>, to);
                } else {
                    auto const stored = static_cast<Stored>(values[i]);
                    std::memcpy(to, &stored, sizeof stored);
                    to += sizeof stored;
                }
            return to;
        }
    }

    template <class Value>
    void put(FltColumn::Type type, Value value)
    {
        if (char* const row = fixedRow(type, sizeof value))
            std::memcpy(row, &value, sizeof value);
    }

    /// The row of this record in the column of the last key; null if that has no column.
    char* fixedRow(FltColumn::Type type, std::size_t rowSize)
    {
        Slot* const slot = nextSlot(formOf(type, rowSize));
        if (slot == nullptr)
            return nullptr;
        slot->lastRecord = records + 1;
        return slot->rows + records * rowSize;
    }
    char* countedRow(FltColumn::Type type, std::size_t count, std::size_t size);

    Slot* nextSlot(std::uint64_t form)
    {
        Slot* const slot = &slots[expected];
        if (slot->key != member || slot->block != block || slot->form != form)
            return searchedSlot(form);
        ++expected;
        return slot;
    }
    Slot* searchedSlot(std::uint64_t form);
    void addSlot(std::uint64_t form);
    void markAbsences();

    std::vector<FltColumn> columns;                                   ///< In the order of the first record.
    std::vector<Slot> slots;                                          ///< Of each of them, and an empty one.
    std::map<std::pair<std::size_t, char const*>, std::size_t> known; ///< The column of a block and a key.
    std::size_t expected = 0; ///< The column of the next field if this record has the fields of the last one.
    bool hasGaps = false;     ///< Whether a column may lack this record.
    std::size_t records = 0;
    std::size_t capacity; ///< Records that there is room for.
    char const* member = nullptr;
    std::size_t block = none;        ///< The column of the innermost open block.
    std::vector<std::size_t> blocks; ///< Those of the blocks around it.
    std::size_t lastFlags = none;    ///< Their column.
    int ignored = 0;                 ///< Open arrays and objects that have no column.
};

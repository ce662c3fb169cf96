#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltFieldReceiver.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

class FltRecord;

/// Hands a record's fields over by name with their values. See FltFields.h.
class FltFieldLister
{
public:
    /// Gives the fields of any record, as members of the object that is open.
    static void giveFields(FltRecord const& record, FltFieldReceiver& receiver);

    /// Gives any record as an object: opcode, class, category, length, offset and fields.
    /// @param byteOffset where the record begins in its file
    static void giveRecord(FltRecord const& record, std::uint64_t byteOffset, FltFieldReceiver& receiver);

    static constexpr bool decodes = false;
    static constexpr bool dumps = false;
    static constexpr bool lists = true;

    /// @param receiver in the object that gets the fields. It has to outlive this one.
    explicit FltFieldLister(FltFieldReceiver& receiver) : receiver(receiver) {}

    template <class Member, class... Style>
    void operator()(char const* name, Member const& member, Style const&... /*style*/)
    {
        bool const areFlags = std::string_view(name) == "flags" || std::string_view(name) == "Flags";
        if (areFlags)
            receiver.beginFlags();
        put(name, member);
        if (areFlags)
            receiver.endFlags();
    }
    template <class Value, std::size_t size, class Style>
    void first(int count, char const* name, Value const (&values)[size], Style const& /*style*/)
    {
        this->values(name, values, count);
    }
    template <class Value>
    void values(char const* name, Value const* values, int count)
    {
        list(name, values, count, FltFieldReceiver::Length::counted);
    }
    void values(char const* name, char const* bytes, int count) { characters(name, bytes, count); }
    void rest(char const* name, std::unique_ptr<char[]> const& text, unsigned int length);
    void text(char const* name, char const* text, int count);
    void text(char const* name, std::string_view text);
    void bytes(char const* name, char const* bytes, unsigned int count);
    void number(char const* name, int value) { put(name, value); }
    void flag(char const* name, std::uint32_t word, int bit, char const* /*label*/)
    {
        receiver.flag(name, (word >> bit & 1) != 0);
    }

    static bool from(int revision, int first) { return revision >= first; }
    static bool when(bool condition) { return condition; }

    void open(char const* name);
    void openElement(char const* name);
    void close();

    template <class Member, class Value>
    void preset(Member const& /*member*/, Value /*value*/)
    {
    }
    void skip(int /*count*/) {}
    static int place() { return 0; }
    void goTo(int /*place*/) {}
    template <class... Values>
    void show(Values const&... /*values*/)
    {
    }
    void showColor(char const* /*label*/, std::uint8_t /*value*/) {}
    void endLine() {}

private:
    template <class Number>
    std::enable_if_t<std::is_arithmetic_v<Number>> put(char const* name, Number value)
    {
        begin(name);
        add(value);
    }
    template <std::size_t size>
    void put(char const* name, char const (&text)[size])
    {
        characters(name, text, static_cast<int>(size));
    }
    template <class Value, std::size_t size>
    void put(char const* name, Value const (&values)[size])
    {
        list(name, values, static_cast<int>(size), FltFieldReceiver::Length::fixed);
    }
    template <class Value>
    void list(char const* name, Value const* values, int count, FltFieldReceiver::Length length)
    {
        begin(name);
        receiver.beginArray(length);
        for (int i = 0; i < count; ++i)
            add(values[i]);
        receiver.endArray();
    }
    template <class Number>
    std::enable_if_t<std::is_integral_v<Number>> add(Number value)
    {
        receiver.integer(value);
    }
    void add(float value) { receiver.real(value); }
    void add(double value) { receiver.real(value); }
    template <class Value, std::size_t size>
    void add(Value const (&row)[size])
    {
        receiver.beginArray(FltFieldReceiver::Length::fixed);
        for (Value const& value : row)
            add(value);
        receiver.endArray();
    }

    /// A char array: text, but for reserved bytes.
    void characters(char const* name, char const* text, int size);

    void begin(char const* name)
    {
        lastElement = nullptr;
        receiver.key(name);
    }

    FltFieldReceiver& receiver;
    std::vector<char const*> levels;   ///< The open blocks: the name of one of several, null for a lone one.
    char const* lastElement = nullptr; ///< The name of the block of several that has just ended.
};

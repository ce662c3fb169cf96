#pragma once

#include "records/FltDumpStyles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Lists a record's fields by name with their values, as a JSON object. See FltFields.h, and FltRecordJson
/// for the form of the values.
class FltFieldJson
{
public:
    static constexpr bool decodes = false;
    static constexpr bool dumps = false;
    static constexpr bool lists = true;

    /// @param fields the object that gets the fields, which has to outlive this one
    explicit FltFieldJson(nlohmann::ordered_json& fields) : levels{&fields} {}

    template <class Member, class... Style>
    void operator()(char const* name, Member const& member, Style const&... /*style*/)
    {
        put(name, member);
    }
    template <class Value, std::size_t size, class Style>
    void first(int count, char const* name, Value const (&values)[size], Style const& /*style*/)
    {
        this->values(name, values, count);
    }
    template <class Value>
    void values(char const* name, Value const* values, int count)
    {
        begin(name);
        for (int i = 0; i < count; ++i)
            add(values[i]);
        close();
    }
    void values(char const* name, char const* bytes, int count) { characters(name, bytes, count); }
    void rest(char const* name, std::unique_ptr<char[]> const& text, unsigned int length);
    void text(char const* name, char const* text, int count);
    void text(char const* name, std::string_view text);
    void bytes(char const* name, char const* bytes, unsigned int count);
    void number(char const* name, int value) { put(name, value); }
    void flag(char const* name, std::uint32_t word, int bit, char const* label);

    static bool from(int revision, int first) { return revision >= first; }
    static bool when(bool condition) { return condition; }

    void open(char const* name);
    void openElement(char const* name);
    void close() { levels.pop_back(); }

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
    std::enable_if_t<std::is_integral_v<Number>> put(char const* name, Number value)
    {
        putInteger(name, value);
    }
    void put(char const* name, float value);
    void put(char const* name, double value);
    template <std::size_t size>
    void put(char const* name, char const (&text)[size])
    {
        characters(name, text, static_cast<int>(size));
    }
    template <class Value, std::size_t size>
    void put(char const* name, Value const (&values)[size])
    {
        begin(name);
        for (Value const& value : values)
            add(value);
        close();
    }
    template <class Number>
    std::enable_if_t<std::is_integral_v<Number>> add(Number value)
    {
        addInteger(value);
    }
    void add(float value);
    void add(double value);
    template <class Value, std::size_t size>
    void add(Value const (&row)[size])
    {
        beginRow();
        for (Value const& value : row)
            add(value);
        close();
    }

    void putInteger(char const* name, std::int64_t value);
    void addInteger(std::int64_t value);

    /// A char array: text, but for reserved bytes.
    void characters(char const* name, char const* text, int size);

    /// An array under a name, until close().
    void begin(char const* name);
    void beginRow();

    nlohmann::ordered_json& here() { return *levels.back(); }

    std::vector<nlohmann::ordered_json*> levels; ///< The open objects and arrays, the innermost last.
    std::string flagWord;                        ///< The name of the last field that holds flags.
};

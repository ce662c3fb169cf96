#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltJsonText.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

/// Lists a record's fields by name with their values, as members of a JSON object. See FltFields.h, and
/// FltRecordJson for the form of the values.
class FltFieldJson
{
public:
    static constexpr bool decodes = false;
    static constexpr bool dumps = false;
    static constexpr bool lists = true;

    /// @param json in the object that gets the fields. It has to outlive this one.
    explicit FltFieldJson(FltJsonText& json) : json(json) {}

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
        json.open('[');
        for (int i = 0; i < count; ++i)
            add(values[i]);
        json.close(']');
        end(name);
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
        json.value(value);
        end(name);
    }
    template <std::size_t size>
    void put(char const* name, char const (&text)[size])
    {
        characters(name, text, static_cast<int>(size));
    }
    template <class Value, std::size_t size>
    void put(char const* name, Value const (&values)[size])
    {
        this->values(name, values, static_cast<int>(size));
    }
    template <class Number>
    std::enable_if_t<std::is_arithmetic_v<Number>> add(Number value)
    {
        json.value(value);
    }
    template <class Value, std::size_t size>
    void add(Value const (&row)[size])
    {
        json.open('[');
        for (Value const& value : row)
            add(value);
        json.close(']');
    }

    /// A char array: text, but for reserved bytes.
    void characters(char const* name, char const* text, int size);

    /// Before and after a value that may hold flags.
    /// @{
    void begin(char const* name);
    void end(char const* name);
    /// @}

    /// Where the value of the last field with flags stands in the text, and whether it has named bits yet.
    struct Flags {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool areNamed = false;
    };

    FltJsonText& json;
    Flags flags;
    std::string levels;         ///< The open blocks: '}' of a lone one, ']' of one of several.
    std::string lastElement;    ///< The name of the blocks that ended last,
    std::size_t elementEnd = 0; ///< and where they ended.
};

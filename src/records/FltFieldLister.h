#pragma once

#include "messages/FltText.h"
#include "records/FltDumpStyles.h"
#include "records/FltFieldReceiver.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

/// Hands a record's fields over by name with their values. See FltFields.h, and FltRecordFields.h for a whole
/// record.
///
/// @tparam Receiver FltFieldReceiver, or a class with the same functions: one that the compiler knows gets
///                  each value without a virtual call
template <class Receiver>
class FltFieldLister
{
public:
    static constexpr bool decodes = false;
    static constexpr bool dumps = false;
    static constexpr bool lists = true;

    /// @param receiver in the object that gets the fields. It has to outlive this one.
    explicit FltFieldLister(Receiver& receiver) : receiver(receiver) {}

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
    void rest(char const* name, std::unique_ptr<char[]> const& characters, unsigned int length)
    {
        if (characters != nullptr)
            text(name, characters.get(), length > 4 ? static_cast<int>(length - 4) : 0);
    }
    void text(char const* name, char const* characters, int count)
    {
        if (characters != nullptr)
            text(name, std::string_view(characters, ::strnlen(characters, static_cast<std::size_t>(count))));
    }
    void text(char const* name, std::string_view characters)
    {
        begin(name);
        giveText(characters);
    }
    void bytes(char const* name, char const* characters, unsigned int count)
    {
        if (characters == nullptr)
            return;
        begin(name);
        receiver.bytes({characters, count});
    }
    void number(char const* name, int value) { put(name, value); }
    void flag(char const* name, std::uint32_t word, int bit, char const* /*label*/)
    {
        receiver.flag(name, (word >> bit & 1) != 0);
    }

    static bool from(int revision, int first) { return revision >= first; }
    static bool when(bool condition) { return condition; }

    void open(char const* name)
    {
        begin(name);
        receiver.beginObject();
        levels.push_back(nullptr);
    }

    /// Blocks of one name that follow one another are elements of one array.
    void openElement(char const* name)
    {
        if (lastElement != nullptr && std::strcmp(lastElement, name) == 0) {
            receiver.resumeArray();
        } else {
            begin(name);
            receiver.beginArray(FltFieldReceiver::Length::counted);
        }
        receiver.beginObject();
        levels.push_back(name);
    }
    void close()
    {
        receiver.endObject();
        lastElement = levels.back();
        if (lastElement != nullptr)
            receiver.endArray();
        levels.pop_back();
    }

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
        if constexpr (Receiver::takesLists) {
            receiver.list(values, count, length);
        } else {
            receiver.beginArray(length);
            for (int i = 0; i < count; ++i)
                add(values[i]);
            receiver.endArray();
        }
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
    void characters(char const* name, char const* characters, int size)
    {
        if (beginsWith(name, "reserved") || beginsWith(name, "spare"))
            bytes(name, characters, static_cast<unsigned int>(size));
        else
            text(name, characters, size);
    }

    /// What isn't UTF-8 is taken as Latin-1. Once for all fields that are texts, not in each.
    [[gnu::noinline]] void giveText(std::string_view characters)
    {
        bool const isPlain = std::all_of(characters.begin(), characters.end(), [](char character) {
            return static_cast<signed char>(character) >= 0;
        });
        if (isPlain)
            receiver.text(characters);
        else
            receiver.text(FltText::utf8(characters));
    }

    void begin(char const* name)
    {
        lastElement = nullptr;
        receiver.key(name);
    }

    static bool beginsWith(std::string_view text, std::string_view beginning)
    {
        return text.substr(0, beginning.size()) == beginning;
    }

    Receiver& receiver;
    std::vector<char const*> levels;   ///< The open blocks: the name of one of several, null for a lone one.
    char const* lastElement = nullptr; ///< The name of the block of several that has just ended.
};

#pragma once

#include "records/FltFieldReceiver.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

/// Writes a record's fields as JSON text, value by value, without a tree of them. The one place that knows
/// how a number, a text and bytes look.
///
/// A float is written in the fewest digits that are this float; a number that JSON doesn't have is a text.
/// What a terminal would obey is escaped in texts. Bytes are two hexadecimal digits each. Flags whose bits
/// are named are an object: the word, and each bit.
///
/// A comma goes behind each value, and is taken back where nothing follows.
class FltJsonText final : public FltFieldReceiver
{
public:
    /// All that was written since the last clear(). It stays until more is written.
    std::string_view written() const
    {
        std::size_t const size = used();
        return {begin.get(), size != 0 && at[-1] == ',' ? size - 1 : size};
    }

    /// Begins anew, in the same memory.
    void clear()
    {
        at = begin.get();
        last = {};
    }

    void key(char const* name) override
    {
        std::size_t const size = std::char_traits<char>::length(name);
        makeRoom(size + 3);
        *at++ = '"';
        append(name, size);
        *at++ = '"';
        *at++ = ':';
        value = used();
    }
    void integer(std::int64_t number) override
    {
        makeRoom(longestNumber);
        if (static_cast<std::uint64_t>(number) <= 9)
            *at++ = static_cast<char>('0' + number);
        else
            writeInteger(number);
        *at++ = ',';
    }
    void real(float number) override;
    void real(double number) override;
    void text(std::string_view characters) override;
    void bytes(std::string_view bytes) override;
    void beginArray(Length /*length*/) override { open('['); }
    void endArray() override { close(']'); }
    void beginObject() override { open('{'); }
    void endObject() override { close('}'); }
    void resumeArray() override;
    void beginFlags() override { last = {}; }
    void endFlags() override { last = {value, used() - 1, false}; }
    void flag(char const* name, bool isSet) override
    {
        if (!last.areNamed && !nameFlags())
            return;
        std::size_t const size = std::char_traits<char>::length(name);
        std::string_view const ending = isSet ? "\":true" : "\":false";
        char* piece = insert(last.end - 1, 2 + size + ending.size());
        *piece++ = ',';
        *piece++ = '"';
        std::memcpy(piece, name, size);
        std::memcpy(piece + size, ending.data(), ending.size());
        last.end += 2 + size + ending.size();
    }

private:
    /// Where the last flags stand in the text, and whether they have named bits yet.
    struct Flags {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool areNamed = false;
    };

    /// With the comma behind it.
    static constexpr std::size_t longestNumber = 64;

    std::size_t used() const { return static_cast<std::size_t>(at - begin.get()); }
    void makeRoom(std::size_t size)
    {
        if (static_cast<std::size_t>(limit - at) < size)
            grow(size);
    }
    void append(char const* characters, std::size_t size) { at = std::copy_n(characters, size, at); }
    void open(char bracket)
    {
        makeRoom(1);
        *at++ = bracket;
    }
    void close(char bracket)
    {
        if (at[-1] == ',')
            --at;
        makeRoom(2);
        *at++ = bracket;
        *at++ = ',';
    }
    void grow(std::size_t size);
    void writeInteger(std::int64_t number);
    void writeWhole(std::int64_t number);
    void writeEscaped(std::string_view characters);
    char* insert(std::size_t place, std::size_t size);
    bool nameFlags();

    std::unique_ptr<char[]> begin;
    char* at = nullptr;
    char* limit = nullptr;
    std::size_t value = 0; ///< Where the value of the last member begins.
    Flags last;
};

#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltUtils.h"

#include <cstddef>
#include <memory>

/// Reads a record's fields out of its bytes. See FltFields.h.
class FltFieldDecoder
{
public:
    static constexpr bool decodes = true;
    static constexpr bool dumps = false;
    static constexpr bool lists = false;

    /// @param data the first field, after opcode and length. As many bytes as the layout reaches have to be
    /// there.
    explicit FltFieldDecoder(char* data) : cursor(data) {}

    template <class Member, class... Style>
    void operator()(char const* /*name*/, Member& member, Style const&... /*style*/)
    {
        get(member);
    }
    template <class Member, class Style>
    void first(int count, char const* name, Member& member, Style const& /*style*/)
    {
        values(name, member, count);
    }
    void text(char const* name, char* text, int count)
    {
        bytes(name, text, static_cast<unsigned int>(count));
    }
    void bytes(char const* /*name*/, char* bytes, unsigned int count)
    {
        FltUtils::getBytesThenDecal(bytes, static_cast<int>(count), cursor);
    }
    template <class Value>
    void values(char const* /*name*/, Value* values, int count)
    {
        for (int i = 0; i < count; ++i)
            get(values[i]);
    }
    void values(char const* name, char* values, int count)
    {
        bytes(name, values, static_cast<unsigned int>(count));
    }
    void rest(char const* /*name*/, std::unique_ptr<char[]>& text, unsigned int length)
    {
        text = FltUtils::restAsText(cursor - 4, length);
    }
    template <class Member, class Value>
    void preset(Member& member, Value value)
    {
        member = static_cast<Member>(value);
    }
    void skip(int count) { cursor += count; }
    char* place() const { return cursor; }
    void goTo(char* place) { cursor = place; }

    static bool from(int revision, int first) { return revision >= first; }
    static bool when(bool condition) { return condition; }

    void flag(char const* /*name*/, std::uint32_t /*word*/, int /*bit*/, char const* /*label*/) {}
    template <class... Values>
    void show(Values const&... /*values*/)
    {
    }
    void showColor(char const* /*label*/, std::uint8_t /*value*/) {}
    void number(char const* /*name*/, int /*value*/) {}
    void endLine() {}
    void open(char const* /*name*/) {}
    void openElement(char const* /*name*/) {}
    void close() {}

private:
    void get(char& byte) { FltUtils::getBytesThenDecal(&byte, 1, cursor); }
    void get(std::int8_t& number) { FltUtils::getInt8ValueThenDecal(&number, cursor); }
    void get(std::uint8_t& number) { FltUtils::getUInt8ValueThenDecal(&number, cursor); }
    void get(std::int16_t& number) { FltUtils::getInt16ValueThenDecal(&number, cursor); }
    void get(std::uint16_t& number) { FltUtils::getUInt16ValueThenDecal(&number, cursor); }
    void get(std::int32_t& number) { FltUtils::getInt32ValueThenDecal(&number, cursor); }
    void get(std::uint32_t& number) { FltUtils::getUInt32ValueThenDecal(&number, cursor); }
    void get(float& number) { FltUtils::getFloat32ValueThenDecal(&number, cursor); }
    void get(double& number) { FltUtils::getDouble64ValueThenDecal(&number, cursor); }
    template <std::size_t size>
    void get(char (&bytes)[size])
    {
        FltUtils::getBytesThenDecal(bytes, size, cursor);
    }
    template <class Value, std::size_t size>
    void get(Value (&values)[size])
    {
        for (Value& value : values)
            get(value);
    }

    char* cursor;
};

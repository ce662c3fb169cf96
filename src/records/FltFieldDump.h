#pragma once

#include "dump/FltDump.h"
#include "records/FltDumpStyles.h"

#include <cstddef>
#include <memory>
#include <string_view>

/// Writes a record's fields as the lines of its dump. See FltFields.h.
class FltFieldDump
{
public:
    static constexpr bool decodes = false;
    static constexpr bool dumps = true;
    static constexpr bool lists = false;

    explicit FltFieldDump(std::ostream& os) : dump(os) {}

    template <std::size_t size, class Number>
    void operator()(char const (&name)[size], Number const& number)
    {
        dump.field(name, number);
    }
    template <std::size_t size, class Number, std::size_t labelSize>
    void operator()(char const (&/*name*/)[size], Number const& number, char const (&label)[labelSize])
    {
        dump.line(label, number);
    }
    template <std::size_t size, class Member>
    void operator()(char const (&/*name*/)[size], Member const& /*member*/, dumpAs::Nothing /*style*/)
    {
    }
    template <std::size_t size, class Member>
    void operator()(char const (&name)[size], Member const& /*member*/, dumpAs::Heading /*style*/)
    {
        label(name);
        dump.endLine();
    }
    template <std::size_t size>
    void operator()(char const (&name)[size], std::int32_t word, dumpAs::Pointer /*style*/)
    {
        label(name);
        dump.pointer(word).endLine();
    }
    template <std::size_t size, std::size_t count>
    void operator()(char const (&name)[size], std::uint8_t const (&bytes)[count], dumpAs::Pointer /*style*/)
    {
        label(name);
        dump.pointer(static_cast<void const*>(bytes)).endLine();
    }
    template <std::size_t size>
    void operator()(char const (&name)[size], char byte, dumpAs::Character /*style*/)
    {
        label(name) << byte;
        dump.endLine();
    }
    template <std::size_t size, class Number>
    void operator()(char const (&name)[size], Number const& number, dumpAs::Unsigned /*style*/)
    {
        dump.field(name, static_cast<std::uint32_t>(std::int32_t(number)));
    }
    template <std::size_t size, class Characters>
    void operator()(char const (&name)[size], Characters const& text, dumpAs::Text style)
    {
        label(name) << FltDump::upToZero(text, style.end);
        dump.endLine();
    }
    template <std::size_t size, class Characters, std::size_t labelSize>
    void operator()(char const (&/*name*/)[size], Characters const& text,
                    dumpAs::LabelledText<labelSize> style)
    {
        dump.text(style.label, text, style.end);
    }
    template <std::size_t size, class Characters>
    void operator()(char const (&name)[size], Characters const& text, dumpAs::TextWithoutEnd style)
    {
        label(name) << FltDump::upToZero(text, style.end);
    }
    template <std::size_t size, class Number, std::size_t count>
    void operator()(char const (&name)[size], Number const (&numbers)[count], dumpAs::List style)
    {
        if (style.label == nullptr)
            label(name);
        dump.list(style.label != nullptr ? style.label : "", numbers, count, style.separator, style.closing);
    }
    template <std::size_t size, class Number, std::size_t count>
    void operator()(char const (&/*name*/)[size], Number const (&numbers)[count], dumpAs::Rows style)
    {
        dump.rows(numbers, static_cast<int>(count) / style.columns, style.columns);
    }
    template <std::size_t size, class Number, std::size_t rowCount, std::size_t columnCount>
    void operator()(char const (&/*name*/)[size], Number const (&matrix)[rowCount][columnCount],
                    dumpAs::Rows /*style*/)
    {
        for (Number const(&row)[columnCount] : matrix)
            dump.rows(row, 1, columnCount);
    }
    template <std::size_t size, class Number, std::size_t labelSize>
    void operator()(char const (&/*name*/)[size], Number const& number, dumpAs::Piece<labelSize> style)
    {
        dump << std::string_view(style.label, labelSize - 1) << FltDump::printed(number);
    }

    template <std::size_t size>
    void flag(char const* /*name*/, std::uint32_t word, int bit, char const (&label)[size])
    {
        dump.flag(label, word, bit);
    }
    template <std::size_t size>
    void show(char const (&label)[size])
    {
        dump.line(label);
    }
    template <std::size_t size, class Number>
    void show(char const (&label)[size], Number const& number)
    {
        dump.line(label, number);
    }
    template <std::size_t size>
    void showColor(char const (&label)[size], std::uint8_t value)
    {
        dump.colorByte(label, value);
    }
    void endLine() { dump.endLine(); }

    static bool from(int revision, int first) { return revision >= first; }
    static bool when(bool condition) { return condition; }

    template <std::size_t size, class Characters, class Style>
    void first(int /*count*/, char const (&name)[size], Characters const& bytes, Style const& style)
    {
        (*this)(name, bytes, style);
    }
    template <std::size_t size>
    void rest(char const (&name)[size], std::unique_ptr<char[]> const& text, unsigned int /*length*/)
    {
        label(name) << std::string_view(text != nullptr ? text.get() : "");
        dump.endLine();
    }
    void text(char const* /*name*/, char const* /*text*/, int /*count*/) {}
    void bytes(char const* /*name*/, char const* /*bytes*/, unsigned int /*count*/) {}
    template <class Value>
    void values(char const* /*name*/, Value const* /*values*/, int /*count*/)
    {
    }
    template <class Member, class Value>
    void preset(Member const& /*member*/, Value /*value*/)
    {
    }
    void skip(int /*count*/) {}
    int place() const { return 0; }
    void goTo(int /*place*/) {}
    void number(char const* /*name*/, int /*value*/) {}
    void open(char const* /*name*/) {}
    void openElement(char const* /*name*/) {}
    void close() {}

    /// For lines of a shape of their own.
    FltDump dump;

private:
    template <std::size_t size>
    FltDump& label(char const (&name)[size])
    {
        return dump << std::string_view(name, size - 1) << ": ";
    }
};

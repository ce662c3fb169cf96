#pragma once

#include "dump/FltDumpBuffer.h"
#include "dump/FltNumberText.h"

#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <string_view>

/// The dump of one record while it is written.
///
/// The stream's state is looked at once, when the object is made. On a stream in its default state (decimal,
/// precision 6, no width, classic locale) numbers are formatted without it, to the same bytes; a stream in
/// any other state formats them itself. The lines of a log go straight into the log's block. Any other stream
/// gets every line in one piece, and every line ends with an end of line and a flush.
///
/// While the object lives, nobody else may write to the stream or change its state.
///
/// Integers of 8 bits print as numbers, floats as doubles. Flag bits count from 0, the least significant.
class FltDump
{
public:
    explicit FltDump(std::ostream& os);
    ~FltDump()
    {
        if (log != nullptr)
            log->taken(at);
        else
            handOver();
    }

    FltDump(FltDump const&) = delete;
    FltDump& operator=(FltDump const&) = delete;

    /// @name A label and its value
    /// @{
    template <std::size_t size>
    void line(char const (&label)[size])
    {
        if (hasRoomFor<size>())
            return endLineAt(put(at, label));
        *this << std::string_view(label, size - 1);
        endLine();
    }
    template <std::size_t size, class Number>
    void line(char const (&label)[size], Number number)
    {
        if (hasRoomFor<size + longestNumber>())
            return endLineAt(put(put(at, label), printed(number)));
        lineInPieces({label, size - 1}, "", printed(number));
    }

    /// A line of pieces of text and numbers.
    template <class... Pieces>
    void lineOf(Pieces const&... pieces)
    {
        (*this << ... << pieces);
        endLine();
    }

    /// The same with ": " after the name of a field.
    template <std::size_t size, class Number>
    void field(char const (&name)[size], Number number)
    {
        if (hasRoomFor<size + 2 + longestNumber>())
            return endLineAt(put(put(put(at, name), ": "), printed(number)));
        lineInPieces({name, size - 1}, ": ", printed(number));
    }
    /// @}

    /// The byte itself as one character, also when it is zero.
    template <std::size_t size>
    void character(char const (&label)[size], char value)
    {
        if (hasRoomFor<size + 1>()) {
            char* const to = put(at, label);
            *to = value;
            return endLineAt(to + 1);
        }
        lineInPieces({label, size - 1}, "", std::string_view(&value, 1));
    }

    /// One bit of a flag word as 0 or 1.
    template <std::size_t size>
    void flag(char const (&label)[size], std::uint32_t word, int bit)
    {
        character(label, (word >> bit & 1) != 0 ? '1' : '0');
    }

    /// All 32 bits of a word as 0 or 1, the most significant first.
    void bits(std::uint32_t word);

    /// A colour byte as a fraction of 255, worked out in single precision.
    template <std::size_t size>
    void colorByte(char const (&label)[size], std::uint8_t value)
    {
        if (hasRoomFor<size + longestNumber>())
            return endLineAt(FltNumberText::writeFraction(put(at, label), value));
        lineInPieces({label, size - 1}, "", FltNumberText::fractionOf(value));
    }

    /// Text up to its first zero. A field without one runs on into the members after it.
    /// @param end where the text stops at the latest: the end of the object that holds it
    void text(std::string_view label, char const* text, void const* end);

    /// Text that a zero ends. Null prints as an empty text.
    void text(std::string_view label, char const* text);
    void text(std::string_view label, std::string_view text);

    /// Several values on a line, @p separator between them and @p closing after them.
    template <class Number>
    void list(std::string_view label, Number const* values, int count, std::string_view separator,
              std::string_view closing = "")
    {
        *this << label;
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                *this << separator;
            *this << printed(values[i]);
        }
        *this << closing;
        endLine();
    }

    /// The rows of a matrix: "|  ", the values with two blanks after each, "  |".
    template <class Number>
    void rows(Number const* values, int rowCount, int columnCount)
    {
        for (int row = 0; row < rowCount; ++row) {
            *this << "|  ";
            for (int column = 0; column < columnCount; ++column)
                *this << printed(values[row * columnCount + column]) << "  ";
            *this << "  |";
            endLine();
        }
    }

    /// @name A line piece by piece
    /// @{
    FltDump& operator<<(std::string_view text)
    {
        if (text.size() >= static_cast<std::size_t>(end - at))
            return putTextAnyway(text);
        at = put(at, text);
        return *this;
    }
    FltDump& operator<<(char character) { return *this << std::string_view(&character, 1); }
    FltDump& operator<<(std::int32_t value) { return number(value); }
    FltDump& operator<<(std::uint32_t value) { return number(value); }
    FltDump& operator<<(std::uint64_t value) { return number(value); }
    FltDump& operator<<(double value) { return number(value); }

    /// The stream's form of a pointer: hexadecimal after "0x", and "0" for zero.
    FltDump& pointer(void const* address);
    FltDump& pointer(std::uint32_t word); ///< Zero-extended to an address.
    FltDump& pointer(std::int32_t word);  ///< Sign-extended.

    /// Ends the line, with a flush.
    void endLine()
    {
        if (!hasRoomFor<0>())
            return endLineAnyway();
        endLineAt(at);
    }
    /// @}

    /// The text at @p text, whose zero may be missing.
    static std::string_view upToZero(char const* text, void const* end);

    /// A number in the width in which it prints.
    /// @{
    static std::int32_t printed(std::int8_t value) { return value; }
    static std::int32_t printed(std::int16_t value) { return value; }
    static std::int32_t printed(std::int32_t value) { return value; }
    static std::uint32_t printed(std::uint8_t value) { return value; }
    static std::uint32_t printed(std::uint16_t value) { return value; }
    static std::uint32_t printed(std::uint32_t value) { return value; }
    static std::uint64_t printed(std::uint64_t value) { return value; }
    static double printed(float value) { return static_cast<double>(value); }
    static double printed(double value) { return value; }
    /// @}

    /// Whether the lines go into the block of a log.
    bool isInLog() const { return log != nullptr; }

private:
    static constexpr std::size_t longestNumber = FltNumberText::longest;

    /// No line of a label and a number is longer.
    static constexpr std::size_t longestLine = 128;

    static bool formatsByDefault(std::ostream& os);

    template <std::size_t size>
    static char* put(char* to, char const (&text)[size])
    {
        std::memcpy(to, text, size - 1);
        return to + size - 1;
    }
    static char* put(char* to, std::string_view text)
    {
        std::memcpy(to, text.data(), text.size());
        return to + text.size();
    }
    template <class Number>
    static char* put(char* to, Number number)
    {
        return FltNumberText::write(to, number);
    }

    /// Whether so many characters and an end of line can be put where the log's block goes on.
    template <std::size_t size>
    bool hasRoomFor() const
    {
        static_assert(size < longestLine);
        return at < lastLine;
    }

    template <class Number>
    FltDump& number(Number value)
    {
        if (!hasRoomFor<longestNumber>())
            return putAnyway(value);
        at = put(at, value);
        return *this;
    }

    /// Ends a line in room that holds its last character as well.
    void endLineAt(char* to)
    {
        *to = '\n';
        at = to + 1;
    }

    /// @name Where a log's block has no room, and on any other stream
    /// @{
    template <class Value>
    [[gnu::cold]] void lineInPieces(std::string_view label, std::string_view separator, Value value);
    template <class Value>
    [[gnu::cold]] FltDump& putAnyway(Value value);
    [[gnu::cold]] FltDump& putTextAnyway(std::string_view text);
    [[gnu::cold]] void endLineAnyway();
    void gather(std::string_view text);
    /// @}

    void takeBlock();
    void handOver();

    std::ostream& os;
    FltDumpBuffer* log = nullptr; ///< The log whose block the lines go into, or null.
    bool isDefaultState;
    char* at = nullptr;       ///< Where the next character goes in the log's block,
    char* end = nullptr;      ///< and where that ends.
    char* lastLine = nullptr; ///< A line that begins before this place fits in between.
    std::size_t gathered = 0;
    char buffer[512]; ///< What was gathered for any stream but a log's.
};

#pragma once

#include "dump/FltNumberText.h"

#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <string_view>

class FltDumpBuffer;

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
    ~FltDump() { handOver(); }

    FltDump(FltDump const&) = delete;
    FltDump& operator=(FltDump const&) = delete;

    /// @name A label and its value
    /// @{
    template <std::size_t size>
    void line(char const (&label)[size])
    {
        if (char* to = roomFor(size))
            return endLineAt(put(to, label));
        *this << std::string_view(label, size - 1);
        endLine();
    }
    template <std::size_t size, class Number>
    void line(char const (&label)[size], Number number)
    {
        if (char* to = roomFor(size + longestNumber))
            return endLineAt(put(put(to, label), printed(number)));
        *this << std::string_view(label, size - 1) << printed(number);
        endLine();
    }

    /// A line of pieces of text and numbers.
    template <class... Pieces>
    void lineOf(Pieces const&... pieces)
    {
        if (char* to = roomFor((sizeOf(pieces) + ... + 1))) {
            ((to = put(to, pieces)), ...);
            return endLineAt(to);
        }
        (*this << ... << pieces);
        endLine();
    }

    /// The same with ": " after the name of a field.
    template <std::size_t size, class Number>
    void field(char const (&name)[size], Number number)
    {
        if (char* to = roomFor(size + 2 + longestNumber))
            return endLineAt(put(put(put(to, name), ": "), printed(number)));
        *this << std::string_view(name, size - 1) << ": " << printed(number);
        endLine();
    }
    /// @}

    /// The byte itself as one character, also when it is zero.
    template <std::size_t size>
    void character(char const (&label)[size], char value)
    {
        if (char* to = roomFor(size + 1)) {
            to = put(to, label);
            *to++ = value;
            return endLineAt(to);
        }
        *this << std::string_view(label, size - 1) << value;
        endLine();
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
        if (char* to = roomFor(size + longestNumber))
            return endLineAt(FltNumberText::writeFraction(put(to, label), value));
        *this << std::string_view(label, size - 1) << FltNumberText::fractionOf(value);
        endLine();
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
        char* const to = roomFor(text.size() + 1); // more than none, so that a stream may pad an empty text
        if (to == nullptr)
            return putTextAnyway(text);
        std::memcpy(to, text.data(), text.size());
        at = to + text.size();
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
    void endLine();
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

    /// Where the next character goes in a log's block; null on any other stream. What was written since an
    /// earlier place stands between the two, unless a block was written out meanwhile.
    char const* placeInLog() const { return log != nullptr ? at : nullptr; }

private:
    static constexpr std::size_t longestNumber = FltNumberText::longest;

    static bool formatsByDefault(std::ostream& os);

    /// Room that a piece of a line takes at the most.
    /// @{
    static std::size_t sizeOf(std::string_view text) { return text.size(); }
    template <class Number>
    static std::size_t sizeOf(Number /*number*/)
    {
        return longestNumber;
    }
    /// @}

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

    /// Where @p size characters can be put; null on a stream that formats by itself, and for a text that is
    /// longer than any room.
    char* roomFor(std::size_t size)
    {
        return static_cast<std::size_t>(end - at) >= size ? at : makeRoomFor(size);
    }
    char* makeRoomFor(std::size_t size);

    template <class Number>
    FltDump& number(Number value)
    {
        char* const to = roomFor(longestNumber);
        if (to == nullptr)
            return putAnyway(value);
        at = put(to, value);
        return *this;
    }

    /// Ends a line in room that holds its last character as well.
    void endLineAt(char* to)
    {
        *to++ = '\n';
        at = to;
        if (log == nullptr)
            flushLine();
    }

    template <class Value>
    FltDump& putAnyway(Value value);
    FltDump& putTextAnyway(std::string_view text);
    void flushLine();
    void handOver();

    std::ostream& os;
    FltDumpBuffer* log = nullptr; ///< The log whose block the lines go into, or null.
    bool isDefaultState;
    char* at;         ///< Where the next character goes,
    char* end;        ///< and the end of the room there.
    char buffer[512]; ///< The room of any stream but a log's.
};

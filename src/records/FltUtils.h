#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

/// Reads the big-endian numbers of a record.
///
/// Every function reads at @p cursor and moves it on to the end of what it read. Nothing here compares the
/// cursor with the record's end: the block that a decoder is handed reaches as far as its layout does.
class FltUtils
{
public:
    static void getInt8ValueThenDecal(std::int8_t* out, char*& cursor)
    {
        *out = static_cast<std::int8_t>(*cursor++);
    }
    static void getUInt8ValueThenDecal(std::uint8_t* out, char*& cursor)
    {
        *out = static_cast<std::uint8_t>(*cursor++);
    }
    static void getInt16ValueThenDecal(std::int16_t* out, char*& cursor)
    {
        *out = static_cast<std::int16_t>(word16(cursor));
    }
    static void getUInt16ValueThenDecal(std::uint16_t* out, char*& cursor) { *out = word16(cursor); }
    static void getInt32ValueThenDecal(std::int32_t* out, char*& cursor)
    {
        *out = static_cast<std::int32_t>(word32(cursor));
    }
    static void getUInt32ValueThenDecal(std::uint32_t* out, char*& cursor) { *out = word32(cursor); }
    static void getFloat32ValueThenDecal(float* out, char*& cursor)
    {
        std::uint32_t const word = word32(cursor);
        std::memcpy(out, &word, sizeof word);
    }
    static void getDouble64ValueThenDecal(double* out, char*& cursor)
    {
        std::uint64_t const high = word32(cursor);
        std::uint64_t const word = high << 32 | word32(cursor);
        std::memcpy(out, &word, sizeof word);
    }

    /// Copies @p count bytes as they stand: text, colour bytes, reserved blocks.
    static void getBytesThenDecal(void* out, int count, char*& cursor)
    {
        std::memcpy(out, cursor, static_cast<std::size_t>(count));
        cursor += count;
    }

    /// The bytes of a record after its first four, as text with a zero added.
    static std::unique_ptr<char[]> restAsText(char const* data, unsigned int length)
    {
        std::size_t const size = length > 4 ? length - 4 : 0;
        std::unique_ptr<char[]> text(new char[size + 1]);
        std::memcpy(text.get(), data + 4, size);
        text[size] = '\0';
        return text;
    }

    /// The length of an entry that holds it in its first two or four bytes; 0 if that is less than the
    /// entry's head, or more than the @p left bytes of the record.
    static std::size_t wholeEntryAt(char const* entry, std::ptrdiff_t left, int headSize, int lengthSize)
    {
        if (left < headSize)
            return 0;
        std::int64_t const length = lengthSize == 2 ? word16At(entry) : word32At(entry);
        return length >= headSize && length <= left ? static_cast<std::size_t>(length) : 0;
    }

    /// The big-endian 16-bit number at @p bytes.
    static std::uint16_t word16At(char const* bytes)
    {
        auto const at = [bytes](int i) {
            return static_cast<unsigned>(static_cast<unsigned char>(bytes[i]));
        };
        return static_cast<std::uint16_t>(at(0) << 8 | at(1));
    }

    /// The big-endian 32-bit number at @p bytes.
    static std::uint32_t word32At(char const* bytes)
    {
        auto const at = [bytes](int i) {
            return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
        };
        return at(0) << 24 | at(1) << 16 | at(2) << 8 | at(3);
    }

private:
    static std::uint16_t word16(char*& cursor)
    {
        std::uint16_t const word = word16At(cursor);
        cursor += 2;
        return word;
    }
    static std::uint32_t word32(char*& cursor)
    {
        std::uint32_t const word = word32At(cursor);
        cursor += 4;
        return word;
    }
};

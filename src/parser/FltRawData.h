#pragma once

#include <cstddef>

/// The bytes of one record, for the factory that makes the record object.
class FltRawData
{
public:
    FltRawData() = default;
    virtual ~FltRawData();

    FltRawData(FltRawData const&) = delete;
    FltRawData& operator=(FltRawData const&) = delete;

    /// Takes the record of @p recordLength bytes at @p begin, and what a decoder may read after it: the bytes
    /// that follow up to @p end, then zeros, until the block holds @p reach bytes. The next record uses the
    /// block again.
    void assign(char const* begin, char const* end, std::size_t recordLength, std::size_t reach);

    unsigned short opcode = 0;
    unsigned short length = 0;
    char* data = nullptr; ///< The block, which begins with the record's opcode word. Owned.

private:
    std::size_t capacity = 0;
};

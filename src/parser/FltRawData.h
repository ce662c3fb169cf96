#pragma once

#include <cstddef>

/// One record as it stands in the file, handed to the factory while it makes the record object.
class FltRawData
{
public:
    FltRawData() = default;
    virtual ~FltRawData();

    FltRawData(FltRawData const&) = delete;
    FltRawData& operator=(FltRawData const&) = delete;

    /// Takes the record of @p recordLength bytes at @p begin, and what a decoder may read behind it: the
    /// bytes that follow up to @p end, then zeros, until @p reach bytes stand in the block. The block is used
    /// again for the next record.
    void assign(char const* begin, char const* end, std::size_t recordLength, std::size_t reach);

    unsigned short opcode = 0;
    unsigned short length = 0;
    char* data = nullptr; ///< From the record's opcode word on. Owned.

private:
    std::size_t capacity = 0;
};

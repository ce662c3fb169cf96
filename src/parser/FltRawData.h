#pragma once

#include "records/FltUtils.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

/// The bytes of one record, for the factory that makes the record object.
class FltRawData
{
public:
    FltRawData() = default;
    virtual ~FltRawData();

    FltRawData(FltRawData const&) = delete;
    FltRawData& operator=(FltRawData const&) = delete;

    /// Takes the record of @p recordLength bytes at @p begin, and what a decoder may read after it, as
    /// assign() does. They stay where they are if all that may be read is there before @p end, and have to
    /// outlive the use of this object.
    void refer(char* begin, char const* end, std::size_t recordLength, std::size_t reach)
    {
        if (std::max(recordLength, reach) > static_cast<std::size_t>(end - begin))
            return assign(begin, end, recordLength, reach);
        if (!isElsewhere)
            freeBlock();
        isElsewhere = true;
        data = begin;
        setHead(begin, recordLength);
    }

    /// Takes the record of @p recordLength bytes at @p begin, and what a decoder may read after it: the bytes
    /// that follow up to @p end, then zeros, until the block holds @p reach bytes. The next record uses the
    /// block again.
    void assign(char const* begin, char const* end, std::size_t recordLength, std::size_t reach)
    {
        std::size_t const wanted = std::max(recordLength, reach);
        if (isElsewhere || wanted > capacity)
            makeRoom(wanted);
        std::size_t const there = std::min(wanted, static_cast<std::size_t>(end - begin));
        std::memcpy(data, begin, there);
        if (there < wanted)
            std::memset(data + there, 0, wanted - there);
        setHead(begin, recordLength);
    }

    unsigned short opcode = 0;
    unsigned short length = 0;
    char* data = nullptr; ///< The block, which begins with the record's opcode word. Owned after assign().

private:
    void setHead(char const* begin, std::size_t recordLength)
    {
        opcode = FltUtils::word16At(begin);
        length = static_cast<unsigned short>(recordLength);
    }
    void makeRoom(std::size_t wanted);
    void freeBlock();

    std::size_t capacity = 0;
    bool isElsewhere = false; ///< Whether the data belong to somebody else.
};

#pragma once

#include "model/FltRecordView.h"

#include <algorithm>
#include <array>
#include <cstddef>

/// The entries of one layout that a record goes on with to its end.
template <class Entry>
class FltRecordEntries
{
public:
    /// What stands before the entries of a record without a head of its own.
    struct NoHead {
        template <class Self, class Visitor>
        static void fields(Self& /*self*/, Visitor& /*visit*/)
        {
        }
    };

    /// @param first an entry with all that its layout goes by
    /// @param head what stands before the entries
    template <class Head = NoHead>
    FltRecordEntries(FltRecordView const& record, Entry const& first, Head const& head = {})
        : record(record), begin(FltFieldReach::head + FltFields::sizeOf(head)),
          entrySize(FltFields::sizeOf(first))
    {
    }

    /// How many of them the record holds in whole, and at least in part.
    /// @{
    std::size_t countWhole() const { return entrySize != 0 ? left() / entrySize : 0; }
    std::size_t countBegun() const { return entrySize != 0 ? (left() + entrySize - 1) / entrySize : 0; }
    /// @}

    /// Decodes one that has begun. What the record doesn't hold of it is zero.
    void decode(std::size_t i, Entry& entry) const
    {
        std::size_t const at = begin + entrySize * i;
        if (entrySize <= record.size - at)
            return FltFields::decodeFrom(entry, const_cast<char*>(record.data) + at); // decoders only read
        std::array<char, sizeof(Entry)> whole{};
        std::copy(record.data + at, record.data + record.size, whole.begin());
        FltFields::decodeFrom(entry, whole.data());
    }

private:
    std::size_t left() const { return record.size - std::min<std::size_t>(record.size, begin); }

    FltRecordView const& record;
    std::size_t begin;
    std::size_t entrySize;
};

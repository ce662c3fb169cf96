#pragma once

#include "records/FltFields.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

/// The bytes of one record, its continuations included. They belong to the reader. What is asked for after
/// the record's end reads as zero.
struct FltRecordView {
    char const* data = nullptr;
    std::uint32_t size = 0;
    std::uint32_t opcode = 0;
    std::size_t offset = 0; ///< Of the first byte in its file.

    bool holds(std::size_t at, std::size_t count) const { return at <= size && count <= size - at; }

    std::uint8_t byteAt(std::size_t at) const
    {
        return holds(at, 1) ? static_cast<std::uint8_t>(data[at]) : std::uint8_t(0);
    }
    std::uint16_t word16At(std::size_t at) const
    {
        return holds(at, 2) ? FltUtils::word16At(data + at) : std::uint16_t(0);
    }
    std::uint32_t word32At(std::size_t at) const { return holds(at, 4) ? FltUtils::word32At(data + at) : 0; }
    std::int32_t int32At(std::size_t at) const { return static_cast<std::int32_t>(word32At(at)); }
    float floatAt(std::size_t at) const
    {
        std::uint32_t const word = word32At(at);
        float number;
        std::memcpy(&number, &word, sizeof number);
        return number;
    }
    double doubleAt(std::size_t at) const
    {
        std::uint64_t const word = std::uint64_t(word32At(at)) << 32 | word32At(at + 4);
        double number;
        std::memcpy(&number, &word, sizeof number);
        return number;
    }

    /// The text from @p at on, up to its first zero, to @p room bytes or to the record's end.
    std::string textAt(std::size_t at, std::size_t room = std::string::npos) const
    {
        if (at >= size)
            return {};
        std::string_view const rest(data + at, std::min<std::size_t>(room, size - at));
        return std::string(rest.substr(0, rest.find('\0')));
    }

    /// Decodes the record by its class. A record that is shorter than its layout is filled up with zeros.
    template <class Record>
    void decodeTo(Record& record) const
    {
        static std::size_t const reach = farthestReach<Record>();
        if (size >= reach) {
            record.getPropertiesFromData(const_cast<char*>(data)); // decoders only read
            return;
        }
        std::vector<char> whole(reach, '\0');
        std::copy(data, data + size, whole.begin());
        record.getPropertiesFromData(whole.data());
    }

    /// The length that a record's class is made with.
    unsigned int classLength() const { return std::min<std::uint32_t>(size, 65535); }

private:
    template <class Record>
    static std::size_t farthestReach()
    {
        std::size_t reach = 0;
        for (int const revision : {0, 14, 1421, 1500, 1540, 1570, 1580, 1600})
            reach = std::max(reach, FltFields::reachOf<Record>(revision));
        return reach;
    }
};

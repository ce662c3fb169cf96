#pragma once

#include "records/FltFields.h"
#include "records/FltRecord.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// The bytes of one record, its continuations included. They belong to the reader. What is asked for after
/// the record's end reads as zero.
struct FltRecordView {
    char const* data = nullptr;
    std::uint32_t size = 0;
    std::uint32_t opcode = 0;
    std::size_t offset = 0; ///< Of the first byte in its file.
    bool isApart = false; ///< Its bytes don't stand in the file as they are: continuations are joined to it.

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

    /// Decodes the record by its class, or by a layout that is none. A record that is shorter than its layout
    /// is filled up with zeros.
    template <class Record>
    void decodeTo(Record& record) const
    {
        withRoomFor(FltFields::bytesReadBy(record), [&](char* bytes) {
            if constexpr (std::is_base_of_v<FltRecord, Record>)
                record.getPropertiesFromData(bytes);
            else
                FltFields::decode(record, bytes);
        });
    }

    /// The same without a virtual call, for records of which there are millions.
    template <class Record>
    void decodeFieldsTo(Record& record) const
    {
        withRoomFor(FltFields::bytesReadBy(record), [&](char* bytes) { FltFields::decode(record, bytes); });
    }

    /// Whether a field of a record that was decoded stands in the bytes, rather than being filled up.
    template <class Record, class Member>
    bool holdsField(Record const& record, Member const& field) const
    {
        std::size_t const end = FltFields::endOf(record, &field);
        return end != 0 && end <= size;
    }

    /// The length that a record's class is made with.
    unsigned int classLength() const { return size; }

private:
    /// Calls an action with so many bytes of the record. It only reads them.
    template <class Action>
    void withRoomFor(std::size_t count, Action action) const
    {
        if (count <= size)
            return action(const_cast<char*>(data));
        char few[512] = {};
        std::vector<char> many(count > sizeof few ? count : 0);
        char* const whole = many.empty() ? few : many.data();
        std::copy(data, data + size, whole);
        action(whole);
    }
};

/// A record that is decoded by its class, or a layout that is none.
template <class Record>
struct FltDecoded : Record {
    /// @param revision of the file, for classes whose layout goes by it
    explicit FltDecoded(FltRecordView const& record, int revision = 0)
        : FltDecoded(record, revision, std::is_constructible<Record, unsigned int>())
    {
    }

private:
    FltDecoded(FltRecordView const& record, int revision, std::true_type /*takesLength*/)
        : Record(record.classLength())
    {
        decode(record, revision);
    }
    FltDecoded(FltRecordView const& record, int revision, std::false_type /*takesLength*/)
    {
        decode(record, revision);
    }
    void decode(FltRecordView const& record, [[maybe_unused]] int revision)
    {
        if constexpr (std::is_base_of_v<FltVersion, Record>)
            this->revision = revision;
        record.decodeTo<Record>(*this);
    }
};

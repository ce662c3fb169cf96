#pragma once

#include "dump/FltDump.h"
#include "records/FltRecordCategory.h"

#include <cstddef>
#include <string_view>

/// What the dumps of all records of a class begin with, up to their length. It is put together when the
/// library is compiled.
class FltRecordHead
{
public:
    /// Writes the head of a record that is of this very class.
    template <class Record>
    static void write(Record const& record, FltDump& dump)
    {
        static constexpr FltRecordHead head(Record::title, Record::category, Record::opcode);
        if (dump.isInLog())
            dump.lineOf(head.text(), record.getLength(), " --");
        else // which is handed each line by itself
            record.writeHead(dump, Record::title);
    }

private:
    constexpr FltRecordHead(std::string_view title, FltRecordCategory category, int opcode)
    {
        add(title);
        add("\n  (");
        add(nameOf(category));
        add(")\n-- Opcode: ");
        for (int unit = 100; unit > 0; unit /= 10)
            if (opcode >= unit)
                add(static_cast<char>('0' + opcode / unit % 10));
        add("  Length: ");
    }

    constexpr void add(char character) { characters[size++] = character; }
    constexpr void add(std::string_view more)
    {
        for (char const character : more)
            add(character);
    }
    constexpr std::string_view text() const { return {characters, size}; }

    char characters[128] = {};
    std::size_t size = 0;
};

#include "records/AbstractFltRecord.h"

#include "dump/FltDump.h"

#include <cstdint>
#include <cstring>

namespace
{

/// The lines that records of one class and length begin with, as the log got them last.
class KeptHead
{
public:
    /// The one place for an opcode and a length, whatever stands there now. A new one is of no category,
    /// which nothing is kept of: a class of no category names it itself.
    static KeptHead& of(int opcode, unsigned int length)
    {
        static KeptHead heads[256];
        return heads[(static_cast<unsigned int>(opcode) + 31 * length) % std::size(heads)];
    }

    bool isOf(std::string_view wantedTitle, int wantedOpcode, unsigned int wantedLength,
              FltRecordCategory wantedCategory) const
    {
        return opcode == wantedOpcode && length == wantedLength && category == wantedCategory &&
               std::string_view(text, titleSize) == wantedTitle;
    }
    std::string_view lines() const { return {text, size}; }

    void take(std::string_view newLines, std::size_t newTitleSize, int newOpcode, unsigned int newLength,
              FltRecordCategory newCategory)
    {
        if (newLines.size() > sizeof text)
            return;
        std::memcpy(text, newLines.data(), newLines.size());
        size = newLines.size();
        titleSize = newTitleSize;
        opcode = newOpcode;
        length = newLength;
        category = newCategory;
    }

private:
    int opcode = -1;
    unsigned int length = 0;
    FltRecordCategory category = FltRecordCategory::unknown;
    std::size_t titleSize = 0;
    std::size_t size = 0;
    char text[160] = {};
};

} // namespace

std::ostream& AbstractFltRecord::opcodeAndLength(std::ostream& os) const
{
    FltDump dump(os);
    writeOpcodeAndLength(dump);
    return os;
}

std::ostream& AbstractFltRecord::titleOpcodeAndLength(std::ostream& os, std::string_view title) const
{
    FltDump dump(os);
    int const opcode = getOpcode();
    unsigned int const length = getLength();
    FltRecordCategory const category = getCategory();
    KeptHead& head = KeptHead::of(opcode, length);
    char const* const begin = category != FltRecordCategory::unknown ? dump.placeInLog() : nullptr;
    if (begin != nullptr && head.isOf(title, opcode, length, category)) {
        dump << head.lines();
        return os;
    }
    dump.lineOf(title);
    writeOpcodeAndLength(dump);
    char const* const end = dump.placeInLog();
    if (begin != nullptr && begin < end)
        head.take({begin, static_cast<std::size_t>(end - begin)}, title.size(), opcode, length, category);
    return os;
}

void AbstractFltRecord::writeOpcodeAndLength(FltDump& dump) const
{
    FltRecordCategory const category = getCategory();
    if (category != FltRecordCategory::unknown)
        dump.lineOf(std::string_view("  ("), nameOf(category), std::string_view(")"));
    else
        dump.lineOf(std::string_view("  ("), std::string_view(getRecordCategory()), std::string_view(")"));
    dump.lineOf(std::string_view("-- Opcode: "), std::int32_t(getOpcode()), std::string_view("  Length: "),
                std::uint32_t(getLength()), std::string_view(" --"));
}

#include "records/FltRecordNamePalette.h"

#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltUtils.h"

#include <cstddef>
#include <cstring>

namespace
{

constexpr int entryHeadSize = 6;

/// Whether an entry with a head and a length that holds it stands within the @p left bytes at @p cursor.
bool isWholeEntry(char const* cursor, std::ptrdiff_t left)
{
    if (left < entryHeadSize)
        return false;
    std::int64_t const entryLength = FltUtils::word32At(cursor);
    return entryLength >= entryHeadSize && entryLength <= left;
}

} // namespace

std::ostream& FltRecordNamePalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n NAME PALETTE RECORD ");
}

void FltRecordNamePalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&numberOfNames, cursor);
    FltUtils::getUInt16ValueThenDecal(&nextAvailableIndex, cursor);
    char const* const end = data + length;
    for (int i = 0; i < numberOfNames; ++i) {
        if (!isWholeEntry(cursor, end - cursor)) {
            FltWarningMessageConsole::notifyDamage("A name palette holds fewer names than it says, or one of "
                                                   "a bad length: the rest of them is left out");
            return;
        }
        std::uint32_t entryLength = 0;
        std::uint16_t index = 0;
        FltUtils::getUInt32ValueThenDecal(&entryLength, cursor);
        FltUtils::getUInt16ValueThenDecal(&index, cursor);
        std::size_t const room = entryLength - entryHeadSize;
        setOfNames.try_emplace(setOfNames.end(), index)->second.assign(cursor, ::strnlen(cursor, room));
        cursor += room;
    }
}

std::ostream& FltRecordNamePalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "numberOfNames: ", numberOfNames);
    FltDump::line(os, "nextAvailableIndex: ", nextAvailableIndex);
    for (auto const& [index, name] : setOfNames)
        FltDump::line(os, "name[", index, "] : ", name);
    return os;
}

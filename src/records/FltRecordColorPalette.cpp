#include "records/FltRecordColorPalette.h"

#include "dump/FltDump.h"
#include "dump/FltDumpLine.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltUtils.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace
{

constexpr int entryHeadSize = 8;
constexpr int rampCount = 32;
constexpr int shadeCount = 128;
constexpr int fixedColorCount = 56;
constexpr int namesOffset = 4228;

/// Longest record that is taken for one with 512 colours when it is dumped.
constexpr unsigned int longestOfHalfSize = 2180;

/// The first three bytes of a colour of an old palette, from 0 to 255.
struct Triple {
    std::uint8_t c0 = 0;
    std::uint8_t c1 = 0;
    std::uint8_t c2 = 0;
};

Triple readTriple(char*& cursor)
{
    Triple triple;
    FltUtils::getUInt8ValueThenDecal(&triple.c0, cursor);
    FltUtils::getUInt8ValueThenDecal(&triple.c1, cursor);
    FltUtils::getUInt8ValueThenDecal(&triple.c2, cursor);
    return triple;
}

void getColorsThenDecal(std::uint32_t* out, int count, char*& cursor)
{
    for (int i = 0; i < count; ++i)
        FltUtils::getUInt32ValueThenDecal(out + i, cursor);
}

/// The colour at @p shade parts of 128 of its strength, each byte cut to a whole number.
std::uint32_t shaded(Triple const& triple, unsigned shade)
{
    return triple.c0 * shade / shadeCount | triple.c1 * shade / shadeCount << 8 |
           triple.c2 * shade / shadeCount << 16;
}

/// Whether an entry with a head and a length that holds it stands within the @p left bytes at @p cursor.
bool isWholeEntry(char const* cursor, std::ptrdiff_t left)
{
    if (left < entryHeadSize)
        return false;
    int const entryLength = FltUtils::word16At(cursor);
    return entryLength >= entryHeadSize && entryLength <= left;
}

void dumpColor(std::ostream& os, int i, std::uint32_t packedColor)
{
    FltDumpLine line(os);
    line << "  color[" << i << "] = (";
    line.pointer(packedColor) << ')';
    line.end();
}

} // namespace

FltColorEntry::FltColorEntry(FltColorEntry const& other)
    : length(other.length), reserved1(other.reserved1), index(other.index), reserved2(other.reserved2)
{
    if (other.name == nullptr)
        return;
    std::size_t const size = std::strlen(other.name.get()) + 1;
    name.reset(new char[size]);
    std::memcpy(name.get(), other.name.get(), size);
}

FltColorEntry& FltColorEntry::operator=(FltColorEntry const& other)
{
    return *this = FltColorEntry(other);
}

void FltColorEntry::getPropertiesFromDataThenDecal(char*& cursor)
{
    FltUtils::getUInt16ValueThenDecal(&length, cursor);
    FltUtils::getInt16ValueThenDecal(&reserved1, cursor);
    FltUtils::getInt16ValueThenDecal(&index, cursor);
    FltUtils::getInt16ValueThenDecal(&reserved2, cursor);
    int const nameLength = length - entryHeadSize;
    name.reset(new char[static_cast<std::size_t>(nameLength) + 1]);
    FltUtils::getBytesThenDecal(name.get(), nameLength, cursor);
    name[static_cast<std::size_t>(nameLength)] = '\0';
}

std::ostream& FltRecordColorPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n COLOR PALETTE RECORD ");
}

void FltRecordColorPalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    if (revision <= 13) {
        getRampsFromData(cursor);
    } else if (revision <= 1420) {
        getColorsThenDecal(color, 512, cursor);
    } else {
        FltUtils::getBytesThenDecal(reserved, sizeof reserved, cursor);
        getColorsThenDecal(color, 1024, cursor);
        getColorNamesFromData(data);
    }
}

void FltRecordColorPalette::getRampsFromData(char* cursor)
{
    std::uint32_t* out = color;
    for (int i = 0; i < rampCount; ++i) {
        Triple const brightest = readTriple(cursor);
        for (unsigned shade = 0; shade < shadeCount; ++shade)
            *out++ = shaded(brightest, shade);
    }
    for (int i = 0; i < fixedColorCount; ++i)
        *out++ = shaded(readTriple(cursor), shadeCount);
}

void FltRecordColorPalette::getColorNamesFromData(char* data)
{
    if (length <= namesOffset)
        return;
    char* cursor = data + namesOffset;
    char const* const end = data + length;
    FltUtils::getInt32ValueThenDecal(&numberOfColorNames, cursor);
    for (int i = 0; i < numberOfColorNames; ++i) {
        if (!isWholeEntry(cursor, end - cursor)) {
            FltWarningMessageConsole::notifyDamage("A colour palette holds fewer names than it says, or one "
                                                   "of a bad length: the rest of them is left out");
            return;
        }
        FltColorEntry entry;
        entry.getPropertiesFromDataThenDecal(cursor);
        setOfColorEntries.insert_or_assign(setOfColorEntries.end(), entry.index, std::move(entry));
    }
}

std::ostream& FltRecordColorPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    int const count = length > longestOfHalfSize ? 1024 : 512;
    FltDump::line(os, "here's the ", count, " values of the color Palette:");
    for (int i = 0; i < count; ++i)
        dumpColor(os, i, getPackedColor(i));
    if (length <= longestOfHalfSize)
        return os;

    FltDump::line(os, "numberOfColorNames: ", numberOfColorNames);
    FltDump::line(os, "number of elements in setOfColorEntries: ",
                  static_cast<std::uint64_t>(setOfColorEntries.size()));
    if (setOfColorEntries.empty())
        FltDump::line(os, "(No Color Entry)");
    int counter = 0;
    for (auto const& [index, entry] : setOfColorEntries) {
        FltDump::line(os, "", ++counter, "st ColorEntry ");
        FltDump::line(os, "  length: ", entry.length);
        FltDump::line(os, "   index: ", entry.index);
        FltDump::text(os, "    name: ", entry.name.get());
    }
    return os;
}

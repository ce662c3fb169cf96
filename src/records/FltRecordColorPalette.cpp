#include "records/FltRecordColorPalette.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltFields.h"
#include "records/FltRecordDefinition.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace
{

constexpr int rampCount = 32;
constexpr int shadeCount = 128;
constexpr int fixedColorCount = 56;

/// Longest record that is taken for one with 512 colours when it is dumped.
constexpr unsigned int longestOfHalfSize = 2180;

/// The first three bytes of a colour of an old palette, from 0 to 255.
struct Triple {
    std::uint8_t bytes[3] = {};
};

Triple readTriple(FltFieldDecoder& decoder)
{
    Triple triple;
    decoder("color", triple.bytes);
    return triple;
}

/// The colour at @p shade parts of 128 of its strength, each byte cut to a whole number.
std::uint32_t shaded(Triple const& triple, unsigned shade)
{
    auto const byte = [&](int i) { return triple.bytes[i] * shade / shadeCount; };
    return byte(0) | byte(1) << 8 | byte(2) << 16;
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
    FltFieldDecoder decoder(cursor);
    fields(*this, decoder);
    cursor = decoder.place();
}

void FltRecordColorPalette::getRampsFromData(FltFieldDecoder& decoder)
{
    std::uint32_t* out = color;
    for (int i = 0; i < rampCount; ++i) {
        Triple const brightest = readTriple(decoder);
        for (unsigned shade = 0; shade < shadeCount; ++shade)
            *out++ = shaded(brightest, shade);
    }
    for (int i = 0; i < fixedColorCount; ++i)
        *out++ = shaded(readTriple(decoder), shadeCount);
}

void FltRecordColorPalette::getColorNamesFromData(FltFieldDecoder& decoder)
{
    char const* const end = decoder.place() - sizeof numberOfColorNames - namesOffset + length;
    for (int i = 0; i < numberOfColorNames; ++i) {
        char* cursor = decoder.place();
        if (FltUtils::wholeEntryAt(cursor, end - cursor, FltColorEntry::headSize, 2) == 0) {
            FltWarningMessageConsole::notifyDamage("A colour palette holds fewer names than it says, or one "
                                                   "of a bad length: the rest of them is left out");
            return;
        }
        FltColorEntry entry;
        entry.getPropertiesFromDataThenDecal(cursor);
        decoder.goTo(cursor);
        setOfColorEntries.insert_or_assign(setOfColorEntries.end(), entry.index, std::move(entry));
    }
}

/// How many colours print, and whether their names do, goes by the length and not by the revision.
void FltRecordColorPalette::dumpColors(FltFieldDump& fields) const
{
    FltDump& dump = fields.dump;
    int const count = length > longestOfHalfSize ? 1024 : 512;
    (dump << "here's the " << count << " values of the color Palette:").endLine();
    for (int i = 0; i < count; ++i)
        ((dump << "  color[" << i << "] = (").pointer(getPackedColor(i)) << ')').endLine();
    if (length <= longestOfHalfSize)
        return;
    dump.field("numberOfColorNames", numberOfColorNames);
    dump.field("number of elements in setOfColorEntries",
               static_cast<std::uint64_t>(setOfColorEntries.size()));
    if (setOfColorEntries.empty())
        dump.line("(No Color Entry)");
    int counter = 0;
    for (auto const& [index, entry] : setOfColorEntries) {
        (dump << ++counter << "st ColorEntry ").endLine();
        FltColorEntry::fields(entry, fields);
    }
}

template class FltRecordOf<FltRecordColorPalette, PaletteFltRecord>;

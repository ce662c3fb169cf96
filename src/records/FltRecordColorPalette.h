#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"
#include "records/FltVersion.h"

#include <cstdint>
#include <map>
#include <memory>

class FltFieldDecoder;
class FltFieldDump;

/// The name of one colour of the palette.
class FltColorEntry
{
public:
    FltColorEntry() = default;
    FltColorEntry(FltColorEntry const& other); ///< Copies the name as well, up to its first zero.
    FltColorEntry(FltColorEntry&& other) noexcept = default;
    FltColorEntry& operator=(FltColorEntry const& other);
    FltColorEntry& operator=(FltColorEntry&& other) noexcept = default;
    virtual ~FltColorEntry() = default;

    /// Bytes before the name.
    static constexpr int headSize = 8;

    /// Reads an entry at @p cursor, which has to have `length` bytes there and at least 8, and moves it to
    /// the entry's end.
    void getPropertiesFromDataThenDecal(char*& cursor);

    std::uint16_t length = 0; ///< Of the whole entry in bytes.
    std::int16_t reserved1 = 0;
    std::int16_t index = 0; ///< The colour that is named. Any number is a good one, also below zero.
    std::int16_t reserved2 = 0;
    std::unique_ptr<char[]> name; ///< `length` minus 8 bytes and a zero; null before the entry is decoded.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("length", self.length, "  length: ");
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("index", self.index, "   index: ");
        visit("reserved2", self.reserved2, dumpAs::nothing);
        if constexpr (Visitor::decodes)
            self.name.reset(new char[static_cast<std::size_t>(self.length - headSize) + 1]());
        if constexpr (Visitor::dumps)
            visit.dump.text("    name: ", self.name.get());
        visit.text("name", self.name.get(), self.length - headSize);
    }
};

/// The colours that faces and vertices name by index, and their names.
///
/// Up to revision 13 the file has the brightest shades of 32 ramps, three bytes each, which make 128 colours
/// each, and 56 fixed colours. Later files have the colours themselves; from revision 1421 on, in a record of
/// at least 4229 bytes, names of colours follow.
///
/// The names end where the record does, whatever their number says: an entry that doesn't fit, or says that
/// it is shorter than its own head, ends the reading and is reported as damage.
class FltRecordColorPalette : public FltRecordOf<FltRecordColorPalette, PaletteFltRecord>, public FltVersion
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::colorPalette;
    static constexpr std::string_view title = "\n COLOR PALETTE RECORD ";

    /// Colours that the largest layout has: 32 ramps of 128 shades and 56 fixed colours.
    static constexpr int colorCount = 32 * 128 + 56;

    char reserved[128] = {};

    /// The four bytes of each colour as the file orders them, the first in the top byte: alpha, blue, green,
    /// red. The reverse of the toolkit's packed colours. Zero where the layout has no colour; the alpha of
    /// ramps and fixed colours is zero.
    std::uint32_t color[colorCount] = {};

    /// As in the file, also where fewer entries fit into the record. Zero below revision 1421.
    std::int32_t numberOfColorNames = 0;

    /// The entries by their `index`. Of several with the same index the last counts.
    std::map<int, FltColorEntry> setOfColorEntries;

    /// A colour in the toolkit's packed order, red in the top byte and alpha in the lowest.
    /// @param i from 0 up to and without colorCount
    std::uint32_t getPackedColor(int i) const
    {
        std::uint32_t const word = color[i];
        return word << 24 | (word & 0xff00U) << 8 | (word >> 8 & 0xff00U) | word >> 24;
    }

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        if (visit.from(self.revision, 1421)) {
            visit("reserved", self.reserved, dumpAs::nothing);
            visit.first(1024, "color", self.color, dumpAs::nothing);
            if (visit.when(self.length > namesOffset)) {
                visit("numberOfColorNames", self.numberOfColorNames, dumpAs::nothing);
                if constexpr (Visitor::decodes)
                    self.getColorNamesFromData(visit);
            }
        } else if (visit.from(self.revision, 14)) {
            visit.first(512, "color", self.color, dumpAs::nothing);
        } else {
            if constexpr (Visitor::decodes)
                self.getRampsFromData(visit);
            if constexpr (Visitor::lists)
                visit.values("color", self.color, colorCount);
            if constexpr (!Visitor::decodes)
                visit.skip(rampBytes);
        }
        if constexpr (Visitor::dumps)
            self.dumpColors(visit);
        if constexpr (Visitor::lists)
            for (auto const& [index, entry] : self.setOfColorEntries) {
                visit.openElement("colorEntries");
                FltColorEntry::fields(entry, visit);
                visit.close();
            }
    }

private:
    /// What a file of revision 13 or before has of the colours.
    static constexpr int rampBytes = 3 * (32 + 56);

    /// Where the names begin in a record that is long enough.
    static constexpr unsigned int namesOffset = 4228;

    void getRampsFromData(FltFieldDecoder& decoder);
    void getColorNamesFromData(FltFieldDecoder& decoder);
    void dumpColors(FltFieldDump& dump) const;
};

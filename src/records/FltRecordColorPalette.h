#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"
#include "records/FltVersion.h"

#include <cstdint>
#include <map>
#include <memory>

/// The name of one colour of the palette.
///
/// | Offset | Type             | Field                                              |
/// |--------|------------------|----------------------------------------------------|
/// | 0      | uint16           | `length` of the entry in bytes, these 8 included   |
/// | 2      | int16            | reserved                                           |
/// | 4      | int16            | `index`                                            |
/// | 6      | int16            | reserved                                           |
/// | 8      | char[length - 8] | `name`                                             |
class FltColorEntry
{
public:
    FltColorEntry() = default;
    FltColorEntry(FltColorEntry const& other); ///< Copies the name as well, up to its first zero.
    FltColorEntry(FltColorEntry&& other) noexcept = default;
    FltColorEntry& operator=(FltColorEntry const& other);
    FltColorEntry& operator=(FltColorEntry&& other) noexcept = default;
    virtual ~FltColorEntry() = default;

    /// Reads an entry at @p cursor, which has to have `length` bytes there and at least 8, and moves it
    /// behind the entry.
    void getPropertiesFromDataThenDecal(char*& cursor);

    std::uint16_t length = 0;
    std::int16_t reserved1 = 0;
    std::int16_t index = 0; ///< The colour that is named. Any number is a good one, also below zero.
    std::int16_t reserved2 = 0;
    std::unique_ptr<char[]> name; ///< `length` minus 8 bytes and a zero; null before the entry is decoded.
};

/// The colours that faces and vertices name by index, and their names.
///
/// The layout depends on the format revision:
///
/// | Revision   | Offset | Type         | Field                                                            |
/// |------------|--------|--------------|------------------------------------------------------------------|
/// | up to 13   | 4      | uint8[32][3] | the brightest shades of 32 ramps, which make 128 `color` each    |
/// | up to 13   | 100    | uint8[56][3] | 56 fixed colours, behind the ramps in `color`                    |
/// | 14 to 1420 | 4      | uint32[512]  | `color`                                                          |
/// | from 1421  | 4      | 128 bytes    | `reserved`                                                       |
/// | from 1421  | 132    | uint32[1024] | `color`                                                          |
/// | from 1421  | 4228   | int32        | `numberOfColorNames`, in a record of at least 4229 bytes         |
/// | from 1421  | 4232   | entries      | the entries, one behind the other                                |
///
/// The entries end where the record does, whatever their number says: one that doesn't fit, or says that it
/// is shorter than its own head, ends the reading and is reported as damage.
class FltRecordColorPalette : public PaletteFltRecord, public FltVersion
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::colorPalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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

private:
    void getRampsFromData(char* cursor);
    void getColorNamesFromData(char* data);
};

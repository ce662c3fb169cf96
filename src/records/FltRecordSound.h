#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>
#include <map>
#include <memory>

/// A source of sound.
///
/// | Offset | Type       | Field                                                  |
/// |--------|------------|--------------------------------------------------------|
/// | 4      | char[8]    | `idASCII`                                              |
/// | 12     | int32      | reserved                                               |
/// | 16     | int32      | `index`                                                |
/// | 20     | int32      | reserved                                               |
/// | 24     | float64[3] | `origin`                                               |
/// | 48     | float32[3] | `direction`                                            |
/// | 60     | float32    | `amplitude`, `pitch`, `priority`, `falloff`, `width`   |
/// | 80     | int32      | `flags`                                                |
/// | 84     | int32      | reserved                                               |
class FltRecordSound : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::sound; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {};
    std::int32_t reserved1 = 0;
    std::int32_t index = 0; ///< In the sound palette.
    std::int32_t reserved2 = 0;
    double origin[3] = {};
    float direction[3] = {};
    float amplitude = 0;
    float pitch = 0;
    float priority = 0;
    float falloff = 0;
    float width = 0;
    std::int32_t flags = 0;
    std::int32_t reserved3 = 0;
};

/// The file's table of sounds. It takes two records, one behind the other: the factory has them meet in one
/// object, which is decoded once for each and keeps the length of the first.
///
/// The word at offset 4 tells which half a record holds; any other value than these two leaves the object as
/// it is. The table of sounds, subtype 1:
///
/// | Offset | Type          | Field                                                          |
/// |--------|---------------|----------------------------------------------------------------|
/// | 4      | int32         | 1                                                              |
/// | 8      | int32         | `maxNumber`, `actualNumber`, `totalLength`                     |
/// | 20     | int32[3]      | reserved                                                       |
/// | 32     | 12 bytes each | `actualNumber` entries: int32 index, 4 bytes, int32 offset     |
///
/// The names, subtype 2:
///
/// | Offset | Type               | Field        |
/// |--------|--------------------|--------------|
/// | 4      | int32              | 2            |
/// | 8      | int32              | `dataLength` |
/// | 12     | char[`dataLength`] | `packedData` |
///
/// A count that the record has no room for is cut to what is there and reported.
class FltRecordSoundPalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::soundPalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;

    /// Writes the half that each of the two low bits of `subType` asks for. Nothing sets them, so the title
    /// lines are all that is seen.
    std::ostream& properties(std::ostream& os) const override;

    /// Takes one half. The bytes are bounded by the length word in @p data, since the object's own length is
    /// that of the record it was made for. A table adds to the sounds of an earlier one; names replace the
    /// earlier ones.
    void getPropertiesFromData(char* data) override;

    std::int32_t subType = 0; ///< Which halves to dump: bit 0 the table, bit 1 the names. No decoder sets it.
    std::int32_t maxNumber = 0;
    std::int32_t actualNumber = 0; ///< Entries of the last table.
    std::int32_t totalLength = 0;
    std::int32_t reserved[3] = {};
    std::map<int, int> fileNameOffset;  ///< Where in `packedData` the file name of a sound stands, by index.
    std::int32_t dataLength = 0;        ///< Bytes of `packedData`.
    std::unique_ptr<char[]> packedData; ///< The names and a zero behind them; null until decoded.

private:
    void getTableFromData(char* cursor, int size);
    void getNamesFromData(char* cursor, int size);
};

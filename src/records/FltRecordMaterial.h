#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"
#include "records/FltVersion.h"

#include <cstdint>

/// One entry of the material table.
///
/// | Offset | Type       | Field                                               |
/// |--------|------------|-----------------------------------------------------|
/// | 4      | int32      | `index`                                             |
/// | 8      | char[12]   | `name`                                              |
/// | 20     | int32      | `flags`: bit 31 set prints as a material not in use |
/// | 24     | float32[3] | `ambient`                                           |
/// | 36     | float32[3] | `diffuse`                                           |
/// | 48     | float32[3] | `specular`                                          |
/// | 60     | float32[3] | `emissive`                                          |
/// | 72     | float32    | `shininess`                                         |
/// | 76     | float32    | `alpha`                                             |
/// | 80     | int32      | reserved                                            |
class FltRecordMaterial : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::material; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t index = 0; ///< Slot in the material table.
    char name[12] = {};     ///< Without a zero if it takes all of its room.
    std::int32_t flags = 0;
    float ambient[3] = {}; ///< Red, green, blue from 0 to 1, as the three behind it.
    float diffuse[3] = {};
    float specular[3] = {};
    float emissive[3] = {};
    float shininess = 0; ///< From 0 to 128.
    float alpha = 0;     ///< 1 is opaque.
    std::int32_t reserved = 0;
};

/// The whole material table of an old file: 64 entries of 184 bytes, the first at offset 4.
///
/// | Offset | Type      | Field of an entry                                                         |
/// |--------|-----------|---------------------------------------------------------------------------|
/// | 0      | float32   | `ambientRed`, `ambientGreen`, `ambientBlue`                               |
/// | 12     | float32   | `diffuseRed`, `diffuseGreen`, `diffuseBlue`                               |
/// | 24     | float32   | `specularRed`, `specularGreen`, `specularBlue`                            |
/// | 36     | float32   | `emissiveRed`, `emissiveGreen`, `emissiveBlue`                            |
/// | 48     | float32   | `shininess`                                                               |
/// | 52     | float32   | `alpha`                                                                   |
/// | 56     | int32     | `flags`: bit 31 set is a material in use                                  |
/// | 60     | char[12]  | `name`, from revision 14 on; below, its first byte is zero after decoding |
/// | 72     | 112 bytes | `spare`                                                                   |
class FltRecordOLDMaterialPalette : public PaletteFltRecord, public FltVersion
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::oldMaterialPalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// One material. The fields mean what they do in FltRecordMaterial, but for the flag.
    struct Entry {
        float ambientRed = 0;
        float ambientGreen = 0;
        float ambientBlue = 0;
        float diffuseRed = 0;
        float diffuseGreen = 0;
        float diffuseBlue = 0;
        float specularRed = 0;
        float specularGreen = 0;
        float specularBlue = 0;
        float emissiveRed = 0;
        float emissiveGreen = 0;
        float emissiveBlue = 0;
        float shininess = 0;
        float alpha = 0;
        std::int32_t flags = 0;
        char name[12] = {};
        char spare[112] = {};
    };

    static constexpr int entryCount = 64;

    Entry entries[entryCount];
};

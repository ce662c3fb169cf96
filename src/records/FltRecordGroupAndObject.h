#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"
#include "records/FltVersion.h"

#include <cstdint>

/// A node that gathers the nodes of the level below it.
///
/// | Offset | Type    | Field              |                                                       |
/// |--------|---------|--------------------|-------------------------------------------------------|
/// | 4      | char[8] | `idASCII`          | name, which the node of the scene graph takes         |
/// | 12     | int16   | `relativePriority` |                                                       |
/// | 14     | int16   | reserved           |                                                       |
/// | 16     | uint32  | `flags`            | see below                                             |
/// | 20     | int16   | `id1SpecialEffect` |                                                       |
/// | 22     | int16   | `id2SpecialEffect` |                                                       |
/// | 24     | int16   | `significance`     |                                                       |
/// | 26     | int8    | `layerCode`        |                                                       |
/// | 27     | int8    | reserved           |                                                       |
/// | 28     | int32   | reserved           | read from revision 1421 on                            |
///
/// Flags: bit 30 forward animation, 29 swing animation, 28 bounding box follows, 27 freeze bounding box, 26
/// default parent, 25 backward animation.
class FltRecordGroup : public PrimaryFltRecord, public FltVersion
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::group; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Not terminated when it fills its eight characters. Aligned so that the member behind it follows
    /// without a gap.
    alignas(std::int32_t) char idASCII[8] = {};
    std::int16_t relativePriority = 0;
    std::int16_t reserved1 = 0;
    std::uint32_t flags = 0;
    std::int16_t id1SpecialEffect = 0;
    std::int16_t id2SpecialEffect = 0;
    std::int16_t significance = 0;
    std::int8_t layerCode = 0;
    std::int8_t reserved2 = 0;
    std::int32_t reserved3 = 0;
};

/// A node that holds faces.
///
/// | Offset | Type    | Field              |                                                       |
/// |--------|---------|--------------------|-------------------------------------------------------|
/// | 4      | char[8] | `idASCII`          | name, which the node of the scene graph takes         |
/// | 12     | uint32  | `flags`            | see below                                             |
/// | 16     | int16   | `relativePriority` |                                                       |
/// | 18     | uint16  | `transparency`     |                                                       |
/// | 20     | int16   | `id1SpecialEffect` |                                                       |
/// | 22     | int16   | `id2SpecialEffect` |                                                       |
/// | 24     | int16   | `significance`     |                                                       |
/// | 26     | int16   | `spare`            |                                                       |
///
/// Flags: bit 31 not displayed in daylight, 30 not at dusk, 29 not at night, 28 not illuminated, 27 flat
/// shaded, 26 shadow object of its group.
class FltRecordObject : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::object; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::uint32_t flags = 0;
    std::int16_t relativePriority = 0;
    std::uint16_t transparency = 0;
    std::int16_t id1SpecialEffect = 0;
    std::int16_t id2SpecialEffect = 0;
    std::int16_t significance = 0;
    std::int16_t spare = 0;
};

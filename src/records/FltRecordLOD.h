#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A level of detail: what stands below it is shown at some distances only.
///
/// | Offset | Type    | Field               |                                                      |
/// |--------|---------|---------------------|------------------------------------------------------|
/// | 4      | char[8] | `idASCII`           | name, which the node of the scene graph takes        |
/// | 12     | int32   | reserved            |                                                      |
/// | 16     | float64 | `switchInDistance`  | database units: shown from this distance inwards     |
/// | 24     | float64 | `switchOutDistance` | and down to this one                                 |
/// | 32     | int16   | `id1specialEffect`  |                                                      |
/// | 34     | int16   | `id2specialEffect`  |                                                      |
/// | 36     | uint32  | `flags`             | bit 31 use previous slant range, 29 freeze centre    |
/// | 40     | float64 | `XcenterCoordinate` |                                                      |
/// | 48     | float64 | `YcenterCoordinate` |                                                      |
/// | 56     | float64 | `ZcenterCoordinate` |                                                      |
/// | 64     | float64 | `transitionRange`   |                                                      |
class FltRecordLOD : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::lod; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::int32_t reserved = 0;
    double switchInDistance = 0;
    double switchOutDistance = 0;
    std::int16_t id1specialEffect = 0;
    std::int16_t id2specialEffect = 0;
    std::uint32_t flags = 0;
    double XcenterCoordinate = 0;
    double YcenterCoordinate = 0;
    double ZcenterCoordinate = 0;
    double transitionRange = 0;
};

/// A level of detail in its old form: distances and centre in whole database units.
///
/// | Offset | Type    | Field               |                                                      |
/// |--------|---------|---------------------|------------------------------------------------------|
/// | 4      | char[8] | `idASCII`           | name, which the node of the scene graph takes        |
/// | 12     | uint32  | `switchInDistance`  |                                                      |
/// | 16     | uint32  | `switchOutDistance` |                                                      |
/// | 20     | int16   | `id1specialEffect`  |                                                      |
/// | 22     | int16   | `id2specialEffect`  |                                                      |
/// | 24     | uint32  | `flags`             | bit 31 use previous slant range, 30 SPT flag         |
/// | 28     | int32   | `XcenterCoordinate` |                                                      |
/// | 32     | int32   | `YcenterCoordinate` |                                                      |
/// | 36     | int32   | `ZcenterCoordinate` |                                                      |
///
/// Bit 29 of the flags is freeze centre, as in the current form.
class FltRecordOLDLOD : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::oldLOD; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::uint32_t switchInDistance = 0;
    std::uint32_t switchOutDistance = 0;
    std::int16_t id1specialEffect = 0;
    std::int16_t id2specialEffect = 0;
    std::uint32_t flags = 0;
    std::int32_t XcenterCoordinate = 0;
    std::int32_t YcenterCoordinate = 0;
    std::int32_t ZcenterCoordinate = 0;
};

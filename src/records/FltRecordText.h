#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A text that stands in the scene.
///
/// | Offset | Type       | Field                                                                           |
/// |--------|------------|---------------------------------------------------------------------------------|
/// | 4      | char[8]    | `idASCII`                                                                       |
/// | 12     | int32[2]   | reserved                                                                        |
/// | 20     | int32      | `textType`, `drawType`, `justification`                                         |
/// | 32     | float64    | `floatValue`                                                                    |
/// | 40     | int32      | `intValue`                                                                      |
/// | 44     | int32[5]   | reserved                                                                        |
/// | 64     | int32      | `flags`, `color`, `color2`, `material`                                          |
/// | 80     | int32      | reserved                                                                        |
/// | 84     | int32      | `maxLineNumber`, `maxCharNumber`, `textLength`, `nextLineNumber`                |
/// | 100    | int32      | `lineNumberAtTopOfDisplay`                                                      |
/// | 104    | int32[2]   | `valuesForInt`                                                                  |
/// | 112    | float64[2] | `valuesForFloat`                                                                |
/// | 128    | float64    | `XlowerLeftCorner`, `YlowerLeftCorner`, `ZlowerLeftCorner`                      |
/// | 152    | float64    | `XupperRightCorner`, `YupperRightCorner`, `ZupperRightCorner`                   |
/// | 176    | char[120]  | `fontName`                                                                      |
/// | 296    | int32      | `drawVertical`, `drawItalic`, `drawBold`, `drawUnderline`, `lineStyle`          |
/// | 316    | int32      | reserved                                                                        |
///
/// The text itself stands behind these fields and is not read.
class FltRecordText : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::text; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {};
    std::int32_t reserved1[2] = {};
    std::int32_t textType = 0;
    std::int32_t drawType = 0;
    std::int32_t justification = 0;
    double floatValue = 0;
    std::int32_t intValue = 0;
    std::int32_t reserved2[5] = {};
    std::int32_t flags = 0;
    std::int32_t color = 0;
    std::int32_t color2 = 0;
    std::int32_t material = 0;
    std::int32_t reserved3 = 0;
    std::int32_t maxLineNumber = 0;
    std::int32_t maxCharNumber = 0;
    std::int32_t textLength = 0; ///< Of the text that is not read.
    std::int32_t nextLineNumber = 0;
    std::int32_t lineNumberAtTopOfDisplay = 0;
    std::int32_t valuesForInt[2] = {};
    double valuesForFloat[2] = {};
    double XlowerLeftCorner = 0;
    double YlowerLeftCorner = 0;
    double ZlowerLeftCorner = 0;
    double XupperRightCorner = 0;
    double YupperRightCorner = 0;
    double ZupperRightCorner = 0;
    char fontName[120] = {};
    std::int32_t drawVertical = 0;
    std::int32_t drawItalic = 0;
    std::int32_t drawBold = 0;
    std::int32_t drawUnderline = 0;
    std::int32_t lineStyle = 0;
    std::int32_t reserved4 = 0;
};

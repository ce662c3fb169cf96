#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A text that stands in the scene.
///
/// The text itself stands after these fields and is not read.
class FltRecordText : public FltRecordOf<FltRecordText, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::text;
    static constexpr std::string_view title = "\n TEXT RECORD ";

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

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("textType", self.textType);
        visit("drawType", self.drawType);
        visit("justification", self.justification);
        visit("floatValue", self.floatValue);
        visit("intValue", self.intValue);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("flags", self.flags, dumpAs::pointer);
        visit("color", self.color);
        visit("color2", self.color2);
        visit("material", self.material);
        visit("reserved3", self.reserved3, dumpAs::nothing);
        visit("maxLineNumber", self.maxLineNumber);
        visit("maxCharNumber", self.maxCharNumber);
        visit("textLength", self.textLength);
        visit("nextLineNumber", self.nextLineNumber);
        visit("lineNumberAtTopOfDisplay", self.lineNumberAtTopOfDisplay);
        visit("valuesForInt", self.valuesForInt, dumpAs::list(" "));
        visit("valuesForFloat", self.valuesForFloat, dumpAs::list(" "));
        visit("XlowerLeftCorner", self.XlowerLeftCorner);
        visit("YlowerLeftCorner", self.YlowerLeftCorner);
        visit("ZlowerLeftCorner", self.ZlowerLeftCorner);
        visit("XupperRightCorner", self.XupperRightCorner);
        visit("YupperRightCorner", self.YupperRightCorner);
        visit("ZupperRightCorner", self.ZupperRightCorner);
        visit("fontName", self.fontName, dumpAs::text(&self + 1));
        visit("drawVertical", self.drawVertical);
        visit("drawItalic", self.drawItalic);
        visit("drawBold", self.drawBold);
        visit("drawUnderline", self.drawUnderline);
        visit("lineStyle", self.lineStyle);
        visit("reserved4", self.reserved4, dumpAs::nothing);
    }
};

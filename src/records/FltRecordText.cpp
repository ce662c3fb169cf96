#include "records/FltRecordText.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordText::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TEXT RECORD ");
}

void FltRecordText::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValuesThenDecal(reserved1, 2, cursor);
    FltUtils::getInt32ValueThenDecal(&textType, cursor);
    FltUtils::getInt32ValueThenDecal(&drawType, cursor);
    FltUtils::getInt32ValueThenDecal(&justification, cursor);
    FltUtils::getDouble64ValueThenDecal(&floatValue, cursor);
    FltUtils::getInt32ValueThenDecal(&intValue, cursor);
    FltUtils::getInt32ValuesThenDecal(reserved2, 5, cursor);
    FltUtils::getInt32ValueThenDecal(&flags, cursor);
    FltUtils::getInt32ValueThenDecal(&color, cursor);
    FltUtils::getInt32ValueThenDecal(&color2, cursor);
    FltUtils::getInt32ValueThenDecal(&material, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved3, cursor);
    FltUtils::getInt32ValueThenDecal(&maxLineNumber, cursor);
    FltUtils::getInt32ValueThenDecal(&maxCharNumber, cursor);
    FltUtils::getInt32ValueThenDecal(&textLength, cursor);
    FltUtils::getInt32ValueThenDecal(&nextLineNumber, cursor);
    FltUtils::getInt32ValueThenDecal(&lineNumberAtTopOfDisplay, cursor);
    FltUtils::getInt32ValuesThenDecal(valuesForInt, 2, cursor);
    FltUtils::getDouble64ValuesThenDecal(valuesForFloat, 2, cursor);
    FltUtils::getDouble64ValueThenDecal(&XlowerLeftCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&YlowerLeftCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZlowerLeftCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&XupperRightCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&YupperRightCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZupperRightCorner, cursor);
    FltUtils::getBytesThenDecal(fontName, sizeof fontName, cursor);
    FltUtils::getInt32ValueThenDecal(&drawVertical, cursor);
    FltUtils::getInt32ValueThenDecal(&drawItalic, cursor);
    FltUtils::getInt32ValueThenDecal(&drawBold, cursor);
    FltUtils::getInt32ValueThenDecal(&drawUnderline, cursor);
    FltUtils::getInt32ValueThenDecal(&lineStyle, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved4, cursor);
}

std::ostream& FltRecordText::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "textType: ", textType);
    FltDump::line(os, "drawType: ", drawType);
    FltDump::line(os, "justification: ", justification);
    FltDump::line(os, "floatValue: ", floatValue);
    FltDump::line(os, "intValue: ", intValue);
    FltDump::pointer(os, "flags: ", flags);
    FltDump::line(os, "color: ", color);
    FltDump::line(os, "color2: ", color2);
    FltDump::line(os, "material: ", material);
    FltDump::line(os, "maxLineNumber: ", maxLineNumber);
    FltDump::line(os, "maxCharNumber: ", maxCharNumber);
    FltDump::line(os, "textLength: ", textLength);
    FltDump::line(os, "nextLineNumber: ", nextLineNumber);
    FltDump::line(os, "lineNumberAtTopOfDisplay: ", lineNumberAtTopOfDisplay);
    FltDump::list(os, "valuesForInt: ", valuesForInt, 2, " ");
    FltDump::list(os, "valuesForFloat: ", valuesForFloat, 2, " ");
    FltDump::line(os, "XlowerLeftCorner: ", XlowerLeftCorner);
    FltDump::line(os, "YlowerLeftCorner: ", YlowerLeftCorner);
    FltDump::line(os, "ZlowerLeftCorner: ", ZlowerLeftCorner);
    FltDump::line(os, "XupperRightCorner: ", XupperRightCorner);
    FltDump::line(os, "YupperRightCorner: ", YupperRightCorner);
    FltDump::line(os, "ZupperRightCorner: ", ZupperRightCorner);
    FltDump::text(os, "fontName: ", fontName, this + 1);
    FltDump::line(os, "drawVertical: ", drawVertical);
    FltDump::line(os, "drawItalic: ", drawItalic);
    FltDump::line(os, "drawBold: ", drawBold);
    FltDump::line(os, "drawUnderline: ", drawUnderline);
    FltDump::line(os, "lineStyle: ", lineStyle);
    return os;
}

#include "records/FltRecordTexturePattern.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

namespace
{

constexpr unsigned int shortFormLength = 96;
constexpr int shortFileNameSize = 80;

} // namespace

std::ostream& FltRecordTexturePattern::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TEXTURE_PATTERN RECORD ");
}

void FltRecordTexturePattern::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    int const fileNameSize = length == shortFormLength ? shortFileNameSize : int(sizeof fileName);
    FltUtils::getBytesThenDecal(fileName, fileNameSize, cursor);
    FltUtils::getInt32ValueThenDecal(&patternIndex, cursor);
    FltUtils::getInt32ValueThenDecal(&XlocationInTexturePalette, cursor);
    FltUtils::getInt32ValueThenDecal(&YlocationInTexturePalette, cursor);
}

std::ostream& FltRecordTexturePattern::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "fileName: ", fileName, &YlocationInTexturePalette + 1);
    FltDump::line(os, "patternIndex: ", patternIndex);
    FltDump::line(os, "XlocationInTexturePalette: ", XlocationInTexturePalette);
    FltDump::line(os, "YlocationInTexturePalette: ", YlocationInTexturePalette);
    return os;
}

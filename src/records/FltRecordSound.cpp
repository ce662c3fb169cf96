#include "records/FltRecordSound.h"

#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltUtils.h"

#include <algorithm>

namespace
{

constexpr int tableOfSounds = 1;
constexpr int names = 2;
constexpr int tableBegin = 32;
constexpr int entrySize = 12;
constexpr int namesBegin = 12;

/// A count of the file, cut to what there is room for.
std::int32_t bounded(std::int32_t count, int room, char const* damage)
{
    std::int32_t const there = std::clamp(count, 0, std::max(room, 0));
    if (there != count)
        FltWarningMessageConsole::notifyDamage(damage);
    return there;
}

} // namespace

std::ostream& FltRecordSound::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n SOUND RECORD ");
}

void FltRecordSound::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved1, cursor);
    FltUtils::getInt32ValueThenDecal(&index, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved2, cursor);
    FltUtils::getDouble64ValuesThenDecal(origin, 3, cursor);
    FltUtils::getFloat32ValuesThenDecal(direction, 3, cursor);
    FltUtils::getFloat32ValueThenDecal(&amplitude, cursor);
    FltUtils::getFloat32ValueThenDecal(&pitch, cursor);
    FltUtils::getFloat32ValueThenDecal(&priority, cursor);
    FltUtils::getFloat32ValueThenDecal(&falloff, cursor);
    FltUtils::getFloat32ValueThenDecal(&width, cursor);
    FltUtils::getInt32ValueThenDecal(&flags, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved3, cursor);
}

std::ostream& FltRecordSound::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "index: ", index);
    FltDump::list(os, "origin: ", origin, 3, ",");
    FltDump::list(os, "direction: ", direction, 3, ",");
    FltDump::line(os, "amplitude: ", amplitude);
    FltDump::line(os, "pitch: ", pitch);
    FltDump::line(os, "priority: ", priority);
    FltDump::line(os, "falloff: ", falloff);
    FltDump::line(os, "width: ", width);
    FltDump::pointer(os, "flags: ", flags);
    return os;
}

std::ostream& FltRecordSoundPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n SOUND PALETTE RECORD ");
}

void FltRecordSoundPalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    std::int32_t half;
    FltUtils::getInt32ValueThenDecal(&half, cursor);
    int const size = FltUtils::word16At(data + 2);
    if (half == tableOfSounds)
        getTableFromData(cursor, size);
    else if (half == names)
        getNamesFromData(cursor, size);
}

void FltRecordSoundPalette::getTableFromData(char* cursor, int size)
{
    FltUtils::getInt32ValueThenDecal(&maxNumber, cursor);
    FltUtils::getInt32ValueThenDecal(&actualNumber, cursor);
    FltUtils::getInt32ValueThenDecal(&totalLength, cursor);
    FltUtils::getInt32ValuesThenDecal(reserved, 3, cursor);
    actualNumber =
        bounded(actualNumber, (size - tableBegin) / entrySize,
                "A sound palette has no room for its number of sounds: those that are there are kept");
    for (int i = 0; i < actualNumber; ++i) {
        std::int32_t key;
        std::int32_t skipped;
        std::int32_t value;
        FltUtils::getInt32ValueThenDecal(&key, cursor);
        FltUtils::getInt32ValueThenDecal(&skipped, cursor);
        FltUtils::getInt32ValueThenDecal(&value, cursor);
        fileNameOffset.insert_or_assign(fileNameOffset.end(), key, value);
    }
}

void FltRecordSoundPalette::getNamesFromData(char* cursor, int size)
{
    FltUtils::getInt32ValueThenDecal(&dataLength, cursor);
    dataLength = bounded(dataLength, size - namesBegin,
                         "A sound palette has no room for its names: what is there of them is kept");
    packedData.reset(new char[static_cast<std::size_t>(dataLength) + 1]);
    packedData[static_cast<std::size_t>(dataLength)] = '\0';
    FltUtils::getBytesThenDecal(packedData.get(), dataLength, cursor);
}

std::ostream& FltRecordSoundPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    if ((subType & 1) != 0) {
        FltDump::line(os, "subType : ", subType);
        FltDump::line(os, "maxNumber : ", maxNumber);
        FltDump::line(os, "actualNumber : ", actualNumber);
        FltDump::line(os, "totalLength : ", totalLength);
        for (auto const& [key, value] : fileNameOffset)
            FltDump::line(os, "fileNameOffset[", key, "] : ", value);
    }
    if ((subType & 2) != 0) {
        FltDump::line(os, "subType : ", subType);
        FltDump::line(os, "dataLength : ", dataLength);
        FltDump::text(os, "packedData : ", packedData.get());
    }
    return os;
}

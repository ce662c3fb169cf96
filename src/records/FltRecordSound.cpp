#include "records/FltRecordSound.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltFields.h"
#include "records/FltRecordDefinition.h"

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

std::ostream& FltRecordSoundPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n SOUND PALETTE RECORD ");
}

void FltRecordSoundPalette::getPropertiesFromData(char* data)
{
    FltFieldDecoder decoder(data + 4);
    std::int32_t half;
    decoder("half", half);
    int const size = FltUtils::word16At(data + 2);
    if (half == tableOfSounds)
        getTableFromData(decoder, size);
    else if (half == names)
        getNamesFromData(decoder, size);
}

void FltRecordSoundPalette::getTableFromData(FltFieldDecoder& decoder, int size)
{
    tableFields(*this, decoder);
    actualNumber =
        bounded(actualNumber, (size - tableBegin) / entrySize,
                "A sound palette has no room for its number of sounds: those that are there are kept");
    for (int i = 0; i < actualNumber; ++i) {
        std::int32_t key;
        std::int32_t value;
        decoder("index", key);
        decoder.skip(4);
        decoder("fileNameOffset", value);
        fileNameOffset.insert_or_assign(fileNameOffset.end(), key, value);
    }
}

void FltRecordSoundPalette::getNamesFromData(FltFieldDecoder& decoder, int size)
{
    namesFields(*this, decoder);
    dataLength = bounded(dataLength, size - namesBegin,
                         "A sound palette has no room for its names: what is there of them is kept");
    packedData.reset(new char[static_cast<std::size_t>(dataLength) + 1]);
    packedData[static_cast<std::size_t>(dataLength)] = '\0';
    decoder.bytes("packedData", packedData.get(), static_cast<unsigned int>(dataLength));
}

std::ostream& FltRecordSoundPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltFieldDump fields(os);
    if ((subType & 1) != 0) {
        fields.show("subType : ", subType);
        tableFields(*this, fields);
        for (auto const& [key, value] : fileNameOffset)
            (fields.dump << "fileNameOffset[" << key << "] : " << value).endLine();
    }
    if ((subType & 2) != 0) {
        fields.show("subType : ", subType);
        namesFields(*this, fields);
        fields.dump.text("packedData : ", packedData.get());
    }
    return os;
}

template class FltRecordOf<FltRecordSound, PrimaryFltRecord>;

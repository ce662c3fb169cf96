#include "records/FltRecordNamePalette.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltFields.h"
#include "records/FltRecordDefinition.h"

namespace
{

constexpr int headSize = 10;
constexpr int entryHeadSize = 6;

} // namespace

void FltRecordNamePalette::getNamesFromData(FltFieldDecoder& decoder)
{
    char const* const end = decoder.place() - headSize + length;
    for (int i = 0; i < numberOfNames; ++i) {
        char const* const entry = decoder.place();
        std::size_t const entryLength = FltUtils::wholeEntryAt(entry, end - entry, entryHeadSize, 4);
        if (entryLength == 0) {
            FltWarningMessageConsole::notifyDamage("A name palette holds fewer names than it says, or one of "
                                                   "a bad length: the rest of them is left out");
            return;
        }
        std::uint16_t index = 0;
        decoder.skip(4);
        decoder("index", index);
        char const* const name = decoder.place();
        std::size_t const room = entryLength - entryHeadSize;
        setOfNames.try_emplace(setOfNames.end(), index)->second.assign(name, ::strnlen(name, room));
        decoder.skip(static_cast<int>(room));
    }
}

template class FltRecordOf<FltRecordNamePalette, PaletteFltRecord>;

#include "records/FltRecordSwitch.h"

#include "dump/FltDump.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <cstddef>
#include <new>

std::ostream& FltRecordSwitch::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n SWITCH RECORD ");
}

void FltRecordSwitch::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getInt32ValueThenDecal(&indexOfCurrentMask, cursor);
    FltUtils::getInt32ValueThenDecal(&numberOfMasks, cursor);
    FltUtils::getInt32ValueThenDecal(&numberOf32BitWordsPerMask, cursor);

    auto const promised = static_cast<std::int32_t>(static_cast<std::uint32_t>(numberOfMasks) *
                                                    static_cast<std::uint32_t>(numberOf32BitWordsPerMask));
    auto const there = static_cast<std::int32_t>((std::max(length, 28U) - 28) / 4);
    if (promised > there)
        FltWarningMessageConsole::notifyDamage(
            "A switch has fewer mask words than its counts say: those that are there are kept");
    int const kept = std::min(promised, there);
    if (kept < 0)
        throw std::bad_array_new_length(); // as gcc's new does by itself
    masks.reset(new std::int32_t[static_cast<std::size_t>(kept)]);
    maskWordCount = kept;
    FltUtils::getInt32ValuesThenDecal(masks.get(), maskWordCount, cursor);
}

std::ostream& FltRecordSwitch::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "indexOfCurrentMask: ", indexOfCurrentMask);
    FltDump::line(os, "numberOfMasks: ", numberOfMasks);
    FltDump::line(os, "numberOf32BitWordsPerMask: ", numberOf32BitWordsPerMask);
    for (int k = 0; k < maskWordCount; ++k) {
        FltDump::line(os, "Mask number ", k, ": ");
        FltDump::bits(os, static_cast<std::uint32_t>(masks[static_cast<std::size_t>(k)]));
    }
    return os;
}

#include "records/FltRecordSwitch.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordDefinition.h"

#include <algorithm>
#include <cstddef>
#include <new>

/// The words that the counts promise, as far as the record holds them.
void FltRecordSwitch::makeRoomForMasks()
{
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
}

void FltRecordSwitch::dumpMasks(FltDump& dump) const
{
    for (int k = 0; k < maskWordCount; ++k) {
        dump << "Mask number " << k << ": ";
        dump.endLine();
        dump.bits(static_cast<std::uint32_t>(masks[static_cast<std::size_t>(k)]));
    }
}

template class FltRecordOf<FltRecordSwitch, PrimaryFltRecord>;

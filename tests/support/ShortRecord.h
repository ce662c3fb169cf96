#pragma once

#include "support/RecordText.h"

#include "records/FltUtils.h"

#include <algorithm>
#include <gtest/gtest.h>

/// A dump without the two lines of its frame, which tell the length.
inline std::string withoutFrame(std::string const& dump)
{
    std::size_t const lengthLine = dump.find("-- Opcode: ");
    std::size_t const end = lengthLine == std::string::npos ? lengthLine : dump.find('\n', lengthLine);
    return end == std::string::npos ? dump : dump.substr(end + 1);
}

/// The writer's last record cut to @p length bytes, which its length word tells, with @p following behind it.
inline FltWriter cutTo(FltWriter const& flt, std::size_t length, std::string const& following)
{
    FltWriter cut = flt;
    cut.resizeLast(length).addBytes(following);
    return cut;
}

/// Expects that the last record, cut to every length from 4 to its full one, decodes as the bytes that then
/// stand in the file: its own, then those that follow, then zeros. Nothing behind them may be touched, which
/// the sanitizers see to.
inline void expectShortRecordReadsOn(FltWriter const& whole, std::string const& following)
{
    std::size_t const full = whole.lastRecord().size();
    int const opcode = FltUtils::word16At(whole.lastRecord().c_str());
    std::size_t const reach = Flt_15_7_CreationVisitor().getReach(opcode, static_cast<unsigned>(full));
    for (std::size_t length = 4; length <= full; ++length) {
        FltWriter const cut = cutTo(whole, length, following);
        FltWriter reference = cutTo(whole, length, following);
        reference.resizeLast(std::max(full, reach));
        ASSERT_EQ(withoutFrame(dumpOf(*decodeLast(cut))), withoutFrame(dumpOf(*decodeLast(reference))))
            << "cut to " << length << " bytes with " << following.size() << " behind it";
    }
}

/// The same with other records behind it and at the end of the file.
inline void expectShortRecordReadsOn(FltWriter const& whole)
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "followed";
    expectShortRecordReadsOn(whole, FltWriter::big16(31) +
                                        FltWriter::big16(static_cast<long>(text.size() + 4)) + text);
    expectShortRecordReadsOn(whole, FltWriter::big16(10) + FltWriter::big16(4));
    expectShortRecordReadsOn(whole, "");
}

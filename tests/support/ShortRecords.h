#pragma once

#include "support/RecordText.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// The writer's last record cut to @p length bytes, which its length word tells, with @p behind behind it.
inline FltWriter cutTo(FltWriter const& flt, std::size_t length, std::string const& behind)
{
    FltWriter cut = flt;
    cut.resizeLast(length).addBytes(behind);
    return cut;
}

/// A record that is shorter than its layout, and the whole one that it has to be read as: its own bytes, then
/// the bytes behind it, then zeros.
struct ShortRecord {
    /// @param whole  its last record stands in its whole length
    /// @param length what is left of it, at least 4
    /// @param behind what follows it in the file
    ShortRecord(FltWriter const& whole, std::size_t length, std::string const& behind)
        : cut(cutTo(whole, length, behind)), filledUp(whole.getRevision())
    {
        std::string bytes = cut.lastRecord();
        bytes.resize(whole.lastRecord().size(), '\0');
        filledUp.addRaw(opcodeOf(whole), bytes.substr(4));
    }

    FltWriter cut;
    FltWriter filledUp;

private:
    static int opcodeOf(FltWriter const& flt) { return static_cast<unsigned char>(flt.lastRecord()[1]); }
};

/// Records that may follow another: none, and some.
inline std::vector<std::string> const& followers()
{
    static std::string const some = FltWriter().push().lastRecord() +
                                    FltWriter().addRaw(31, "text behind").lastRecord() +
                                    FltWriter().pop().lastRecord();
    static std::vector<std::string> const all = {"", some};
    return all;
}

/// The lines of a dump behind its frame.
inline std::string withoutFrame(std::string const& dump)
{
    return dump.substr(dump.find(" --\n") + 4);
}

/// The lines of the last record's dump behind its frame.
inline std::string linesOf(FltWriter const& flt)
{
    return withoutFrame(dumpOf(*decodeLast(flt)));
}

/// Expects the last record of @p whole, cut to any length from 4 on, to dump as if it was filled up with what
/// follows it and then with zeros.
inline void expectShortRecordsToReadOn(FltWriter const& whole, std::size_t step = 1)
{
    for (std::string const& behind : followers())
        for (std::size_t length = 4; length <= whole.lastRecord().size(); length += step) {
            ShortRecord const record(whole, length, behind);
            ASSERT_EQ(linesOf(record.cut), linesOf(record.filledUp))
                << "length " << length << ", " << behind.size() << " bytes behind";
        }
}

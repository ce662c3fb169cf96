#pragma once

#include "support/RecordText.h"
#include "writer/FltWriter.h"

#include "records/FltUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// The writer's last record cut to @p length bytes, which its length word tells, with @p behind after it.
inline FltWriter cutTo(FltWriter const& flt, std::size_t length, std::string const& behind)
{
    FltWriter cut = flt;
    cut.resizeLast(length).addBytes(behind);
    return cut;
}

/// A record that is shorter than its layout, and the whole one that it has to be read as: its own bytes, then
/// the bytes after it, then zeros.
struct ShortRecord {
    /// @param whole  its last record stands in its whole length
    /// @param length what is left of it, at least 4
    /// @param behind what follows it in the file
    ShortRecord(FltWriter const& whole, std::size_t length, std::string const& behind)
        : cut(cutTo(whole, length, behind)), filledUp(whole.getRevision())
    {
        std::string bytes = cut.lastRecord();
        bytes.resize(whole.lastRecord().size(), '\0');
        filledUp.addRaw(FltUtils::word16At(bytes.data()), bytes.substr(4));
    }

    FltWriter cut;
    FltWriter filledUp;
};

/// What may follow a record in a file: nothing, and records of a hundred bytes and more.
inline std::vector<std::string> const& followers()
{
    auto const some = [] {
        FltWriter flt(1580);
        std::size_t const begin = flt.bytes().size();
        flt.push().add("Comment", {{"textDescription", "what follows in the file"}});
        flt.add("Vector", {{"i", 0.5}, {"j", 1.5}, {"k", 2.5}}).add("Matrix").pop();
        return flt.bytes().substr(begin);
    };
    static std::vector<std::string> const all = {"", some()};
    return all;
}

/// The lines of a dump after its frame.
inline std::string withoutFrame(std::string const& dump)
{
    return dump.substr(dump.find(" --\n") + 4);
}

/// The lines of the last record's dump after its frame.
inline std::string linesOf(FltWriter const& flt)
{
    return withoutFrame(withoutAddress(dumpOf(*decodeLast(flt))));
}

/// Expects the last record of @p whole, cut to any length from 4 on, to dump as if it was filled up with what
/// follows it and then with zeros.
inline void expectShortRecordsToReadOn(FltWriter const& whole, std::size_t step = 1)
{
    for (std::string const& behind : followers())
        for (std::size_t length = 4; length <= whole.lastRecord().size(); length += step) {
            ShortRecord const record(whole, length, behind);
            ASSERT_EQ(decodeLast(record.cut)->getLength(), length);
            ASSERT_EQ(linesOf(record.cut), linesOf(record.filledUp))
                << "length " << length << ", " << behind.size() << " bytes after it";
        }
}

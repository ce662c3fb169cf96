#include "records/FltRecordNamePalette.h"

#include "messages/FltWarningMessageConsole.h"
#include "support/RecordText.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

namespace
{

using Names = std::map<int, std::string>;

std::string const title = "\n NAME PALETTE RECORD ";
std::string const palette = "PALETTE_RECORD";

/// An entry whose length says @p claimed, or what it is.
std::string entry(int index, std::string const& name, long claimed = -1)
{
    long const length = claimed < 0 ? static_cast<long>(name.size()) + 6 : claimed;
    return FltWriter::big32(length) + FltWriter::big16(index) + name;
}

FltWriter names(long count, std::string const& entries)
{
    return FltWriter().add("NamePalette",
                           {{"numberOfNames", count}, {"nextAvailableIndex", 65535}, {"entries", entries}});
}

/// Decodes a palette and counts the damage that it reports.
struct Decoded {
    explicit Decoded(FltWriter const& flt)
    {
        FltWarningMessageConsole::beginFile("names.flt");
        StreamCapture const printed(std::cerr);
        std::size_t const before = FltWarningMessageConsole::setOfMessages.size();
        record = decodeLastAs<FltRecordNamePalette>(flt);
        reports = FltWarningMessageConsole::setOfMessages.size() - before;
    }

    std::unique_ptr<FltRecordNamePalette> record;
    std::size_t reports = 0;
};

TEST(FltRecordNamePaletteTest, DecodesAndDumpsItsNamesInTheOrderOfTheirIndex)
{
    std::string const zero(1, '\0');
    Decoded const decoded(
        names(3, entry(65535, "last" + zero) + entry(2, "second" + zero) + entry(0, "first" + zero)));
    ASSERT_NE(decoded.record, nullptr);
    EXPECT_EQ(decoded.record->numberOfNames, 3);
    EXPECT_EQ(decoded.record->nextAvailableIndex, 65535);
    EXPECT_EQ(decoded.record->setOfNames, (Names{{0, "first"}, {2, "second"}, {65535, "last"}}));
    EXPECT_EQ(decoded.reports, 0U);
    EXPECT_EQ(dumpOf(*decoded.record), frame(title, palette, 114, 46) + "numberOfNames: 3\n"
                                                                        "nextAvailableIndex: 65535\n"
                                                                        "name[0] : first\n"
                                                                        "name[2] : second\n"
                                                                        "name[65535] : last\n");
}

TEST(FltRecordNamePaletteTest, NumberOfNamesOfZeroOrLessLeavesTheMapEmptyAndPrintsOnlyTheTwoHeaderLines)
{
    for (long const count : {0L, -1L}) {
        Decoded const decoded(names(count, entry(1, "unread")));
        ASSERT_NE(decoded.record, nullptr);
        EXPECT_TRUE(decoded.record->setOfNames.empty());
        EXPECT_EQ(decoded.reports, 0U);
        EXPECT_EQ(dumpOf(*decoded.record), frame(title, palette, 114, 22) + "numberOfNames: " +
                                               std::to_string(count) + "\nnextAvailableIndex: 65535\n");
    }
}

TEST(FltRecordNamePaletteTest, ALaterNameOfTheSameIndexReplacesTheEarlier)
{
    Decoded const decoded(names(3, entry(5, "earlier and longer") + entry(9, "other") + entry(5, "later")));
    EXPECT_EQ(decoded.record->setOfNames, (Names{{5, "later"}, {9, "other"}}));
}

TEST(FltRecordNamePaletteTest, ANameEndsAtItsFirstZeroAndTheNextEntryStandsBehindTheWholeLength)
{
    std::string const name("cut\0here", 8);
    Decoded const decoded(names(2, entry(1, name) + entry(2, "next")));
    EXPECT_EQ(decoded.record->setOfNames, (Names{{1, "cut"}, {2, "next"}}));
}

TEST(FltRecordNamePaletteTest, AnEntryOfLength6HasAnEmptyName)
{
    Decoded const decoded(names(2, entry(1, "") + entry(2, "next")));
    EXPECT_EQ(decoded.record->setOfNames, (Names{{1, ""}, {2, "next"}}));
    EXPECT_EQ(decoded.reports, 0U);
}

TEST(FltRecordNamePaletteTest, NamesOf80AndMoreCharactersAreKeptWhole)
{
    for (std::size_t const size : {80U, 81U, 5000U}) {
        std::string const name(size, 'n');
        Decoded const decoded(names(1, entry(1, name)));
        EXPECT_EQ(decoded.record->setOfNames, (Names{{1, name}}));
        EXPECT_EQ(decoded.reports, 0U);
    }
}

TEST(FltRecordNamePaletteTest, AnEntryShorterThanItsHeadEndsTheReadingAndIsReportedOnce)
{
    for (long const claimed : {0L, 5L}) {
        Decoded const decoded(names(3, entry(1, "kept") + entry(2, "bad", claimed) + entry(3, "lost")));
        EXPECT_EQ(decoded.record->setOfNames, (Names{{1, "kept"}}));
        EXPECT_EQ(decoded.record->numberOfNames, 3);
        EXPECT_EQ(decoded.reports, 1U);
    }
}

TEST(FltRecordNamePaletteTest, AnEntryThatRunsPastTheRecordEndsTheReadingAndIsReportedOnce)
{
    for (long const claimed : {10L, 0x7fffffffL, 0x80000000L, 0xffffffffL}) {
        Decoded const decoded(
            names(2, entry(1, "kept") + entry(2, "bad", claimed)).addBytes(FltWriter().push().lastRecord()));
        EXPECT_EQ(decoded.record->setOfNames, (Names{{1, "kept"}}));
        EXPECT_EQ(decoded.reports, 1U);
    }
}

TEST(FltRecordNamePaletteTest, ACountOfTwoBillionEndsWithTheRecordAndIsReportedOnce)
{
    Decoded const decoded(names(2000000000, entry(1, "one") + entry(2, "two")));
    EXPECT_EQ(decoded.record->setOfNames, (Names{{1, "one"}, {2, "two"}}));
    EXPECT_EQ(decoded.record->numberOfNames, 2000000000);
    EXPECT_EQ(decoded.reports, 1U);
}

TEST(FltRecordNamePaletteTest, ARecordOfAnyLengthKeepsTheEntriesThatStandInItWhole)
{
    FltWriter const whole = names(3, entry(1, "one") + entry(2, "three") + entry(4, ""));
    ASSERT_EQ(whole.lastRecord().size(), 36U);
    for (std::string const& behind : {std::string(), FltWriter().addRaw(31, "text behind").lastRecord()})
        for (unsigned length = 4; length <= 36; ++length) {
            Decoded const decoded(FltWriter(whole).resizeLast(length).addBytes(behind));
            ASSERT_NE(decoded.record, nullptr);
            std::size_t const entries = length < 19 ? 0 : length < 30 ? 1 : length < 36 ? 2 : 3;
            EXPECT_EQ(decoded.record->setOfNames.size(), entries) << "length " << length;
            if (length >= 10) {
                EXPECT_EQ(decoded.reports, entries == 3 ? 0U : 1U) << "length " << length;
            }
        }
}

TEST(FltRecordNamePaletteTest, ARecordOfLength4ReadsItsHeadFromWhatFollowsItButNoNames)
{
    Decoded const decoded(names(0, "").resizeLast(4).addBytes(FltWriter().addRaw(31, "AB").lastRecord()));
    EXPECT_EQ(decoded.record->numberOfNames, 31 << 16 | 6);
    EXPECT_EQ(decoded.record->nextAvailableIndex, 0x4142);
    EXPECT_TRUE(decoded.record->setOfNames.empty());
    EXPECT_EQ(decoded.reports, 1U);
}

TEST(FltRecordNamePaletteTest, ALengthBelow4HoldsNoNames)
{
    Decoded const decoded(names(1, entry(1, "one")).claimLength(1));
    EXPECT_EQ(decoded.record->numberOfNames, 1);
    EXPECT_TRUE(decoded.record->setOfNames.empty());
    EXPECT_EQ(decoded.reports, 1U);
}

} // namespace

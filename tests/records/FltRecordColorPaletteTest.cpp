#include "records/FltRecordColorPalette.h"

#include "messages/FltWarningMessageConsole.h"
#include "support/RecordText.h"
#include "support/ShortRecords.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace
{

std::string const title = "\n COLOR PALETTE RECORD ";
std::string const palette = "PALETTE_RECORD";

/// A colour name whose length says @p claimed, or what it is.
std::string colorName(int index, std::string const& name, int claimed = -1)
{
    long const length = claimed < 0 ? static_cast<long>(name.size()) + 8 : claimed;
    return FltWriter::big16(length) + FltWriter::big16(0x1111) + FltWriter::big16(index) +
           FltWriter::big16(-2) + name;
}

FltWriter named(long count, std::string const& entries)
{
    return FltWriter(1421).add("ColorPalette", {{"names", FltWriter::big32(count) + entries}});
}

/// Decodes a palette and counts the damage that it reports.
struct Decoded {
    explicit Decoded(FltWriter const& flt)
    {
        FltWarningMessageConsole::beginFile("colors.flt");
        StreamCapture const printed(std::cerr);
        std::size_t const before = FltWarningMessageConsole::setOfMessages.size();
        record = decodeLastAs<FltRecordColorPalette>(flt);
        reports = FltWarningMessageConsole::setOfMessages.size() - before;
    }

    std::vector<int> indices() const
    {
        std::vector<int> indices;
        for (auto const& [index, entry] : record->setOfColorEntries)
            indices.push_back(index);
        return indices;
    }

    std::unique_ptr<FltRecordColorPalette> record;
    std::size_t reports = 0;
};

/// The lines of colours that are zero.
std::string zeroColors(int from, int to)
{
    std::string lines;
    for (int i = from; i < to; ++i)
        lines += "  color[" + std::to_string(i) + "] = (0)\n";
    return lines;
}

/// Whether all colours from one on are zero.
bool isZeroFrom(FltRecordColorPalette const& record, int first)
{
    return std::all_of(record.color + first, std::end(record.color),
                       [](std::uint32_t word) { return word == 0; });
}

std::vector<double> numbersFrom(double first, int count)
{
    std::vector<double> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

/// 96 bytes of ramps and 168 of fixed colours, all of them different as far as they can be.
FltWriter oldPalette(int revision)
{
    std::string ramps;
    for (int i = 0; i < 96; ++i)
        ramps += static_cast<char>(255 - i);
    std::string fixedColors;
    for (int i = 0; i < 168; ++i)
        fixedColors += static_cast<char>(100 + i);
    return FltWriter(revision).add("ColorPalette", {{"ramps", ramps}, {"fixedColors", fixedColors}});
}

TEST(FltRecordColorPaletteTest, Revision13ShadesEachRampFromBlackToItsBrightestInPartsOf128)
{
    auto const record = decodeLastAs<FltRecordColorPalette>(oldPalette(13));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->revision, 13);
    EXPECT_EQ(record->color[0], 0U);
    EXPECT_EQ(record->color[1], 0x010101U);
    EXPECT_EQ(record->color[64], 0x7e7f7fU);
    EXPECT_EQ(record->color[127], 0xfbfcfdU);
    EXPECT_EQ(record->color[128], 0U);
    for (int ramp = 0; ramp < 32; ++ramp)
        for (int shade = 0; shade < 128; ++shade) {
            float const part = static_cast<float>(shade) * 0.0078125F;
            auto const byte = [&](int i) {
                return static_cast<std::uint32_t>(static_cast<float>(255 - 3 * ramp - i) * part);
            };
            ASSERT_EQ(record->color[ramp * 128 + shade], byte(0) | byte(1) << 8 | byte(2) << 16)
                << "ramp " << ramp << ", shade " << shade;
        }
}

TEST(FltRecordColorPaletteTest, Revision13HasItsFixedColorsBehindTheRampsUnsignedAndWithoutAlpha)
{
    auto const record = decodeLastAs<FltRecordColorPalette>(oldPalette(13));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->color[4096], 102U << 16 | 101U << 8 | 100U);
    EXPECT_EQ(record->color[4146], 252U << 16 | 251U << 8 | 250U);
    EXPECT_EQ(record->color[4147], 255U << 16 | 254U << 8 | 253U);
    EXPECT_EQ(record->color[4151], 11U << 16 | 10U << 8 | 9U);
    EXPECT_EQ(record->numberOfColorNames, 0);
    EXPECT_TRUE(record->setOfColorEntries.empty());
}

TEST(FltRecordColorPaletteTest, Revision13OfItsOwnLengthDumps512Values)
{
    std::string const ramps("\xff\x80\x01", 3);
    std::string expected = frame(title, palette, 32, 268) + "here's the 512 values of the color Palette:\n" +
                           "  color[0] = (0)\n"
                           "  color[1] = (0x1010000)\n"
                           "  color[2] = (0x3020000)\n"
                           "  color[3] = (0x5030000)\n";
    std::string const dump = dumpOf(*decodeLast(FltWriter(13).add("ColorPalette", {{"ramps", ramps}})));
    EXPECT_EQ(dump.substr(0, expected.size()), expected);
    expected = "  color[127] = (0xfd7f0000)\n" + zeroColors(128, 512);
    EXPECT_EQ(dump.substr(dump.find("  color[127]")), expected);
}

TEST(FltRecordColorPaletteTest, Revision13LongerThan2180BytesDumps1024Values)
{
    std::string const ramps(24, '\x7f');
    std::string const lines = linesOf(FltWriter(13).add("ColorPalette", {{"ramps", ramps}}).resizeLast(2181));
    EXPECT_EQ(lines.substr(0, lines.find('\n') + 1), "here's the 1024 values of the color Palette:\n");
    EXPECT_EQ(lines.substr(lines.find("  color[1022]")), "  color[1022] = (0x7d7d7d00)\n"
                                                         "  color[1023] = (0x7e7e7e00)\n"
                                                         "numberOfColorNames: 0\n"
                                                         "number of elements in setOfColorEntries: 0\n"
                                                         "(No Color Entry)\n");
}

TEST(FltRecordColorPaletteTest, Revisions14To1420Read512WordsAndNothingElse)
{
    for (int const revision : {14, 1420}) {
        auto const record = decodeLastAs<FltRecordColorPalette>(
            FltWriter(revision)
                .add("ColorPalette", {{"color", numbersFrom(0xff000001, 512)}})
                .addBytes(std::string(4000, 'x'))
                .claimLength(6052));
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->color[0], 0xff000001U);
        EXPECT_EQ(record->color[511], 0xff000200U);
        EXPECT_TRUE(isZeroFrom(*record, 512));
        EXPECT_EQ(std::string(record->reserved, sizeof record->reserved), std::string(128, '\0'));
        EXPECT_EQ(record->numberOfColorNames, 0);
        EXPECT_TRUE(record->setOfColorEntries.empty());
    }
}

TEST(FltRecordColorPaletteTest, Revision1420DumpsEachWordReversedAndUnsigned)
{
    EXPECT_EQ(
        dumpOf(*decodeLast(FltWriter(1420).add(
            "ColorPalette", {{"color", {0x11223344, 0x000000ff, 0xff000000, 0x0000007f, 0, 0xffffffff}}}))),
        frame(title, palette, 32, 2052) + "here's the 512 values of the color Palette:\n" +
            "  color[0] = (0x44332211)\n"
            "  color[1] = (0xff000000)\n"
            "  color[2] = (0xff)\n"
            "  color[3] = (0x7f000000)\n"
            "  color[4] = (0)\n"
            "  color[5] = (0xffffffff)\n" +
            zeroColors(6, 512));
}

TEST(FltRecordColorPaletteTest, Revision1421ReadsItsReservedBytesAnd1024Words)
{
    FltWriter flt = FltWriter(1421).add("ColorPalette", {{"color", numbersFrom(0xff000001, 1024)}});
    std::string bytes = flt.lastRecord().substr(4);
    bytes.replace(0, 128, std::string(128, 'r'));
    auto const record = decodeLastAs<FltRecordColorPalette>(FltWriter(1421).addRaw(32, bytes));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->revision, 1421);
    EXPECT_EQ(std::string(record->reserved, sizeof record->reserved), std::string(128, 'r'));
    EXPECT_EQ(record->color[0], 0xff000001U);
    EXPECT_EQ(record->color[1023], 0xff000400U);
    EXPECT_TRUE(isZeroFrom(*record, 1024));
}

TEST(FltRecordColorPaletteTest, PackedColorsHaveRedInTheTopByteAndAlphaInTheLowest)
{
    auto const record =
        decodeLastAs<FltRecordColorPalette>(FltWriter(1421).add("ColorPalette", {{"color", {0xa1b2c3d4}}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getPackedColor(0), 0xd4c3b2a1U);
    EXPECT_EQ(record->getPackedColor(FltRecordColorPalette::colorCount - 1), 0U);
}

TEST(FltRecordColorPaletteTest, Revision1421DumpsItsNamesInTheOrderOfTheirIndex)
{
    std::string const zero(1, '\0');
    Decoded const decoded(named(3, colorName(300, "rust" + zero) + colorName(2, "sky blue" + zero) +
                                       colorName(-1, "none" + zero)));
    ASSERT_NE(decoded.record, nullptr);
    EXPECT_EQ(decoded.record->numberOfColorNames, 3);
    EXPECT_EQ(decoded.reports, 0U);
    FltColorEntry const& entry = decoded.record->setOfColorEntries.at(2);
    EXPECT_EQ(entry.length, 17);
    EXPECT_EQ(entry.reserved1, 0x1111);
    EXPECT_EQ(entry.index, 2);
    EXPECT_EQ(entry.reserved2, -2);
    EXPECT_STREQ(entry.name.get(), "sky blue");
    EXPECT_EQ(dumpOf(*decoded.record), frame(title, palette, 32, 4275) +
                                           "here's the 1024 values of the color Palette:\n" +
                                           zeroColors(0, 1024) +
                                           "numberOfColorNames: 3\n"
                                           "number of elements in setOfColorEntries: 3\n"
                                           "1st ColorEntry \n"
                                           "  length: 13\n"
                                           "   index: -1\n"
                                           "    name: none\n"
                                           "2st ColorEntry \n"
                                           "  length: 17\n"
                                           "   index: 2\n"
                                           "    name: sky blue\n"
                                           "3st ColorEntry \n"
                                           "  length: 13\n"
                                           "   index: 300\n"
                                           "    name: rust\n");
}

TEST(FltRecordColorPaletteTest, ARecordOfLength4228HasNoNames)
{
    Decoded const decoded(named(1, colorName(1, "red")).claimLength(4228));
    EXPECT_EQ(decoded.record->numberOfColorNames, 0);
    EXPECT_TRUE(decoded.record->setOfColorEntries.empty());
    EXPECT_EQ(decoded.reports, 0U);
    std::string const lines = linesOf(named(1, colorName(1, "red")).claimLength(4228));
    EXPECT_EQ(lines.substr(lines.find("numberOf")), "numberOfColorNames: 0\n"
                                                    "number of elements in setOfColorEntries: 0\n"
                                                    "(No Color Entry)\n");
}

TEST(FltRecordColorPaletteTest, ARecordOfLength4229ReadsTheNumberOfNamesButHasNone)
{
    Decoded const decoded(named(1, colorName(1, "red")).claimLength(4229));
    EXPECT_EQ(decoded.record->numberOfColorNames, 1);
    EXPECT_TRUE(decoded.record->setOfColorEntries.empty());
    EXPECT_EQ(decoded.reports, 1U);
}

TEST(FltRecordColorPaletteTest, ARecordOfLength2180Dumps512ValuesAndNoNamesThoughAll1024AreDecoded)
{
    FltWriter const flt = FltWriter(1421)
                              .add("ColorPalette", {{"color", std::vector<double>(1024, 0x01000000)}})
                              .claimLength(2180);
    auto const record = decodeLastAs<FltRecordColorPalette>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->color[1023], 0x01000000U);
    std::string expected = frame(title, palette, 32, 2180) + "here's the 512 values of the color Palette:\n";
    for (int i = 0; i < 512; ++i)
        expected += "  color[" + std::to_string(i) + "] = (0x1)\n";
    EXPECT_EQ(dumpOf(*record), expected);
}

TEST(FltRecordColorPaletteTest, ARecordOfLength2181Dumps1024Values)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter(1421).add("ColorPalette").claimLength(2181))),
              frame(title, palette, 32, 2181) + "here's the 1024 values of the color Palette:\n" +
                  zeroColors(0, 1024) +
                  "numberOfColorNames: 0\n"
                  "number of elements in setOfColorEntries: 0\n"
                  "(No Color Entry)\n");
}

TEST(FltRecordColorPaletteTest, TwoNamesWithTheSameIndexGiveOneEntryWithTheLaterFields)
{
    Decoded const decoded(named(3, colorName(4, "earlier") + colorName(5, "other") + colorName(4, "late")));
    EXPECT_EQ(decoded.indices(), (std::vector<int>{4, 5}));
    FltColorEntry const& entry = decoded.record->setOfColorEntries.at(4);
    EXPECT_EQ(entry.length, 12);
    EXPECT_STREQ(entry.name.get(), "late");
}

TEST(FltRecordColorPaletteTest, AnIndexOfMinus1IsAKeyAndSortsFirst)
{
    Decoded const decoded(named(3, colorName(0, "a") + colorName(32767, "b") + colorName(-1, "c")));
    EXPECT_EQ(decoded.indices(), (std::vector<int>{-1, 0, 32767}));
    EXPECT_EQ(decoded.record->setOfColorEntries.at(-1).index, -1);
}

TEST(FltRecordColorPaletteTest, AnEntryOfLength8HasAnEmptyName)
{
    Decoded const decoded(named(2, colorName(1, "") + colorName(2, "two")));
    EXPECT_EQ(decoded.indices(), (std::vector<int>{1, 2}));
    EXPECT_STREQ(decoded.record->setOfColorEntries.at(1).name.get(), "");
    EXPECT_EQ(decoded.reports, 0U);
}

TEST(FltRecordColorPaletteTest, AnEntryShorterThan8EndsTheReadingAndIsReportedOnce)
{
    for (int const claimed : {0, 7}) {
        Decoded const decoded(
            named(3, colorName(1, "kept") + colorName(2, "bad", claimed) + colorName(3, "lost")));
        EXPECT_EQ(decoded.indices(), (std::vector<int>{1}));
        EXPECT_EQ(decoded.record->numberOfColorNames, 3);
        EXPECT_EQ(decoded.reports, 1U);
    }
}

TEST(FltRecordColorPaletteTest, AnEntryThatRunsPastTheRecordEndsTheReadingAndIsReportedOnce)
{
    for (int const claimed : {12, 0x7fff, 0x8000, 0xffff}) {
        Decoded const decoded(named(2, colorName(1, "kept") + colorName(2, "bad", claimed))
                                  .addBytes(FltWriter().push().lastRecord()));
        EXPECT_EQ(decoded.indices(), (std::vector<int>{1}));
        EXPECT_EQ(decoded.reports, 1U);
    }
}

TEST(FltRecordColorPaletteTest, ACountOfTwoBillionEndsWithTheRecordAndIsReportedOnce)
{
    Decoded const decoded(named(2000000000, colorName(1, "one") + colorName(2, "two")));
    EXPECT_EQ(decoded.indices(), (std::vector<int>{1, 2}));
    EXPECT_EQ(decoded.record->numberOfColorNames, 2000000000);
    EXPECT_EQ(decoded.reports, 1U);
}

TEST(FltRecordColorPaletteTest, ACountOfZeroOrLessReadsNoNames)
{
    for (long const count : {0L, -1L}) {
        Decoded const decoded(named(count, colorName(1, "unread")));
        EXPECT_EQ(decoded.record->numberOfColorNames, count);
        EXPECT_TRUE(decoded.record->setOfColorEntries.empty());
        EXPECT_EQ(decoded.reports, 0U);
    }
}

TEST(FltRecordColorPaletteTest, ARecordCutInItsNamesKeepsThoseThatStandInItWhole)
{
    FltWriter const whole = named(2, colorName(1, "one") + colorName(2, ""));
    ASSERT_EQ(whole.lastRecord().size(), 4251U);
    for (std::string const& behind : followers())
        for (unsigned length = 4229; length <= 4251; ++length) {
            Decoded const decoded(FltWriter(whole).resizeLast(length).addBytes(behind));
            std::size_t const entries = length < 4243 ? 0 : length < 4251 ? 1 : 2;
            EXPECT_EQ(decoded.record->setOfColorEntries.size(), entries) << "length " << length;
            if (length >= 4232) {
                EXPECT_EQ(decoded.reports, entries == 2 ? 0U : 1U) << "length " << length;
            }
        }
}

TEST(FltRecordColorPaletteTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    std::vector<FltWriter> const wholes = {
        oldPalette(13), FltWriter(1420).add("ColorPalette", {{"color", numbersFrom(0xff010101, 512)}}),
        FltWriter(1421).add("ColorPalette", {{"color", numbersFrom(0xff010101, 1024)}})};
    for (FltWriter const& whole : wholes)
        for (std::string const& behind : followers())
            for (std::size_t length = 4; length <= whole.lastRecord().size(); length += 37) {
                ShortRecord const record(whole, length, behind);
                auto const cut = decodeLastAs<FltRecordColorPalette>(record.cut);
                auto const filledUp = decodeLastAs<FltRecordColorPalette>(record.filledUp);
                ASSERT_NE(cut, nullptr);
                ASSERT_NE(filledUp, nullptr);
                EXPECT_EQ(cut->getLength(), length);
                EXPECT_TRUE(std::equal(cut->color, std::end(cut->color), filledUp->color))
                    << "revision " << whole.getRevision() << ", length " << length;
                EXPECT_TRUE(std::equal(cut->reserved, std::end(cut->reserved), filledUp->reserved));
            }
}

TEST(FltRecordColorPaletteTest, ARecordOfLength4BeforeAPushLevelReadsItAsAColorAndThenZeros)
{
    auto const record = decodeLastAs<FltRecordColorPalette>(
        FltWriter(1420).add("ColorPalette").resizeLast(4).addBytes(FltWriter().push().lastRecord()));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->color[0], 0x000a0004U);
    EXPECT_TRUE(isZeroFrom(*record, 1));
}

TEST(FltColorEntryTest, IsEmptyToBeginWith)
{
    FltColorEntry const entry;
    EXPECT_EQ(entry.length, 0);
    EXPECT_EQ(entry.reserved1, 0);
    EXPECT_EQ(entry.index, 0);
    EXPECT_EQ(entry.reserved2, 0);
    EXPECT_EQ(entry.name, nullptr);
    FltColorEntry const copy(entry);
    EXPECT_EQ(copy.name, nullptr);
}

TEST(FltColorEntryTest, ANameWithoutAZeroInTheFileHasOneInTheEntry)
{
    Decoded const decoded(named(1, colorName(1, "no zero")).addBytes("behind"));
    EXPECT_STREQ(decoded.record->setOfColorEntries.at(1).name.get(), "no zero");
}

TEST(FltColorEntryTest, IsCopiedDeeplyUpToTheFirstZeroOfTheName)
{
    Decoded decoded(named(1, colorName(9, std::string("ab\0cd", 5))));
    FltColorEntry& entry = decoded.record->setOfColorEntries.at(9);
    FltColorEntry const copy(entry);
    FltColorEntry assigned;
    assigned = entry;
    entry.name[0] = 'X';
    for (FltColorEntry const* other : {&copy, &std::as_const(assigned)}) {
        EXPECT_EQ(other->length, 13);
        EXPECT_EQ(other->reserved1, 0x1111);
        EXPECT_EQ(other->index, 9);
        EXPECT_EQ(other->reserved2, -2);
        EXPECT_STREQ(other->name.get(), "ab");
        EXPECT_NE(other->name, entry.name);
    }
}

TEST(FltColorEntryTest, SurvivesItsAssignmentToItself)
{
    Decoded decoded(named(1, colorName(9, "self")));
    FltColorEntry& entry = decoded.record->setOfColorEntries.at(9);
    FltColorEntry const& same = entry;
    entry = same;
    EXPECT_STREQ(entry.name.get(), "self");
    EXPECT_EQ(entry.index, 9);
}

} // namespace

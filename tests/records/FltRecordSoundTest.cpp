#include "records/FltRecordSound.h"

#include "messages/FltWarningMessageConsole.h"
#include "support/RecordText.h"
#include "support/ShortRecords.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

namespace
{

FltWriter fullSound()
{
    FltWriter flt;
    flt.add("Sound", {{"idASCII", "horn"},
                      {"index", -2},
                      {"origin", {1.5, -2.5, 3e10}},
                      {"direction", {0.25, 0.5, -1}},
                      {"amplitude", 0.1},
                      {"pitch", 440},
                      {"priority", 3},
                      {"falloff", 1e-7},
                      {"width", 180},
                      {"flags", 0xe0000000U}});
    return flt;
}

TEST(FltRecordSoundTest, DecodesEveryField)
{
    EXPECT_EQ(fullSound().lastRecord().size(), 88U);
    auto const sound = decodeLastAs<FltRecordSound>(fullSound());
    ASSERT_NE(sound, nullptr);
    EXPECT_EQ(sound->getOpcode(), 91);
    EXPECT_EQ(sound->getRecordCategory(), "PRIMARY_RECORD");
    EXPECT_STREQ(sound->idASCII, "horn");
    EXPECT_EQ(sound->index, -2);
    EXPECT_EQ(sound->origin[0], 1.5);
    EXPECT_EQ(sound->origin[1], -2.5);
    EXPECT_EQ(sound->origin[2], 3e10);
    EXPECT_EQ(sound->direction[0], 0.25F);
    EXPECT_EQ(sound->direction[1], 0.5F);
    EXPECT_EQ(sound->direction[2], -1.0F);
    EXPECT_EQ(sound->amplitude, 0.1F);
    EXPECT_EQ(sound->pitch, 440.0F);
    EXPECT_EQ(sound->priority, 3.0F);
    EXPECT_EQ(sound->falloff, 1e-7F);
    EXPECT_EQ(sound->width, 180.0F);
    EXPECT_EQ(static_cast<unsigned>(sound->flags), 0xe0000000U);
}

TEST(FltRecordSoundTest, DumpsItsFieldsWithCommasInVectorsAndFlagsAsAPointer)
{
    EXPECT_EQ(dumpOf(*decodeLast(fullSound())), "\n SOUND RECORD \n"
                                                "  (PRIMARY_RECORD)\n"
                                                "-- Opcode: 91  Length: 88 --\n"
                                                "idASCII: horn\n"
                                                "index: -2\n"
                                                "origin: 1.5,-2.5,3e+10\n"
                                                "direction: 0.25,0.5,-1\n"
                                                "amplitude: 0.1\n"
                                                "pitch: 440\n"
                                                "priority: 3\n"
                                                "falloff: 1e-07\n"
                                                "width: 180\n"
                                                "flags: 0xffffffffe0000000\n");
}

TEST(FltRecordSoundTest, FlagsOfZeroPrintAs0)
{
    EXPECT_NE(dumpOf(*decodeLast(FltWriter().add("Sound"))).find("\nflags: 0\n"), std::string::npos);
}

TEST(FltRecordSoundTest, ShortRecordsReadOnIntoTheFileAndThenZeros)
{
    expectShortRecordsToReadOn(fullSound());
}

TEST(FltRecordSoundTest, RecordCutBehindItsNameTakesItsIndexFromTheBytesBehind)
{
    auto const sound = decodeLastAs<FltRecordSound>(
        cutTo(fullSound(), 16, FltWriter().push().pop().bytes().substr(324 - 24)));
    ASSERT_NE(sound, nullptr);
    EXPECT_STREQ(sound->idASCII, "horn");
    auto const atEnd = decodeLastAs<FltRecordSound>(cutTo(fullSound(), 16, FltWriter::big32(77)));
    ASSERT_NE(atEnd, nullptr);
    EXPECT_EQ(atEnd->index, 77);
    EXPECT_EQ(atEnd->origin[0], 0);
    EXPECT_EQ(atEnd->width, 0.0F);
}

FltWriter table(FltValue actualNumber, FltValue entries)
{
    FltWriter flt;
    flt.add("SoundPaletteTable", {{"maxNumber", 64},
                                  {"actualNumber", std::move(actualNumber)},
                                  {"totalLength", 99},
                                  {"entries", std::move(entries)}});
    return flt;
}

FltWriter names(FltValue dataLength, FltValue packedData)
{
    FltWriter flt;
    flt.add("SoundPaletteNames",
            {{"dataLength", std::move(dataLength)}, {"packedData", std::move(packedData)}});
    return flt;
}

using Map = std::map<int, int>;
std::string const paletteTitle = "\n SOUND PALETTE RECORD ";
std::string const palette = "PALETTE_RECORD";

/// Decodes a further half into an object, as the factory does with records in a row. The block holds what the
/// record may read and no byte more.
void decodeAgain(FltRecordSoundPalette& record, FltWriter const& flt)
{
    Flt_15_7_CreationVisitor const visitor;
    std::string const& bytes = flt.bytes();
    std::size_t const length = flt.lastRecord().size();
    FltRawData raw;
    raw.assign(bytes.data() + flt.lastOffset(), bytes.data() + bytes.size(), length,
               visitor.getReach(93, static_cast<unsigned>(length)));
    record.getPropertiesFromData(raw.data);
}

/// Runs with the messages of damage caught. @return what was printed
template <class Action>
std::string printedBy(Action action)
{
    FltWarningMessageConsole::beginFile("palette.flt");
    StreamCapture const printed(std::cerr);
    action();
    return printed.str();
}

TEST(FltRecordSoundTest, SoundPaletteBeginsWithoutAHalf)
{
    FltRecordSoundPalette const record(32);
    EXPECT_EQ(record.subType, 0);
    EXPECT_EQ(record.packedData, nullptr);
    EXPECT_TRUE(record.fileNameOffset.empty());
    EXPECT_EQ(record.getRecordCategory(), palette);
}

TEST(FltRecordSoundTest, TableOfSoundsFillsTheMapAndSkipsTheWordBetween)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(table(3, {7, 1111, 0, -4, 2222, 9, 2, 3333, 18}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maxNumber, 64);
    EXPECT_EQ(record->actualNumber, 3);
    EXPECT_EQ(record->totalLength, 99);
    EXPECT_EQ(record->fileNameOffset, (Map{{-4, 9}, {2, 18}, {7, 0}}));
    EXPECT_EQ(record->packedData, nullptr);
    EXPECT_EQ(record->subType, 0) << "the word of the file steers and is not stored";
}

TEST(FltRecordSoundTest, RepeatedIndexKeepsTheLaterOffset)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(table(3, {5, 0, 10, 6, 0, 20, 5, 0, 30}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->fileNameOffset, (Map{{5, 30}, {6, 20}}));
}

TEST(FltRecordSoundTest, ActualNumberOfZeroLeavesTheMapEmpty)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(table(0, {1, 2, 3}));
    ASSERT_NE(record, nullptr);
    EXPECT_TRUE(record->fileNameOffset.empty());
}

TEST(FltRecordSoundTest, NamesAreKeptWithAZeroBehindThem)
{
    std::string const packed("a.wav\0b.wav", 11);
    auto const record = decodeLastAs<FltRecordSoundPalette>(names(11, packed));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->dataLength, 11);
    ASSERT_NE(record->packedData, nullptr);
    EXPECT_EQ(std::string(record->packedData.get(), 12), packed + '\0');
}

TEST(FltRecordSoundTest, SoundPaletteDumpsItsTitleLinesAlone)
{
    EXPECT_EQ(dumpOf(*decodeLast(table(1, {1, 0, 2}))), frame(paletteTitle, palette, 93, 44));
    EXPECT_EQ(dumpOf(*decodeLast(names(3, "abc"))), frame(paletteTitle, palette, 93, 15))
        << "the names are kept and not shown";
}

TEST(FltRecordSoundTest, DumpOfBothHalvesIsSteeredByTheBitsOfSubType)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(table(2, {7, 0, 10, 3, 0, 0}));
    ASSERT_NE(record, nullptr);
    decodeAgain(*record, names(11, std::string("a.wav\0b.wav", 11)));
    std::string const title = frame(paletteTitle, palette, 93, 56);
    std::string const tableLines = "maxNumber : 64\nactualNumber : 2\ntotalLength : 99\n"
                                   "fileNameOffset[3] : 0\nfileNameOffset[7] : 10\n";
    std::string const nameLines = "dataLength : 11\npackedData : a.wav\n";
    EXPECT_EQ(dumpOf(*record), title);
    record->subType = 1;
    EXPECT_EQ(dumpOf(*record), title + "subType : 1\n" + tableLines);
    record->subType = 2;
    EXPECT_EQ(dumpOf(*record), title + "subType : 2\n" + nameLines);
    record->subType = 3;
    EXPECT_EQ(dumpOf(*record), title + "subType : 3\n" + tableLines + "subType : 3\n" + nameLines);
    record->subType = 4;
    EXPECT_EQ(dumpOf(*record), title);
}

TEST(FltRecordSoundTest, DumpOfNamesThatWereNeverReadIsEmpty)
{
    FltRecordSoundPalette record(12);
    record.subType = 2;
    EXPECT_EQ(dumpOf(record),
              frame(paletteTitle, palette, 93, 12) + "subType : 2\ndataLength : 0\npackedData : \n");
}

TEST(FltRecordSoundTest, UnknownSubtypeLeavesTheObjectAsItIs)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(names(3, "abc"));
    ASSERT_NE(record, nullptr);
    for (int subtype : {0, 3, -1, 0x01000000}) {
        FltWriter flt;
        flt.add("SoundPaletteTable", {{"subTypeWord", subtype}, {"actualNumber", 1}, {"entries", {1, 2, 3}}});
        EXPECT_EQ(printedBy([&] { decodeAgain(*record, flt); }), "");
        EXPECT_TRUE(record->fileNameOffset.empty());
        EXPECT_STREQ(record->packedData.get(), "abc");
    }
}

TEST(FltRecordSoundTest, ThirdRecordOfNamesReplacesTheEarlierOnes)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(table(1, {1, 0, 0}));
    ASSERT_NE(record, nullptr);
    decodeAgain(*record, names(5, "first"));
    decodeAgain(*record, names(2, "2."));
    EXPECT_EQ(record->dataLength, 2);
    EXPECT_STREQ(record->packedData.get(), "2.");
    EXPECT_EQ(record->fileNameOffset, (Map{{1, 0}}));
}

TEST(FltRecordSoundTest, SecondTableAddsToTheSoundsOfTheFirst)
{
    auto const record = decodeLastAs<FltRecordSoundPalette>(table(2, {1, 0, 10, 2, 0, 20}));
    ASSERT_NE(record, nullptr);
    decodeAgain(*record, table(2, {2, 0, 21, 3, 0, 30}));
    EXPECT_EQ(record->fileNameOffset, (Map{{1, 10}, {2, 21}, {3, 30}}));
    EXPECT_EQ(record->actualNumber, 2);
}

TEST(FltRecordSoundTest, JoinedRecordIsBoundedByItsOwnLengthAndNotByThatOfTheFirst)
{
    // The object was made for 15 bytes and is handed 56, and the other way round.
    auto const small = decodeLastAs<FltRecordSoundPalette>(names(3, "abc"));
    ASSERT_NE(small, nullptr);
    EXPECT_EQ(printedBy([&] { decodeAgain(*small, table(2, {1, 0, 10, 2, 0, 20})); }), "");
    EXPECT_EQ(small->fileNameOffset.size(), 2U);
    EXPECT_EQ(small->getLength(), 15U);

    auto const large = decodeLastAs<FltRecordSoundPalette>(table(4, std::vector<double>(12, 1)));
    ASSERT_NE(large, nullptr);
    EXPECT_NE(printedBy([&] { decodeAgain(*large, names(60, "abc")); }), "");
    EXPECT_EQ(large->dataLength, 3);
    EXPECT_STREQ(large->packedData.get(), "abc");
}

TEST(FltRecordSoundTest, NumberOfSoundsThatDoesNotFitIsCutAndReportedOnce)
{
    for (double number : {3.0, 1000.0, 2147483647.0}) {
        std::unique_ptr<FltRecordSoundPalette> record;
        std::string const printed = printedBy([&] {
            record = decodeLastAs<FltRecordSoundPalette>(table(number, {1, 0, 10, 2, 0, 20, 3, 0}));
        });
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->fileNameOffset, (Map{{1, 10}, {2, 20}}));
        EXPECT_EQ(record->actualNumber, 2);
        EXPECT_EQ(
            printed.rfind("WARNING ! A sound palette has no room for its number of sounds: those that are "
                          "there are kept (palette.flt, ",
                          0),
            0U);
        EXPECT_EQ(printed.find("WARNING", 1), std::string::npos);
    }
}

TEST(FltRecordSoundTest, NegativeNumberOfSoundsGivesNoneAndIsReported)
{
    std::unique_ptr<FltRecordSoundPalette> record;
    EXPECT_NE(printedBy([&] { record = decodeLastAs<FltRecordSoundPalette>(table(-1, {1, 0, 10})); }), "");
    ASSERT_NE(record, nullptr);
    EXPECT_TRUE(record->fileNameOffset.empty());
    EXPECT_EQ(record->actualNumber, 0);
}

TEST(FltRecordSoundTest, LengthOfNamesThatDoesNotFitIsCutAndReportedOnce)
{
    for (double length : {6.0, 65536.0, 2147483647.0}) {
        std::unique_ptr<FltRecordSoundPalette> record;
        std::string const printed =
            printedBy([&] { record = decodeLastAs<FltRecordSoundPalette>(names(length, "a.wav")); });
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->dataLength, 5);
        EXPECT_STREQ(record->packedData.get(), "a.wav");
        EXPECT_EQ(
            printed.rfind("WARNING ! A sound palette has no room for its names: what is there of them is "
                          "kept (palette.flt, ",
                          0),
            0U);
        EXPECT_EQ(printed.find("WARNING", 1), std::string::npos);
    }
}

TEST(FltRecordSoundTest, LengthOfNamesOfMinusOneGivesAnEmptyTextAndIsReported)
{
    std::unique_ptr<FltRecordSoundPalette> record;
    EXPECT_NE(printedBy([&] { record = decodeLastAs<FltRecordSoundPalette>(names(-1, "a.wav")); }), "");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->dataLength, 0);
    ASSERT_NE(record->packedData, nullptr);
    EXPECT_STREQ(record->packedData.get(), "");
}

TEST(FltRecordSoundTest, ShortTablesKeepTheWholeEntriesThatTheyHold)
{
    FltWriter const whole = table(3, {1, 0, 10, 2, 0, 20, 3, 0, 30});
    for (std::string const& following :
         {std::string(200, '\1'), FltWriter().push().lastRecord(), std::string()})
        for (std::size_t length = 4; length <= whole.lastRecord().size(); ++length) {
            std::unique_ptr<FltRecordSoundPalette> record;
            std::string const printed = printedBy(
                [&] { record = decodeLastAs<FltRecordSoundPalette>(cutTo(whole, length, following)); });
            ASSERT_NE(record, nullptr);
            if (length >= 16) {
                std::size_t const entries = length < 32 ? 0 : (length - 32) / 12;
                EXPECT_EQ(record->fileNameOffset.size(), entries) << length;
                EXPECT_EQ(printed.empty(), entries == 3) << length;
            } else {
                EXPECT_TRUE(record->fileNameOffset.empty()) << length;
            }
        }
}

TEST(FltRecordSoundTest, ShortNamesKeepTheBytesThatTheyHold)
{
    FltWriter const whole = names(5, "a.wav");
    for (std::string const& following :
         {std::string(200, '\1'), FltWriter().push().lastRecord(), std::string()})
        for (std::size_t length = 12; length <= whole.lastRecord().size(); ++length) {
            std::unique_ptr<FltRecordSoundPalette> record;
            std::string const printed = printedBy(
                [&] { record = decodeLastAs<FltRecordSoundPalette>(cutTo(whole, length, following)); });
            ASSERT_NE(record, nullptr);
            EXPECT_EQ(std::string(record->packedData.get()), std::string("a.wav").substr(0, length - 12));
            EXPECT_EQ(printed.empty(), length == 17) << length;
        }
}

TEST(FltRecordSoundTest, TableCutBehindItsSubtypeTakesItsHeadFromTheBytesBehind)
{
    std::string const following = FltWriter::big32(5) + FltWriter::big32(0) + FltWriter::big32(8);
    auto const record = decodeLastAs<FltRecordSoundPalette>(cutTo(table(0, 0), 8, following));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maxNumber, 5);
    EXPECT_EQ(record->actualNumber, 0);
    EXPECT_EQ(record->totalLength, 8);
    EXPECT_EQ(record->reserved[2], 0);
}

} // namespace
